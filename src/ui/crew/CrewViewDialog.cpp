#include "ui/crew/CrewViewDialog.h"

#include "crew/CrewAddresses.h"
#include "crew/CrewQrCode.h"
#include "crew/CrewView.h"
#include "ui/shell/DialogParts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

// Large enough for a phone held at arm's length to read off the screen.
constexpr int QrModulePixels = 5;

template <typename Control> Control* named(const QString& name, Control* control) {
    control->setObjectName(name);
    return control;
}

} // namespace

CrewViewDialog::CrewViewDialog(CrewView& crew, QWidget* parent) : QDialog(parent), crew(crew) {
    setObjectName(QStringLiteral("frmCrewView"));
    setWindowTitle(QStringLiteral("Crew View"));

    onButton = named(QStringLiteral("optOn"), new QRadioButton(QStringLiteral("O&n"), this));
    offButton = named(QStringLiteral("optOff"), new QRadioButton(QStringLiteral("O&ff"), this));
    auto* onOff = new QHBoxLayout;
    onOff->addWidget(onButton);
    onOff->addWidget(offButton);
    onOff->addStretch();

    addressList = named(QStringLiteral("cboAddress"), new QComboBox(this));
    portField = named(QStringLiteral("txtPort"), new QLineEdit(this));
    portField->setValidator(new QIntValidator(1, 65535, portField));
    codeField = named(QStringLiteral("txtCode"), new QLineEdit(this));
    codeField->setReadOnly(true);
    QPushButton* newCodeButton =
        DialogParts::namedButton(QStringLiteral("cmdNewCode"), QStringLiteral("&New Code"), this);
    auto* codeRow = new QHBoxLayout;
    codeRow->addWidget(codeField);
    codeRow->addWidget(newCodeButton);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Crew view:"), onOff);
    form->addRow(QStringLiteral("&Address:"), addressList);
    form->addRow(QStringLiteral("&Port:"), portField);
    form->addRow(QStringLiteral("Access code:"), codeRow);

    stateLabel = named(QStringLiteral("lblState"), new QLabel(this));
    stateLabel->setWordWrap(true);
    pageAddressLabel = named(QStringLiteral("lblPageAddress"), new QLabel(this));
    pageAddressLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    pageAddressLabel->setAlignment(Qt::AlignCenter);
    qrCodeLabel = named(QStringLiteral("lblQRCode"), new QLabel(this));
    qrCodeLabel->setAlignment(Qt::AlignCenter);

    QPushButton* closeButton =
        DialogParts::namedButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), this);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(stateLabel);
    layout->addWidget(pageAddressLabel);
    layout->addWidget(qrCodeLabel, 1);
    layout->addLayout(DialogParts::closingButtons({closeButton}));

    fillAddresses();
    showCrewView();
    connect(&crew, &CrewView::changed, this, &CrewViewDialog::showCrewView);
    connect(onButton, &QRadioButton::clicked, this, [this] { this->crew.setOn(true); });
    connect(offButton, &QRadioButton::clicked, this, [this] { this->crew.setOn(false); });
    connect(addressList, &QComboBox::activated, this, &CrewViewDialog::addressChosen);
    connect(portField, &QLineEdit::editingFinished, this, &CrewViewDialog::portEdited);
    connect(newCodeButton, &QPushButton::clicked, this, [this] { this->crew.makeNewCode(); });
    connect(closeButton, &QPushButton::clicked, this, &QDialog::accept);
}

// The networks of the moment; a kept address that is not among them still shows, so the
// problem it makes can be seen and another chosen.
void CrewViewDialog::fillAddresses() {
    for (const CrewAddresses::Choice& choice : CrewAddresses::choices())
        addressList->addItem(choice.caption, choice.address);
    if (addressList->findData(crew.address()) < 0)
        addressList->addItem(crew.address(), crew.address());
}

void CrewViewDialog::showCrewView() {
    const bool serving = crew.state() == CrewView::State::Serving;
    const bool on = crew.state() != CrewView::State::Off;
    onButton->setChecked(on);
    offButton->setChecked(!on);
    addressList->setCurrentIndex(addressList->findData(crew.address()));
    portField->setText(QString::number(crew.port()));
    codeField->setText(crew.code());
    stateLabel->setText(crew.stateText());
    // Only an address that answers is offered to a phone.
    const QString pageAddress = serving ? crew.pageAddress() : QString();
    pageAddressLabel->setText(pageAddress);
    qrCodeLabel->setPixmap(
        serving ? QPixmap::fromImage(CrewQrCode::image(pageAddress, QrModulePixels)) : QPixmap());
}

void CrewViewDialog::addressChosen() {
    crew.moveTo(addressList->currentData().toString(), crew.port());
}

// Leaving the field without a change leaves the running server alone.
void CrewViewDialog::portEdited() {
    const uint port = portField->text().toUInt();
    if (port != 0 && port != crew.port())
        crew.moveTo(crew.address(), quint16(port));
}
