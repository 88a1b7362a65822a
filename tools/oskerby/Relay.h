#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QTcpServer>

class QTcpSocket;

// The relay between the instrument's owner and the display instances: every line a client
// sends, up to and including its CR, goes to every other connected client. Lines are passed
// on whole, so two senders never interleave inside a line.
//
// A client that stops reading must not hold up the rest, so the relay never waits on a
// client: it queues what a client has not taken yet, and drops a client whose queue passes
// the backlog limit. A weather line is about a hundred bytes every few seconds; only a
// client that has stalled for good ever gets near the limit.
class Relay : public QObject {
public:
    static constexpr qint64 backlogLimit = 256 * 1024;

    explicit Relay(QObject* parent = nullptr);
    ~Relay() override;

    bool listen(const QHostAddress& address, quint16 port);
    quint16 port() const { return server.serverPort(); }
    QString errorString() const { return server.errorString(); }

private:
    void admit();
    void takeLines(QTcpSocket* sender);
    void pass(const QByteArray& line, QTcpSocket* sender);
    void drop(QTcpSocket* client, const QByteArray& why);
    void forget(QTcpSocket* client);

    struct Client {
        QByteArray name;       // address and port, kept for after the connection is gone
        QByteArray unfinished; // what the client sent after its last CR
    };

    QTcpServer server;
    QList<QTcpSocket*> order; // the clients in the order they joined
    QHash<QTcpSocket*, Client> clients;
};
