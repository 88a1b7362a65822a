#pragma once

#include "feed/InstrumentLink.h"

#include <QTcpSocket>

// The TCP connection to the relay that passes instrument lines between the main instance
// and the display instances. Errors are reported with the socket's own code and words.
class TcpLink : public InstrumentLink {
    Q_OBJECT
public:
    explicit TcpLink(QObject* parent = nullptr);

    // Starts connecting; a connection already there or under way is dropped first.
    void connectToHost(const QString& host, quint16 port);
    bool isOpen() const override;
    bool write(const QByteArray& bytes) override;
    // Ends the connection, or the attempt to make one.
    void close() override;

private:
    QTcpSocket socket;

    void reportError(QAbstractSocket::SocketError error);
};
