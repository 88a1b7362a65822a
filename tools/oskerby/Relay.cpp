#include "oskerby/Relay.h"

#include "common/Console.h"

#include <QTcpSocket>
#include <sys/socket.h>

namespace {

// A small kernel send buffer keeps a stalled client's backlog in the relay's own queue,
// where the limit can see it, instead of megabytes out of sight in the kernel.
constexpr int kernelSendBuffer = 64 * 1024;

QByteArray nameOf(const QTcpSocket* client) {
    return (client->peerAddress().toString() + u':' + QString::number(client->peerPort()))
        .toLatin1();
}

// Closing with a reset rather than an orderly end: an orderly end would wait behind the
// queued bytes that the stalled client will never take.
void resetConnection(QTcpSocket* client) {
    const linger immediately = {1, 0};
    ::setsockopt(int(client->socketDescriptor()), SOL_SOCKET, SO_LINGER, &immediately,
                 sizeof immediately);
    client->abort();
}

} // namespace

Relay::Relay(QObject* parent) : QObject(parent) {
    connect(&server, &QTcpServer::newConnection, this, &Relay::admit);
}

// The connections close with the server; the relay has nothing more to say about them.
Relay::~Relay() {
    for (QTcpSocket* client : std::as_const(order))
        client->disconnect(this);
}

bool Relay::listen(const QHostAddress& address, quint16 port) {
    return server.listen(address, port);
}

void Relay::admit() {
    while (QTcpSocket* client = server.nextPendingConnection()) {
        client->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kernelSendBuffer);
        order.append(client);
        clients.insert(client, {nameOf(client), {}});
        connect(client, &QTcpSocket::readyRead, this, [this, client] { takeLines(client); });
        connect(client, &QTcpSocket::disconnected, this, [this, client] { forget(client); });
        Console::say("JOINED " + clients[client].name);
    }
}

void Relay::takeLines(QTcpSocket* sender) {
    QByteArray pending = clients[sender].unfinished + sender->readAll();
    qsizetype start = 0;
    QList<QByteArray> lines;
    for (qsizetype end; (end = pending.indexOf('\r', start)) >= 0; start = end + 1)
        lines.append(pending.mid(start, end + 1 - start));
    pending.remove(0, start);
    clients[sender].unfinished = pending;
    for (const QByteArray& line : std::as_const(lines))
        pass(line, sender);
    if (pending.size() > backlogLimit)
        drop(sender, "sent " + QByteArray::number(pending.size()) + " bytes without a line end");
}

void Relay::pass(const QByteArray& line, QTcpSocket* sender) {
    QList<QTcpSocket*> stalled;
    for (QTcpSocket* client : std::as_const(order)) {
        if (client == sender)
            continue;
        if (client->bytesToWrite() + line.size() > backlogLimit)
            stalled.append(client);
        else
            client->write(line);
    }
    for (QTcpSocket* client : std::as_const(stalled))
        drop(client, "fell " + QByteArray::number(client->bytesToWrite()) + " bytes behind");
}

void Relay::drop(QTcpSocket* client, const QByteArray& why) {
    Console::say("DROPPED " + clients.take(client).name + ": " + why);
    order.removeOne(client);
    client->disconnect(this);
    resetConnection(client);
    client->deleteLater();
}

void Relay::forget(QTcpSocket* client) {
    Console::say("LEFT " + clients.take(client).name);
    order.removeOne(client);
    client->disconnect(this);
    client->deleteLater();
}
