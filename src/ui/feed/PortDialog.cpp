#include "ui/feed/PortDialog.h"

#include "ui/shell/DialogParts.h"

#include "feed/FeedWatchdog.h"
#include "feed/InstrumentConnection.h"
#include "feed/PortDevices.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

// The lists of the serial line, in the order the dialog shows them.
struct LineListEntry {
    const char* name;
    const char* label;
    const QStringList& entries;
    qint16 PortSettings::*setting;
    int defaultIndex; // 9600, None, 8, 1, None
};
const LineListEntry LineListTable[] = {
    {"cboBitsPerSecond", "&Bits per second:", BaudRates, &PortSettings::baud, 5},
    {"cboDataBits", "&Data Bits:", DataBitsTexts, &PortSettings::dataBits, 4},
    {"cboParity", "&Parity:", ParityNames, &PortSettings::parity, 0},
    {"cboStopBits", "&Stop Bits:", StopBitsTexts, &PortSettings::stopBits, 0},
    {"cboFlowControl", "&Flow Control:", FlowControlNames, &PortSettings::flowControl, 0},
};

QStringList comPortEntries() {
    QStringList entries{QStringLiteral("None")};
    for (int n = 1; n <= LastComPort; ++n)
        entries << QStringLiteral("Com") + QString::number(n);
    entries << QStringLiteral("TCP/IP");
    return entries;
}

QComboBox* comboBox(const QString& name, const QStringList& entries, bool editable,
                    QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(name);
    box->addItems(entries);
    box->setEditable(editable);
    return box;
}

void addRow(QFormLayout* form, const QString& label, QWidget* field) {
    auto* caption = new QLabel(label, field->parentWidget());
    caption->setBuddy(field);
    form->addRow(caption, field);
}

// Sets an editable list to one of its entries, text and all.
void pickEntry(QComboBox* box, int index) {
    box->setCurrentIndex(index);
    box->setEditText(box->itemText(index));
}

bool isComEntry(int index) {
    return index >= 1 && index <= LastComPort;
}

} // namespace

PortDialog::PortDialog(InstrumentConnection& connection, FeedWatchdog& watchdog, QWidget* parent)
    : QDialog(parent), connection(connection), watchdog(watchdog) {
    setObjectName(QStringLiteral("frmProperties"));
    setWindowTitle(QStringLiteral("Port Settings"));

    auto* lineGroup = new QGroupBox(QStringLiteral("Com Port or TCP/IP"), this);
    auto* lineForm = new QFormLayout(lineGroup);
    buildLists(lineForm);

    auto* networkGroup = new QGroupBox(QStringLiteral("Network Interface"), this);
    auto* networkForm = new QFormLayout(networkGroup);
    cboHost = comboBox(QStringLiteral("cboHost"),
                       {QStringLiteral("None"), QStringLiteral("localhost")}, true, networkGroup);
    cboPort = comboBox(QStringLiteral("cboPort"), {QStringLiteral("None"), QStringLiteral("5555")},
                       true, networkGroup);
    addRow(networkForm, QStringLiteral("Host:"), cboHost);
    addRow(networkForm, QStringLiteral("Port:"), cboPort);

    auto* alarmGroup = new QGroupBox(QStringLiteral("Old Weather"), this);
    auto* alarmForm = new QFormLayout(alarmGroup);
    txtNoWeather = new QLineEdit(alarmGroup);
    txtNoWeather->setObjectName(QStringLiteral("txtNoWeather"));
    txtNoWeather->setValidator(new QIntValidator(0, 3600, txtNoWeather));
    txtNoWeather->setToolTip(QStringLiteral(
        "Seconds without weather before the status line, the race logs and the page warn"));
    addRow(alarmForm, QStringLiteral("&Warn after (s):"), txtNoWeather);

    cmdOK = DialogParts::NamedButton(QStringLiteral("cmdOK"), QStringLiteral("OK"), this);
    cmdCancel =
        DialogParts::NamedButton(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"), this);
    cmdApply = DialogParts::NamedButton(QStringLiteral("cmdApply"), QStringLiteral("&Apply"), this);
    cmdRestoreDefaults = DialogParts::NamedButton(QStringLiteral("cmdRestoreDefaults"),
                                                  QStringLiteral("&Restore Defaults"), this);
    cmdOK->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdRestoreDefaults);
    buttons->addStretch();
    for (QPushButton* each : {cmdOK, cmdCancel, cmdApply})
        buttons->addWidget(each);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lineGroup);
    layout->addWidget(networkGroup);
    layout->addWidget(alarmGroup);
    layout->addLayout(buttons);

    showSettings();
    followChanges();
    centreOnScreen();
}

void PortDialog::buildLists(QFormLayout* form) {
    QWidget* group = form->parentWidget();
    cboComPort = comboBox(QStringLiteral("cboComPort"), comPortEntries(), false, group);
    addRow(form, QStringLiteral("Com Port:"), cboComPort);
#ifndef Q_OS_WIN
    txtDevice = new QLineEdit(group);
    txtDevice->setObjectName(QStringLiteral("txtDevice"));
    addRow(form, QStringLiteral("De&vice:"), txtDevice);
#endif
    for (const LineListEntry& entry : LineListTable) {
        QComboBox* box = comboBox(QString::fromLatin1(entry.name), entry.entries, false, group);
        addRow(form, QString::fromLatin1(entry.label), box);
        lineLists.append({box, entry.setting, entry.defaultIndex});
    }
}

void PortDialog::showSettings() {
    const PortSettings& settings = connection.portSettings;
    cboComPort->setCurrentIndex(settings.comPort);
    showDevice(settings.comPort);
    for (const LineList& list : lineLists)
        list.box->setCurrentIndex(settings.*list.setting);
    cboHost->setEditText(settings.host);
    cboPort->setEditText(settings.tcpPort);
    txtNoWeather->setText(QString::number(watchdog.threshold()));
    cmdApply->setEnabled(false);
    cmdRestoreDefaults->setEnabled(false);
}

// Connected only once the settings are shown, so showing them changes nothing.
void PortDialog::followChanges() {
    connect(cboComPort, &QComboBox::currentIndexChanged, this, &PortDialog::comPortChanged);
    if (txtDevice)
        connect(txtDevice, &QLineEdit::textEdited, this, &PortDialog::deviceEdited);
    for (const LineList& list : lineLists)
        connect(list.box, &QComboBox::currentIndexChanged, this, &PortDialog::listChanged);
    for (QComboBox* box : {cboHost, cboPort})
        connect(box, &QComboBox::editTextChanged, this, &PortDialog::hostOrPortChanged);
    connect(txtNoWeather, &QLineEdit::textEdited, this, &PortDialog::listChanged);
    connect(cmdRestoreDefaults, &QPushButton::clicked, this, &PortDialog::restoreDefaults);
    connect(cmdApply, &QPushButton::clicked, this, &PortDialog::apply);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        apply();
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void PortDialog::centreOnScreen() {
    adjustSize();
    if (QScreen* shown = screen())
        move(shown->geometry().center() - rect().center());
}

void PortDialog::listChanged() {
    cmdApply->setEnabled(true);
    cmdRestoreDefaults->setEnabled(true);
}

void PortDialog::comPortChanged(int index) {
    cmdApply->setEnabled(true);
    showDevice(index);
    // TCP/IP needs a relay to read from; offer the usual one.
    if (index == TcpIpComPort) {
        if (cboHost->currentText().trimmed().isEmpty())
            pickEntry(cboHost, 1);
        if (cboPort->currentText().trimmed().isEmpty())
            pickEntry(cboPort, 1);
    }
}

void PortDialog::showDevice(int comPort) {
    if (!txtDevice)
        return;
    txtDevice->setEnabled(isComEntry(comPort));
    txtDevice->setText(isComEntry(comPort) ? editedDevices.value(comPort, PortDevice(comPort))
                                           : QString());
}

void PortDialog::deviceEdited(const QString& device) {
    editedDevices[cboComPort->currentIndex()] = device;
    cmdApply->setEnabled(true);
}

// A new relay address means the old connection is wrong now, before anything is applied.
void PortDialog::hostOrPortChanged() {
    listChanged();
    connection.IPPort().close();
}

void PortDialog::restoreDefaults() {
    for (const LineList& list : lineLists)
        list.box->setCurrentIndex(list.defaultIndex);
    pickEntry(cboHost, 0);
    pickEntry(cboPort, 0);
    txtNoWeather->setText(QString::number(FeedWatchdog::DefaultThreshold));
    cmdRestoreDefaults->setEnabled(false);
}

void PortDialog::apply() {
    storeToMemory();
    connection.applyLink(cboHost->currentText(), cboPort->currentText());
    cmdApply->setEnabled(false);
}

void PortDialog::storeToMemory() {
    PortSettings& settings = connection.portSettings;
    settings.comPort = qint16(cboComPort->currentIndex());
    for (const LineList& list : lineLists)
        settings.*list.setting = qint16(list.box->currentIndex());
    // An emptied box keeps what was there before here; applying the link right after takes
    // the boxes again as they are, so an emptied box still drops the relay.
    if (const QString host = cboHost->currentText().trimmed(); !host.isEmpty())
        settings.host = host;
    if (const QString port = cboPort->currentText().trimmed(); !port.isEmpty())
        settings.tcpPort = port;
    for (auto device = editedDevices.cbegin(); device != editedDevices.cend(); ++device)
        SetPortDevice(device.key(), device.value());
    editedDevices.clear();
    // Too short a wait, or none, warns of every pause between two lines: such a value is
    // the default, and the field shows what is used.
    const int seconds = FeedWatchdog::thresholdFromText(txtNoWeather->text());
    watchdog.keepThreshold(seconds);
    txtNoWeather->setText(QString::number(seconds));
}
