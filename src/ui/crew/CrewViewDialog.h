#pragma once

#include <QDialog>

class CrewView;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

// The crew view turned on and off, its address, port and code, and the page's address as
// text and as a QR code a phone's camera opens. Every change takes effect at once and is kept;
// what the dialog shows is what the running program does, a problem included.
class CrewViewDialog : public QDialog {
    Q_OBJECT
public:
    explicit CrewViewDialog(CrewView& crew, QWidget* parent = nullptr);

private:
    void fillAddresses();
    void showCrewView();
    void addressChosen();
    void portEdited();

    CrewView& crew;
    QRadioButton* onButton;
    QRadioButton* offButton;
    QComboBox* addressList;
    QLineEdit* portField;
    QLineEdit* codeField;
    QLabel* stateLabel;
    QLabel* pageAddressLabel;
    QLabel* qrCodeLabel;
};
