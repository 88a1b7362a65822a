#include "oskerby/Relay.h"

#include "common/Console.h"

#include <QTcpSocket>
#include <algorithm>
#include <sys/socket.h>

namespace {

// A small kernel send buffer keeps a stalled client's backlog in the relay's own queue,
// where the limit can see it, instead of megabytes out of sight in the kernel.
constexpr int kernelSendBuffer = 64 * 1024;
// What the relay reads ahead of a sender; the rest waits in TCP while senders are held back.
constexpr qint64 readAhead = 64 * 1024;
// A client that took bytes this recently is reading; one that has not is left to its limits
// and holds nobody back.
constexpr int readingMs = 250;
// The senders are held back while a reading client has more than this waiting, and read
// again once every reading client is down to the lower mark.
constexpr qint64 holdBacklog = 1024 * 1024;
constexpr qint64 releaseBacklog = 256 * 1024;

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
    stuckCheck.setInterval(readingMs);
    connect(&stuckCheck, &QTimer::timeout, this, [this] {
        dropStuckClients();
        readSendersAgain();
    });
    stuckCheck.start();
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
        client->setReadBufferSize(readAhead);
        order.append(client);
        clients.insert(client, {nameOf(client), {}, {}});
        clients[client].lastTaken.start();
        connect(client, &QTcpSocket::readyRead, this, [this, client] { takeLines(client); });
        connect(client, &QTcpSocket::bytesWritten, this, [this, client] { tookBytes(client); });
        connect(client, &QTcpSocket::disconnected, this, [this, client] { forget(client); });
        Console::say("JOINED " + clients[client].name);
    }
}

void Relay::takeLines(QTcpSocket* sender) {
    // The bytes stay in the socket; they are read when the reading clients have caught up.
    if (holdingSendersBack())
        return;
    QByteArray pending = clients[sender].unfinished + sender->readAll();
    qsizetype start = 0;
    QList<QByteArray> lines;
    for (qsizetype end; (end = pending.indexOf('\r', start)) >= 0; start = end + 1)
        lines.append(pending.mid(start, end + 1 - start));
    pending.remove(0, start);
    clients[sender].unfinished = pending;
    for (const QByteArray& line : std::as_const(lines))
        pass(line, sender);
    if (pending.size() > lineLimit)
        drop(sender, "sent " + QByteArray::number(pending.size()) + " bytes without a line end");
}

void Relay::pass(const QByteArray& line, QTcpSocket* sender) {
    QList<QTcpSocket*> stuck;
    for (QTcpSocket* client : std::as_const(order)) {
        if (client == sender)
            continue;
        if (client->bytesToWrite() + line.size() > stuckBacklog)
            stuck.append(client);
        else
            client->write(line);
    }
    for (QTcpSocket* client : std::as_const(stuck))
        drop(client, "fell " + QByteArray::number(client->bytesToWrite()) + " bytes behind");
}

void Relay::tookBytes(QTcpSocket* client) {
    clients[client].lastTaken.restart();
    readSendersAgain();
}

bool Relay::holdingSendersBack() const {
    return std::any_of(order.begin(), order.end(), [this](QTcpSocket* client) {
        return client->bytesToWrite() > holdBacklog &&
               clients[client].lastTaken.elapsed() < readingMs;
    });
}

void Relay::readSendersAgain() {
    const bool caughtUp = std::none_of(order.begin(), order.end(), [this](QTcpSocket* client) {
        return client->bytesToWrite() > releaseBacklog &&
               clients[client].lastTaken.elapsed() < readingMs;
    });
    if (!caughtUp)
        return;
    // A copy: a sender may be dropped on the way.
    const QList<QTcpSocket*> senders = order;
    for (QTcpSocket* sender : senders) {
        if (clients.contains(sender) && sender->bytesAvailable() > 0)
            takeLines(sender);
    }
}

void Relay::dropStuckClients() {
    const QList<QTcpSocket*> all = order;
    for (QTcpSocket* client : all) {
        const qint64 waiting = client->bytesToWrite();
        if (waiting > stalledBacklog && clients[client].lastTaken.elapsed() > stalledMs)
            drop(client, "took nothing of " + QByteArray::number(waiting) + " bytes for " +
                             QByteArray::number(stalledMs / 1000) + " s");
    }
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
