#include "feed/InstrumentConnection.h"

#include "core/Dialogs.h"
#include "core/NumberText.h"
#include "feed/PortDevices.h"
#include "feed/SerialLink.h"

namespace {

const QString StartFailure = QStringLiteral("  Unable to start serial communications");
const QString CloseFailure = QStringLiteral("  Unable to close serial communications");

// Every failure the connection tells of is a one-button box with the critical icon.
Dialogs::Message criticalBox(const QString& text, const QString& title) {
    return {text, title, Dialogs::Icon::Critical, Dialogs::Buttons::Ok, Dialogs::Answer::Ok};
}

Dialogs::Message serialPortWarning(const QString& failure) {
    return criticalBox(QStringLiteral("WARNING:\r\n") + failure,
                       QStringLiteral("Serial Port - Open"));
}

Dialogs::Message networkError(int code, const QString& text) {
    return criticalBox(QStringLiteral("Error %1: %2").arg(code).arg(text),
                       QStringLiteral("Network Connection"));
}

bool namesSomething(const QString& text) {
    return !text.isEmpty() && text != u"None";
}

// The relay port as the socket takes it; nullopt for a text that is not a port number.
std::optional<quint16> relayPort(const QString& text) {
    const auto number = NumberText::toDouble(text);
    const auto port = number ? NumberText::roundToInt32(*number) : std::nullopt;
    if (!port || *port < 0 || *port > 65535)
        return std::nullopt;
    return quint16(*port);
}

// How long a lost link waits before the next try, in milliseconds.
constexpr int SerialRetryMs = 1000;
constexpr int RelayRetryMs = 2000;

const QString Reconnecting = QStringLiteral("Reconnecting...");

} // namespace

InstrumentConnection::InstrumentConnection(QObject* parent) : QObject(parent) {
    serialRetry.setInterval(SerialRetryMs);
    connect(&serialRetry, &QTimer::timeout, this, &InstrumentConnection::reopenSerialPort);
    relayRetry.setInterval(RelayRetryMs);
    relayRetry.setSingleShot(true);
    connect(&relayRetry, &QTimer::timeout, this, &InstrumentConnection::reconnectRelay);

    setSerialPort(std::make_unique<SerialLink>());
    connect(&tcp, &TcpLink::bytesReceived, this, &InstrumentConnection::tcpBytesReceived);
    connect(&tcp, &TcpLink::errorOccurred, this, &InstrumentConnection::relayError);
    connect(&tcp, &TcpLink::closed, this, &InstrumentConnection::relayLost);
    connect(&tcp, &TcpLink::opened, this, [this] {
        relayRetry.stop();
        emit relayConnected();
    });
    connect(&tcp, &TcpLink::opened, this, &InstrumentConnection::linkOpened);
    connect(&tcp, &TcpLink::closed, this, &InstrumentConnection::linkClosed);
}

// The links go before the retry timers do; what they say on the way out is not heard.
InstrumentConnection::~InstrumentConnection() {
    tcp.disconnect(this);
    serial->disconnect(this);
}

void InstrumentConnection::setSerialPort(std::unique_ptr<PortLink> link) {
    forgetSerialPort();
    serial = std::move(link);
    connect(serial.get(), &PortLink::bytesReceived, this,
            &InstrumentConnection::serialBytesReceived);
    connect(serial.get(), &PortLink::errorOccurred, this, &InstrumentConnection::serialError);
    connect(serial.get(), &PortLink::closed, this, &InstrumentConnection::serialClosed);
    connect(serial.get(), &PortLink::opened, this, &InstrumentConnection::linkOpened);
    connect(serial.get(), &PortLink::closed, this, &InstrumentConnection::linkClosed);
    // The link replaced went without a word.
    emit linkClosed();
}

void InstrumentConnection::forgetSerialPort() {
    serialWanted.reset();
    serialRetry.stop();
}

// Closed by anything but this object: the device went away.
void InstrumentConnection::serialClosed() {
    if (!serialWanted)
        return;
    emit linkStatus(Reconnecting);
    serialRetry.start();
}

void InstrumentConnection::reopenSerialPort() {
    if (serialWanted && serial->open(*serialWanted))
        serialRetry.stop();
}

bool InstrumentConnection::startComm() {
    if (serial->isOpen())
        return true;
    commPort = 2;
    if (!serial->discardInput()) {
        emit warning(serialPortWarning(StartFailure));
        return false;
    }
    applyPortSettings();
    return true;
}

bool InstrumentConnection::closeComm() {
    forgetSerialPort();
    if (!serial->isOpen())
        return true;
    if (!serial->discardInput()) {
        emit warning(serialPortWarning(CloseFailure));
        return false;
    }
    serial->close();
    return true;
}

bool InstrumentConnection::applyPortSettings() {
    forgetSerialPort();
    serial->close();
    if (portSettings.comPort >= 1 && portSettings.comPort <= LastComPort)
        commPort = portSettings.comPort;
    const QString text = settingsText(portSettings);
    if (portSettings.flowControl >= 0 && portSettings.flowControl < FlowControlNames.size())
        handshaking = Handshaking(portSettings.flowControl);
    const auto line = parseLineSettings(text);
    if (!line)
        return false;
    if (portSettings.comPort == NoComPort || portSettings.comPort == TcpIpComPort)
        return true;
    const PortOptions options{portDevice(commPort), *line, handshaking};
    if (!serial->open(options))
        return false;
    serialWanted = options;
    return true;
}

void InstrumentConnection::applyLink(const QString& hostText, const QString& portText) {
    if (!applyPortSettings())
        emit warning(
            criticalBox(QStringLiteral("Error applying settings"), QStringLiteral("Tarnwick")));
    portSettings.host = hostText.trimmed();
    portSettings.tcpPort = portText.trimmed();
    showRelayFailure = connectIPPort();
}

bool InstrumentConnection::connectIPPort() {
    closeRelay();
    if (!namesSomething(portSettings.host) || !namesSomething(portSettings.tcpPort))
        return false;
    const auto port = relayPort(portSettings.tcpPort);
    if (!port)
        return false;
    relayWanted = true;
    relayHost = portSettings.host;
    relayPortNumber = *port;
    tcp.connectToHost(relayHost, relayPortNumber);
    return true;
}

void InstrumentConnection::closeRelay() {
    relayWanted = false;
    showRelayFailure = false;
    relayRetry.stop();
    tcp.close();
}

void InstrumentConnection::relayLost() {
    if (!relayWanted)
        return;
    emit linkStatus(Reconnecting);
    relayRetry.start();
}

void InstrumentConnection::reconnectRelay() {
    if (relayWanted && !tcp.isOpen())
        tcp.connectToHost(relayHost, relayPortNumber);
}

// A refused or failed connection is tried again; only the first failure of a connection the
// user asked for is shown.
void InstrumentConnection::relayError(int code, const QString& text) {
    if (showRelayFailure)
        emit warning(networkError(code, text));
    showRelayFailure = false;
    if (!tcp.isOpen())
        relayLost();
}

void InstrumentConnection::poll() {
    emit onlineMarkDisabled();
    if (serial->isOpen())
        serial->write(QByteArrayLiteral("l\r"));
}

bool InstrumentConnection::anyLinkOpen() const {
    return serial->isOpen() || tcp.isOpen();
}
