#include "crew/CrewConnections.h"

#include <QTcpSocket>
#include <QTimer>

// Watches one connection while it speaks HTTP: the bytes of the request in hand since the
// last answer, and the time it has been silent. Reads before the HTTP server does, since it
// is connected first.
class RequestGuard : public QObject {
public:
    RequestGuard(QTcpSocket* socket, std::chrono::milliseconds idle)
        : QObject(socket), socket(socket) {
        silence.setSingleShot(true);
        silence.setInterval(idle);
        connect(&silence, &QTimer::timeout, socket, &QTcpSocket::abort);
        connect(socket, &QTcpSocket::readyRead, this, &RequestGuard::received);
        connect(socket, &QTcpSocket::bytesWritten, this, &RequestGuard::answered);
        silence.start();
    }

    void stop() {
        silence.stop();
        disconnect(socket, nullptr, this, nullptr);
    }

private:
    void received() {
        silence.stop();
        requestBytes += socket->bytesAvailable();
        if (requestBytes > CrewConnections::MaxRequestBytes)
            socket->abort();
    }

    // Once an answer is out the connection may carry the next request, within the idle time.
    void answered() {
        if (socket->bytesToWrite() > 0)
            return;
        requestBytes = 0;
        silence.start();
    }

    QTcpSocket* const socket;
    QTimer silence;
    qint64 requestBytes = 0;
};

CrewConnections::CrewConnections(std::chrono::milliseconds idleTime, QObject* parent)
    : QTcpServer(parent), idle(idleTime) {}

// A connection over the limit is closed before the HTTP server hears of it.
void CrewConnections::incomingConnection(qintptr handle) {
    auto* socket = new QTcpSocket(this);
    if (!socket->setSocketDescriptor(handle)) {
        delete socket;
        return;
    }
    if (count() >= MaxConnections) {
        socket->abort();
        socket->deleteLater();
        return;
    }
    // Each message to a phone is whole when it is written: it goes at once, not held back
    // until the phone has acknowledged the one before.
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    track(socket, new RequestGuard(socket, idle));
    addPendingConnection(socket);
}

void CrewConnections::track(QTcpSocket* socket, RequestGuard* guard) {
    open.insert(socket, guard);
    watchEnd(socket);
}

void CrewConnections::watchEnd(QTcpSocket* socket) {
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] { open.remove(socket); });
    connect(socket, &QObject::destroyed, this, [this, socket] { open.remove(socket); });
}

// Qt's HTTP server cuts every signal of the socket it hands to the live socket, ours among
// them: the end of the connection is watched again.
QTcpSocket* CrewConnections::upgraded(const QHostAddress& peer, quint16 peerPort) {
    for (auto connection = open.cbegin(); connection != open.cend(); ++connection) {
        QTcpSocket* socket = connection.key();
        if (socket->peerPort() != peerPort || socket->peerAddress() != peer)
            continue;
        connection.value()->stop();
        watchEnd(socket);
        return socket;
    }
    return nullptr;
}
