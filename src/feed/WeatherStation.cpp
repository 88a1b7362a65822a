#include "feed/WeatherStation.h"

#include "core/CommandTable.h"
#include "racelog/RaceLog.h"

namespace {

// Timer intervals in milliseconds; TARNWICK_TIMER_SCALE shortens them for a test that has no
// time to wait for the instrument's poll.
int scaledInterval(int milliseconds) {
    bool ok = false;
    const double scale = qEnvironmentVariable("TARNWICK_TIMER_SCALE").toDouble(&ok);
    if (!ok || scale <= 0)
        return milliseconds;
    return qMax(1, int(milliseconds * scale));
}

void setUp(QTimer& timer, const char* name, int milliseconds) {
    timer.setObjectName(QLatin1String(name));
    timer.setInterval(scaledInterval(milliseconds));
}

// Tells every open race log; by index, reading the slot each time, as the feed walks them.
template <typename Tell> void tellRaceLogs(const OpenRaceLogs& logs, Tell tell) {
    for (int slot = 0; slot < logs.slotCount(); ++slot) {
        if (RaceLog* log = logs.at(slot))
            tell(log->prediction());
    }
}

// What the status line shows before the first line comes.
QString firstStatus() {
    return CommandTable::findStatusPanel(QStringLiteral("lblStatus"))->caption;
}

} // namespace

// The serial port's bytes are framed, handled and then relayed to a connected display
// instance; the relay's bytes are only handled. The poll greys the online mark, and every
// handled line lights it again.
WeatherStation::WeatherStation(InstanceRole role, QObject* parent)
    : QObject(parent), instanceRole(role),
      lines({logs, prediction, openViews, isDisplay() ? nullptr : &dailyLog}),
      lastStatus(firstStatus()), trustKeeper(logs) {
    // The timers are found by their names under the window that holds the station.
    setUp(poll, "tmrMain", 20000);
    setUp(send, "tmrSend", 4000);
    poll.setParent(this);
    send.setParent(this);

    connect(&connection, &InstrumentConnection::serialBytesReceived, &lines,
            &WeatherFeed::serialBytes);
    connect(&connection, &InstrumentConnection::serialError, &lines, &WeatherFeed::commError);
    connect(&connection, &InstrumentConnection::relayConnected, &lines,
            &WeatherFeed::resetRelayLine);
    connect(&connection, &InstrumentConnection::tcpBytesReceived, &lines, &WeatherFeed::tcpBytes);
    connect(&lines, &WeatherFeed::relayLine, this, &WeatherStation::relay);

    connect(&connection, &InstrumentConnection::linkStatus, this, &WeatherStation::showStatus);
    connect(&lines, &WeatherFeed::statusText, this, &WeatherStation::showStatus);
    connect(&lines, &WeatherFeed::onlineMarkEnabled, this, [this] { emit onlineChanged(true); });
    connect(&connection, &InstrumentConnection::onlineMarkDisabled, this,
            [this] { emit onlineChanged(false); });

    connect(&poll, &QTimer::timeout, &connection, &InstrumentConnection::poll);
    connect(&send, &QTimer::timeout, this, &WeatherStation::sendTick);

    // The clock runs from the moment a link opens; a record sets it back.
    connect(&connection, &InstrumentConnection::linkOpened, &staleness, &FeedWatchdog::start);
    connect(&connection, &InstrumentConnection::linkClosed, this, &WeatherStation::linkClosed);
    connect(&lines, &WeatherFeed::recordRead, &staleness, &FeedWatchdog::recordArrived);
    connect(&lines, &WeatherFeed::recordRead, this,
            [this] { trustKeeper.takeRecord(lines.reading(), QDateTime::currentDateTime()); });
    connect(&staleness, &FeedWatchdog::staleFor, this, &WeatherStation::feedStale);
    connect(&staleness, &FeedWatchdog::fresh, this, &WeatherStation::feedFresh);
}

// A reading that comes while the feed is stale is no news (a line that was no record): the
// alarm keeps the status line. The record that ends the alarm comes with its own reading,
// which the end of the alarm then shows.
void WeatherStation::showStatus(const QString& text) {
    lastStatus = text;
    if (!staleness.isStale())
        emit statusText(text);
}

// With no link open the program shows its closed state, not the alarm.
void WeatherStation::linkClosed() {
    if (!connection.anyLinkOpen())
        staleness.stop();
}

void WeatherStation::feedStale(int seconds) {
    emit statusText(QStringLiteral("No weather for %1 s").arg(seconds));
    tellRaceLogs(logs, [seconds](PublishedPrediction& log) { log.markStale(seconds); });
}

void WeatherStation::feedFresh() {
    emit statusText(lastStatus);
    tellRaceLogs(logs, [](PublishedPrediction& log) { log.markFresh(); });
}

void WeatherStation::relay(const QByteArray& line) {
    if (connection.ipPort().isOpen())
        connection.ipPort().write(line);
}

void WeatherStation::sendTick() {
    if (schedule.tick())
        emit pageDue();
}

void WeatherStation::startSerialPort() {
    if (isDisplay() || connection.portSettings.comPort == TcpIpComPort)
        return;
    connection.startComm();
    lines.resetReceiveState();
}

void WeatherStation::startTimers() {
    poll.start();
    send.start();
    trustKeeper.outlookTimer().start();
}

void WeatherStation::stopTimers() {
    poll.stop();
    send.stop();
    trustKeeper.outlookTimer().stop();
}

void WeatherStation::closeLinks() {
    connection.closeRelay();
    connection.closeComm();
}
