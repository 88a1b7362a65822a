#include "feed/SerialLink.h"

#include <QTimer>

namespace {

QSerialPort::Parity parityFor(QChar letter) {
    switch (letter.unicode()) {
    case u'O':
        return QSerialPort::OddParity;
    case u'E':
        return QSerialPort::EvenParity;
    case u'M':
        return QSerialPort::MarkParity;
    case u'S':
        return QSerialPort::SpaceParity;
    default:
        return QSerialPort::NoParity;
    }
}

// The port offers one kind of flow control at a time, so RTS together with Xon / Xoff
// keeps the RTS part.
QSerialPort::FlowControl flowControlFor(Handshaking handshaking) {
    switch (handshaking) {
    case Handshaking::XonXoff:
        return QSerialPort::SoftwareControl;
    case Handshaking::Rts:
    case Handshaking::RtsXonXoff:
        return QSerialPort::HardwareControl;
    case Handshaking::None:
        break;
    }
    return QSerialPort::NoFlowControl;
}

// Errors after which the device can't be read any more: it was unplugged, or the far end of
// a pseudo-terminal went away. The port then signals the same error without end.
bool meansDeviceLost(QSerialPort::SerialPortError error) {
    return error == QSerialPort::ResourceError || error == QSerialPort::ReadError;
}

} // namespace

int commEventFor(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::WriteError:
        return 1010; // the transmit side failed: "Transmit buffer full"
    case QSerialPort::UnsupportedOperationError:
        return 1011; // the line's setup was refused: "... Device Control Block ..."
    case QSerialPort::NoError:
    case QSerialPort::TimeoutError:
    case QSerialPort::NotOpenError:
        return -1;
    default:
        // A lost device, a failed read and anything unknown have no comm event of their
        // own; break, framing, overrun and parity errors are not told apart by the port.
        return 0;
    }
}

SerialLink::SerialLink(QObject* parent) : PortLink(parent) {
    connect(&port, &QSerialPort::readyRead, this, &SerialLink::handOnInput);
    connect(&port, &QSerialPort::errorOccurred, this, &SerialLink::reportError);
}

bool SerialLink::open(const PortOptions& options) {
    // The port has no 4-bit characters.
    if (options.line.dataBits < QSerialPort::Data5)
        return false;
    port.setPortName(options.device);
    port.setBaudRate(options.line.baud);
    port.setParity(parityFor(options.line.parity));
    port.setDataBits(QSerialPort::DataBits(options.line.dataBits));
    port.setStopBits(options.line.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    port.setFlowControl(flowControlFor(options.handshaking));
    opening = true;
    const bool isNowOpen = port.open(QIODevice::ReadWrite);
    opening = false;
    if (!isNowOpen)
        return false;
    deviceLost = false;
    emit opened();
    return true;
}

bool SerialLink::discardInput() {
    if (!port.isOpen())
        return true;
    port.readAll();
    return port.clear(QSerialPort::Input);
}

bool SerialLink::isOpen() const {
    return port.isOpen();
}

bool SerialLink::write(const QByteArray& bytes) {
    if (!port.isOpen())
        return false;
    return port.write(bytes) == bytes.size();
}

void SerialLink::close() {
    if (!port.isOpen())
        return;
    port.close();
    emit closed();
}

void SerialLink::handOnInput() {
    const QByteArray bytes = port.readAll();
    if (!bytes.isEmpty())
        emit bytesReceived(bytes);
}

void SerialLink::reportError(QSerialPort::SerialPortError error) {
    const int code = commEventFor(error);
    if (opening || deviceLost || reporting || code < 0)
        return;
    // Dropping the input can itself fail and report; that is part of this error.
    reporting = true;
    deviceLost = meansDeviceLost(error);
    const QString text = port.errorString();
    // Bytes that came with an error are not to be trusted.
    if (!deviceLost)
        discardInput();
    reporting = false;
    emit errorOccurred(code, text);
    // Told once; the port is closed from the event loop, since the port is still inside its
    // own read when it reports this.
    if (deviceLost)
        QTimer::singleShot(0, this, &SerialLink::close);
}
