#include "crew/CrewServer.h"

#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"

#include <QWebSocket>

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

} // namespace

// Every handled feed line ends with the status text (a reading or the words of a bad line),
// so that signal, not recordRead, tells the phones of each line. Each open log publishes on the
// same line first; all of it goes out as one message (schedulePush).
CrewServer::CrewServer(WeatherStation& station, const QString& code,
                       std::chrono::milliseconds idleTime, QObject* parent)
    : QObject(parent), station(station), access(code),
      connections(new CrewConnections(idleTime, this)), http(access) {
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
    qDeleteAll(std::exchange(liveSockets, {}));
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

// A new phone gets the snapshot at once, not at the next line.
void CrewServer::adopt(QWebSocket* socket) {
    socket->setParent(this);
    connections->upgraded(socket->peerAddress(), socket->peerPort());
    liveSockets.append(socket);
    connect(socket, &QWebSocket::disconnected, this, [this, socket] { drop(socket); });
    push(socket, snapshot());
}

void CrewServer::drop(QWebSocket* socket) {
    if (liveSockets.removeOne(socket))
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
    if (liveSockets.isEmpty())
        return;
    const QString message = snapshot();
    for (QWebSocket* socket : QList(liveSockets))
        push(socket, message);
}

// A phone that has not read the last megabyte is gone as far as the feed is concerned.
void CrewServer::push(QWebSocket* socket, const QString& message) {
    if (socket->bytesToWrite() >= MaxQueuedBytes) {
        socket->abort();
        drop(socket);
        return;
    }
    socket->sendTextMessage(message);
    // Handed to the system now, while the message is at hand, rather than on a later turn of
    // the event loop for each phone: with many phones that turn is most of a line's cost.
    socket->flush();
}

QString CrewServer::snapshot() const {
    return QString::fromUtf8(
        CrewSnapshot::json(station, publishTimes, QDateTime::currentDateTime()));
}
