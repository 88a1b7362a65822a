#pragma once

#include <QHash>
#include <QTcpServer>
#include <chrono>

class QTcpSocket;
class RequestGuard;

// The listening socket of the crew view, with the limits that keep a phone (or anything else
// on the trailer's network) from tying up the program: at most 64 connections at once, page
// loads and live sockets together; a request of more than 16 KB is cut off; a connection that
// sends no request within the idle time is closed. A connection that became a live socket is
// no longer watched for requests: it only listens.
class CrewConnections : public QTcpServer {
    Q_OBJECT
public:
    static constexpr int MaxConnections = 64;
    static constexpr qint64 MaxRequestBytes = 16 * 1024;
    static constexpr std::chrono::milliseconds DefaultIdleTime{10000};

    explicit CrewConnections(std::chrono::milliseconds idleTime = DefaultIdleTime,
                             QObject* parent = nullptr);

    std::chrono::milliseconds idleTime() const { return idle; }
    int count() const { return int(open.size()); }
    // The connection from this address and port of the phone became a live socket; returns it,
    // or null when no such connection is open.
    QTcpSocket* upgraded(const QHostAddress& peer, quint16 peerPort);

protected:
    void incomingConnection(qintptr handle) override;

private:
    void track(QTcpSocket* socket, RequestGuard* guard);
    void watchEnd(QTcpSocket* socket);

    const std::chrono::milliseconds idle;
    // Each open connection with the guard that watches it while it speaks HTTP.
    QHash<QTcpSocket*, RequestGuard*> open;
};
