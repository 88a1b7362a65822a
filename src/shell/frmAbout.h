#pragma once

#include <QDialog>

// The about box: the program's name, its version and who makes it.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);
};
