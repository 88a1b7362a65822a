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
    hostList = comboBox(QStringLiteral("cboHost"),
                        {QStringLiteral("None"), QStringLiteral("localhost")}, true, networkGroup);
    portList = comboBox(QStringLiteral("cboPort"), {QStringLiteral("None"), QStringLiteral("5555")},
                        true, networkGroup);
    addRow(networkForm, QStringLiteral("Host:"), hostList);
    addRow(networkForm, QStringLiteral("Port:"), portList);

    auto* alarmGroup = new QGroupBox(QStringLiteral("Old Weather"), this);
    auto* alarmForm = new QFormLayout(alarmGroup);
    warnAfterField = new QLineEdit(alarmGroup);
    warnAfterField->setObjectName(QStringLiteral("txtNoWeather"));
    warnAfterField->setValidator(new QIntValidator(0, 3600, warnAfterField));
    warnAfterField->setToolTip(QStringLiteral(
        "Seconds without weather before the status line, the race logs and the page warn"));
    addRow(alarmForm, QStringLiteral("&Warn after (s):"), warnAfterField);

    okButton = DialogParts::namedButton(QStringLiteral("cmdOK"), QStringLiteral("OK"), this);
    cancelButton =
        DialogParts::namedButton(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"), this);
    applyButton =
        DialogParts::namedButton(QStringLiteral("cmdApply"), QStringLiteral("&Apply"), this);
    restoreDefaultsButton = DialogParts::namedButton(QStringLiteral("cmdRestoreDefaults"),
                                                     QStringLiteral("&Restore Defaults"), this);
    okButton->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(restoreDefaultsButton);
    buttons->addStretch();
    for (QPushButton* each : {okButton, cancelButton, applyButton})
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
    comPortList = comboBox(QStringLiteral("cboComPort"), comPortEntries(), false, group);
    addRow(form, QStringLiteral("Com Port:"), comPortList);
#ifndef Q_OS_WIN
    deviceField = new QLineEdit(group);
    deviceField->setObjectName(QStringLiteral("txtDevice"));
    addRow(form, QStringLiteral("De&vice:"), deviceField);
#endif
    for (const LineListEntry& entry : LineListTable) {
        QComboBox* box = comboBox(QString::fromLatin1(entry.name), entry.entries, false, group);
        addRow(form, QString::fromLatin1(entry.label), box);
        lineLists.append({box, entry.setting, entry.defaultIndex});
    }
}

void PortDialog::showSettings() {
    const PortSettings& settings = connection.portSettings;
    comPortList->setCurrentIndex(settings.comPort);
    showDevice(settings.comPort);
    for (const LineList& list : lineLists)
        list.box->setCurrentIndex(settings.*list.setting);
    hostList->setEditText(settings.host);
    portList->setEditText(settings.tcpPort);
    warnAfterField->setText(QString::number(watchdog.threshold()));
    applyButton->setEnabled(false);
    restoreDefaultsButton->setEnabled(false);
}

// Connected only once the settings are shown, so showing them changes nothing.
void PortDialog::followChanges() {
    connect(comPortList, &QComboBox::currentIndexChanged, this, &PortDialog::comPortChanged);
    if (deviceField)
        connect(deviceField, &QLineEdit::textEdited, this, &PortDialog::deviceEdited);
    for (const LineList& list : lineLists)
        connect(list.box, &QComboBox::currentIndexChanged, this, &PortDialog::listChanged);
    for (QComboBox* box : {hostList, portList})
        connect(box, &QComboBox::editTextChanged, this, &PortDialog::hostOrPortChanged);
    connect(warnAfterField, &QLineEdit::textEdited, this, &PortDialog::listChanged);
    connect(restoreDefaultsButton, &QPushButton::clicked, this, &PortDialog::restoreDefaults);
    connect(applyButton, &QPushButton::clicked, this, &PortDialog::apply);
    connect(okButton, &QPushButton::clicked, this, [this] {
        apply();
        accept();
    });
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void PortDialog::centreOnScreen() {
    adjustSize();
    if (QScreen* shown = screen())
        move(shown->geometry().center() - rect().center());
}

void PortDialog::listChanged() {
    applyButton->setEnabled(true);
    restoreDefaultsButton->setEnabled(true);
}

void PortDialog::comPortChanged(int index) {
    applyButton->setEnabled(true);
    showDevice(index);
    // TCP/IP needs a relay to read from; offer the usual one.
    if (index == TcpIpComPort) {
        if (hostList->currentText().trimmed().isEmpty())
            pickEntry(hostList, 1);
        if (portList->currentText().trimmed().isEmpty())
            pickEntry(portList, 1);
    }
}

void PortDialog::showDevice(int comPort) {
    if (!deviceField)
        return;
    deviceField->setEnabled(isComEntry(comPort));
    deviceField->setText(isComEntry(comPort) ? editedDevices.value(comPort, portDevice(comPort))
                                             : QString());
}

void PortDialog::deviceEdited(const QString& device) {
    editedDevices[comPortList->currentIndex()] = device;
    applyButton->setEnabled(true);
}

// A new relay address means the old connection is wrong now, before anything is applied.
void PortDialog::hostOrPortChanged() {
    listChanged();
    connection.ipPort().close();
}

void PortDialog::restoreDefaults() {
    for (const LineList& list : lineLists)
        list.box->setCurrentIndex(list.defaultIndex);
    pickEntry(hostList, 0);
    pickEntry(portList, 0);
    warnAfterField->setText(QString::number(FeedWatchdog::DefaultThreshold));
    restoreDefaultsButton->setEnabled(false);
}

void PortDialog::apply() {
    storeToMemory();
    connection.applyLink(hostList->currentText(), portList->currentText());
    applyButton->setEnabled(false);
}

void PortDialog::storeToMemory() {
    PortSettings& settings = connection.portSettings;
    settings.comPort = qint16(comPortList->currentIndex());
    for (const LineList& list : lineLists)
        settings.*list.setting = qint16(list.box->currentIndex());
    // An emptied box keeps what was there before here; applying the link right after takes
    // the boxes again as they are, so an emptied box still drops the relay.
    if (const QString host = hostList->currentText().trimmed(); !host.isEmpty())
        settings.host = host;
    if (const QString port = portList->currentText().trimmed(); !port.isEmpty())
        settings.tcpPort = port;
    for (auto device = editedDevices.cbegin(); device != editedDevices.cend(); ++device)
        setPortDevice(device.key(), device.value());
    editedDevices.clear();
    // Too short a wait, or none, warns of every pause between two lines: such a value is
    // the default, and the field shows what is used.
    const int seconds = FeedWatchdog::thresholdFromText(warnAfterField->text());
    watchdog.keepThreshold(seconds);
    warnAfterField->setText(QString::number(seconds));
}
