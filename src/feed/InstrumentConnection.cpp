#include "feed/InstrumentConnection.h"

#include "feed/PortDevices.h"
#include "feed/SerialLink.h"
#include "shell/Dialogs.h"
#include "shell/NumberText.h"

namespace {

const QString StartFailure = QStringLiteral("  Unable to start serial communications");
const QString CloseFailure = QStringLiteral("  Unable to close serial communications");

void warnSerialPort(const QString& failure) {
    Dialogs::Inform(QStringLiteral("WARNING:\r\n") + failure, QStringLiteral("Serial Port - Open"),
                    Dialogs::Icon::Critical);
}

bool namesSomething(const QString& text) {
    return !text.isEmpty() && text != u"None";
}

// The relay port as the socket takes it; nullopt for a text that is not a port number.
std::optional<quint16> relayPort(const QString& text) {
    const auto number = NumberText::ToDouble(text);
    const auto port = number ? NumberText::RoundToInt32(*number) : std::nullopt;
    if (!port || *port < 0 || *port > 65535)
        return std::nullopt;
    return quint16(*port);
}

} // namespace

InstrumentConnection::InstrumentConnection(QObject* parent) : QObject(parent) {
    setSerialPort(std::make_unique<SerialLink>());
    connect(&tcp, &TcpLink::bytesReceived, this, &InstrumentConnection::tcpBytesReceived);
    connect(&tcp, &TcpLink::errorOccurred, this, &InstrumentConnection::showNetworkError);
}

void InstrumentConnection::setSerialPort(std::unique_ptr<PortLink> link) {
    serial = std::move(link);
    connect(serial.get(), &PortLink::bytesReceived, this,
            &InstrumentConnection::serialBytesReceived);
    connect(serial.get(), &PortLink::errorOccurred, this, &InstrumentConnection::serialError);
}

bool InstrumentConnection::StartComm() {
    if (serial->isOpen())
        return true;
    commPort = 2;
    if (!serial->discardInput()) {
        warnSerialPort(StartFailure);
        return false;
    }
    ApplyPortSettings();
    return true;
}

bool InstrumentConnection::CloseComm() {
    if (!serial->isOpen())
        return true;
    if (!serial->discardInput()) {
        warnSerialPort(CloseFailure);
        return false;
    }
    serial->close();
    return true;
}

bool InstrumentConnection::ApplyPortSettings() {
    serial->close();
    if (portSettings.iComPort >= 1 && portSettings.iComPort <= LastComPort)
        commPort = portSettings.iComPort;
    const QString text = SettingsText(portSettings);
    if (portSettings.iFlowControl >= 0 && portSettings.iFlowControl < FlowControlNames.size())
        handshaking = Handshaking(portSettings.iFlowControl);
    const auto line = ParseLineSettings(text);
    if (!line)
        return false;
    if (portSettings.iComPort == NoComPort || portSettings.iComPort == TcpIpComPort)
        return true;
    return serial->open(PortOptions{PortDevice(commPort), *line, handshaking});
}

void InstrumentConnection::applyLink(const QString& hostText, const QString& portText) {
    if (!ApplyPortSettings())
        Dialogs::Inform(QStringLiteral("Error applying settings"), QStringLiteral("Tarnwick"),
                        Dialogs::Icon::Critical);
    portSettings.sHost = hostText.trimmed();
    portSettings.sTcpPort = portText.trimmed();
    connectIPPort();
}

bool InstrumentConnection::connectIPPort() {
    tcp.close();
    if (!namesSomething(portSettings.sHost) || !namesSomething(portSettings.sTcpPort))
        return false;
    const auto port = relayPort(portSettings.sTcpPort);
    if (!port)
        return false;
    tcp.connectToHost(portSettings.sHost, *port);
    return true;
}

void InstrumentConnection::poll() {
    emit onlineMarkDisabled();
    if (serial->isOpen())
        serial->write(QByteArrayLiteral("l\r"));
}

void InstrumentConnection::showNetworkError(int code, const QString& text) {
    Dialogs::Inform(QStringLiteral("Error ") + QString::number(code) + QStringLiteral(": ") + text,
                    QStringLiteral("Network Connection"), Dialogs::Icon::Critical);
}
