#pragma once

#include "pages/IncrementalTimes.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

// Asks which category and session of the timing receiver's log to rank, and which two cars
// to mark. It reads the log as it opens, to offer the categories found in it; a log that
// can't be read leaves OK disabled.
class IncrementalTimesDialog : public QDialog {
    Q_OBJECT
public:
    explicit IncrementalTimesDialog(QWidget* parent = nullptr);

    // Reads the log and fills the choice of categories; false, with the messages shown and OK
    // disabled, when the log can't be read.
    bool load();

    IncrementalTimes::Request request() const;

private:
    QComboBox* categorySession;
    QLineEdit* car1;
    QLineEdit* car2;
    QCheckBox* onlyTagged;
    QPushButton* ok;
};
