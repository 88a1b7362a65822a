#pragma once

#include <QDeadlineTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

// The relay a TCP link connects to in a test: a server on 127.0.0.1 on a free port.
class Relay {
public:
    Relay() { server.listen(QHostAddress::LocalHost); }
    QString port() const { return QString::number(server.serverPort()); }
    // The relay's side of the link's connection, once it has come. The link may first look
    // the host up, which needs the event loop running.
    QTcpSocket* waitForClient() {
        QDeadlineTimer deadline(5000);
        while (!client && !server.hasPendingConnections() && !deadline.hasExpired())
            QTest::qWait(10);
        if (!client)
            client = server.nextPendingConnection();
        return client;
    }
    bool noNewClient() {
        QTest::qWait(100);
        return !server.hasPendingConnections();
    }
    QTcpServer server;
    QTcpSocket* client = nullptr;
};

// A TCP port of 127.0.0.1 that nothing listens on at the moment of asking: a connection to
// it is refused.
inline quint16 freePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}
