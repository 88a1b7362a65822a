#pragma once

#include "crew/CrewAccess.h"
#include "crew/CrewConnections.h"
#include "crew/CrewHttp.h"
#include "crew/CrewSnapshot.h"

#include <QHostAddress>
#include <QList>
#include <QObject>

class QTcpSocket;
class WeatherStation;

// The crew view served from the running program: the page for phones on the trailer's
// network and a live socket that gets a snapshot of the weather and the open logs when it
// opens, after every feed line, and whenever a log publishes or its prediction goes stale or
// fresh; what changes together, as a line and the predictions it makes, goes out as one
// message. It only reads: nothing a phone sends changes the program. A phone that stops reading
// is dropped once 1 MB waits for it, so the feed never waits for a phone.
class CrewServer : public QObject {
    Q_OBJECT
public:
    static constexpr qint64 MaxQueuedBytes = 1024 * 1024;

    CrewServer(WeatherStation& station, const QString& code,
               std::chrono::milliseconds idleTime = CrewConnections::DefaultIdleTime,
               QObject* parent = nullptr);
    ~CrewServer() override;

    // False, and `problem` told, when the address or the port cannot be had.
    bool listen(const QHostAddress& address, quint16 port);
    quint16 port() const { return connections->serverPort(); }
    std::chrono::milliseconds idleTime() const { return connections->idleTime(); }
    // Connections open now, page loads and live sockets together.
    int connectionCount() const { return connections->count(); }
    int liveSocketCount() const { return int(phones.size()); }

signals:
    // A line for the status bar: "Crew view: port 8080 is in use".
    void problem(const QString& text);

private:
    // A phone's live socket, and the connection under it that the messages are written to.
    struct Phone {
        QWebSocket* socket;
        QTcpSocket* connection;
    };

    void watchLog(int slot);
    void logPublished();
    void adopt(QWebSocket* socket);
    void drop(QWebSocket* socket);
    void schedulePush();
    void pushToAll();
    void push(const Phone& phone, const QByteArray& frame);
    QByteArray snapshotFrame() const;

    WeatherStation& station;
    CrewAccess access;
    // Ours until it listens; then Qt's HTTP server, which answers on it, holds it.
    CrewConnections* connections;
    CrewHttp http;
    CrewSnapshot::PublishTimes publishTimes;
    QList<Phone> phones;
    // A message is on its way from the event loop; more changes before it goes wait for it.
    bool pushPending = false;
};
