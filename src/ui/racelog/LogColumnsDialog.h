#pragma once

#include <QDialog>
#include <QList>

class QCheckBox;
class QPushButton;

// The stored choice of the race log columns that can be hidden: one check box for each, read
// from the settings when the dialog opens and written back by OK. Only an exact "1" checks a
// box, while a log window hides a column only for an exact "0": a choice never confirmed
// shows every column but checks no box, and that difference is wanted.
class LogColumnsDialog : public QDialog {
    Q_OBJECT
public:
    explicit LogColumnsDialog(QWidget* parent = nullptr);

private:
    void showChoice();
    void storeChoice();

    QList<QCheckBox*> checkBoxes; // in the order of the "Show Column" menu
    QPushButton* okButton;
    QPushButton* cancelButton;
};
