#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QTimer>

class QTcpSocket;

// The relay between the instrument's owner and the display instances: every line a client
// sends, up to and including its CR, goes to every other connected client. Lines are passed
// on whole, so two senders never interleave inside a line.
//
// A client that stops reading must not hold up the rest, so the relay never waits on a
// stalled client: it queues what a client has not taken yet, and drops a client that is
// stuck, with more than 8 MiB waiting for it, or more than 1 MiB it has taken nothing of for
// ten seconds. A client that reads but falls behind for a moment (a flood of lines, a busy
// display) is not dropped: while one that is reading has more than 1 MiB waiting, the relay
// stops reading from the senders, and TCP holds them back until it has caught up.
class Relay : public QObject {
public:
    static constexpr qint64 stuckBacklog = 8 * 1024 * 1024;
    static constexpr qint64 stalledBacklog = 1024 * 1024;
    static constexpr int stalledMs = 10000;
    // A sender's line may be no longer than this before its CR.
    static constexpr qint64 lineLimit = 256 * 1024;

    explicit Relay(QObject* parent = nullptr);
    ~Relay() override;

    bool listen(const QHostAddress& address, quint16 port);
    quint16 port() const { return server.serverPort(); }
    QString errorString() const { return server.errorString(); }

private:
    void admit();
    void takeLines(QTcpSocket* sender);
    void pass(const QByteArray& line, QTcpSocket* sender);
    void tookBytes(QTcpSocket* client);
    bool holdingSendersBack() const;
    void readSendersAgain();
    void dropStuckClients();
    void drop(QTcpSocket* client, const QByteArray& why);
    void forget(QTcpSocket* client);

    struct Client {
        QByteArray name;         // address and port, kept for after the connection is gone
        QByteArray unfinished;   // what the client sent after its last CR
        QElapsedTimer lastTaken; // since the client last took bytes off its queue
    };

    QTcpServer server;
    QTimer stuckCheck;
    QList<QTcpSocket*> order; // the clients in the order they joined
    QHash<QTcpSocket*, Client> clients;
};
