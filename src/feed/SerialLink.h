#pragma once

#include "feed/PortLink.h"

#include <QSerialPort>

// The instrument's serial port. Everything that arrives is handed on as it comes; errors of
// the open port are reported with the nearest serial comm event number.
class SerialLink : public PortLink {
    Q_OBJECT
public:
    explicit SerialLink(QObject* parent = nullptr);

    bool open(const PortOptions& options) override;
    bool discardInput() override;
    bool isOpen() const override;
    bool write(const QByteArray& bytes) override;
    void close() override;

private:
    QSerialPort port;
    bool opening = false; // a failed open is told by open() itself, not as a comm error
    bool deviceLost = false;
    bool reporting = false; // an error is being reported; what it sets off is part of it

    void handOnInput();
    void reportError(QSerialPort::SerialPortError error);
};

// The comm event number that comes nearest to an error of the port, 0 when none fits and -1
// for what is no comm event at all (no error, a timeout, a port that isn't open).
int commEventFor(QSerialPort::SerialPortError error);
