#include "crew/CrewServer.h"

#include "crew/CrewFrame.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"

#include <QTcpSocket>
#include <QWebSocket>
#include <algorithm>

#ifdef Q_OS_UNIX
#include <sys/socket.h>
#endif

namespace {

QString listenProblem(const QTcpServer& listener, const QHostAddress& address, quint16 port) {
    switch (listener.serverError()) {
    case QAbstractSocket::AddressInUseError:
        return QStringLiteral("Crew view: port %1 is in use").arg(port);
    case QAbstractSocket::SocketAddressNotAvailableError:
        return QStringLiteral("Crew view: address %1 is not on this computer")
            .arg(address.toString());
    default:
        return QStringLiteral("Crew view: ") + listener.errorString();
    }
}

// Hands the frame to the system in this call rather than on a later turn of the event loop,
// with nothing for the event loop to do afterwards: Qt's own write switches the connection's
// write watch on and off again for every phone, which with many phones costs more than the
// sending itself. What the system does not take at once waits in the connection's buffer, and
// every later frame queues behind it there, so frames never mix.
void sendNow(QTcpSocket& connection, const QByteArray& frame) {
    qint64 sent = 0;
#ifdef MSG_NOSIGNAL
    if (connection.bytesToWrite() == 0) {
        const auto descriptor = int(connection.socketDescriptor());
        sent = std::max<qint64>(0, ::send(descriptor, frame.constData(), size_t(frame.size()),
                                          MSG_NOSIGNAL | MSG_DONTWAIT));
    }
#endif
    if (sent < frame.size()) {
        connection.write(frame.constData() + sent, frame.size() - sent);
        connection.flush();
    }
}

} // namespace

// Every handled feed line ends with the status text (a reading or the words of a bad line),
// so that signal, not recordRead, tells the phones of each line. Each open log publishes on the
// same line first; all of it goes out as one message (schedulePush).
CrewServer::CrewServer(WeatherStation& station, const QString& code,
                       std::chrono::milliseconds idleTime, QObject* parent)
    : QObject(parent), station(station), access(code),
      connections(new CrewConnections(idleTime, this)), http(access, this) {
    connect(&http, &CrewHttp::liveSocketOpened, this, &CrewServer::adopt);

    connect(&station.feed(), &WeatherFeed::statusText, this, &CrewServer::schedulePush);
    connect(&station.watchdog(), &FeedWatchdog::staleFor, this, &CrewServer::schedulePush);
    connect(&station.watchdog(), &FeedWatchdog::fresh, this, &CrewServer::schedulePush);
    const OpenRaceLogs& logs = station.raceLogs();
    for (int slot = 0; slot < logs.slotCount(); ++slot)
        watchLog(slot);
    connect(&logs, &OpenRaceLogs::opened, this, &CrewServer::watchLog);
    connect(&logs, &OpenRaceLogs::closed, this, &CrewServer::schedulePush);
}

// The phones go before the listening socket; a phone that says goodbye as it goes finds
// itself off the list already.
CrewServer::~CrewServer() {
    for (const Phone& phone : std::exchange(phones, {}))
        delete phone.socket;
}

bool CrewServer::listen(const QHostAddress& address, quint16 port) {
    if (!connections->listen(address, port)) {
        emit problem(listenProblem(*connections, address, port));
        return false;
    }
    http.bind(connections);
    return true;
}

void CrewServer::watchLog(int slot) {
    RaceLog* log = station.raceLogs().at(slot);
    if (!log)
        return;
    const PublishedPrediction* prediction = &log->prediction();
    connect(prediction, &PublishedPrediction::published, this, &CrewServer::logPublished,
            Qt::UniqueConnection);
    connect(prediction, &PublishedPrediction::staleChanged, this, &CrewServer::schedulePush,
            Qt::UniqueConnection);
    connect(&log->trust(), &PredictionTrust::changed, this, &CrewServer::schedulePush,
            Qt::UniqueConnection);
    connect(prediction, &QObject::destroyed, this,
            [this, prediction] { publishTimes.remove(prediction); });
}

void CrewServer::logPublished() {
    publishTimes.insert(static_cast<const PublishedPrediction*>(sender()),
                        QDateTime::currentDateTime());
    schedulePush();
}

// A new phone gets the snapshot at once, not at the next line. One whose connection ended
// on the way here has nothing left to be sent to.
void CrewServer::adopt(QWebSocket* socket) {
    socket->setParent(this);
    QTcpSocket* connection = connections->upgraded(socket->peerAddress(), socket->peerPort());
    if (!connection) {
        socket->deleteLater();
        return;
    }
    const Phone phone{socket, connection};
    phones.append(phone);
    connect(socket, &QWebSocket::disconnected, this, [this, socket] { drop(socket); });
    push(phone, snapshotFrame());
}

void CrewServer::drop(QWebSocket* socket) {
    if (phones.removeIf([socket](const Phone& phone) { return phone.socket == socket; }) > 0)
        socket->deleteLater();
}

// A feed line makes one event for each open log and one for the line itself; a phone needs
// only the state once all of them are done. The message is made when control is back in the
// event loop, so whatever changed in the meantime goes out together, once.
void CrewServer::schedulePush() {
    if (pushPending)
        return;
    pushPending = true;
    QMetaObject::invokeMethod(this, &CrewServer::pushToAll, Qt::QueuedConnection);
}

void CrewServer::pushToAll() {
    pushPending = false;
    if (phones.isEmpty())
        return;
    const QByteArray frame = snapshotFrame();
    for (const Phone& phone : QList(phones))
        push(phone, frame);
}

// A phone that has not read the last megabyte is gone as far as the feed is concerned. The
// message, framed once for all phones, goes straight onto the phone's connection; the live
// socket keeps the rest of the conversation: the handshake, what the phone sends, and the
// goodbye, after which nothing more is written.
void CrewServer::push(const Phone& phone, const QByteArray& frame) {
    if (phone.connection->bytesToWrite() >= MaxQueuedBytes) {
        phone.socket->abort();
        drop(phone.socket);
        return;
    }
    if (phone.socket->state() == QAbstractSocket::ConnectedState)
        sendNow(*phone.connection, frame);
}

QByteArray CrewServer::snapshotFrame() const {
    return CrewFrame::text(CrewSnapshot::json(station, publishTimes, QDateTime::currentDateTime()));
}
