#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

// One small interface for every source of instrument bytes: a serial port, a TCP connection to
// the relay, the built-in simulator and the replay of a recorded feed. The feed never cares
// which one it reads.
class InstrumentLink : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~InstrumentLink() override = default;

    virtual bool isOpen() const = 0;
    // Sends bytes to the far end; false when the link is not open or the write failed.
    virtual bool write(const QByteArray& bytes) = 0;
    virtual void close() = 0;

signals:
    void bytesReceived(const QByteArray& bytes);
    void opened();
    void closed();
    // code: the nearest serial comm event number (1001 to 1011), or 0 when none fits;
    // text: what went wrong, in the words of the link.
    void errorOccurred(int code, const QString& text);
};
