#pragma once

#include <QDialog>

// The about box: the program's name, its version and who makes it.
class AboutDialog : public QDialog {
    Q_OBJECT
public:
    explicit AboutDialog(QWidget* parent = nullptr);
};
