#include "feed/WeatherStation.h"

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

} // namespace

// The serial port's bytes are framed, handled and then relayed to a connected display
// instance; the relay's bytes are only handled. The poll greys the online mark, and every
// handled line lights it again.
WeatherStation::WeatherStation(AppState& state, QObject* parent) : QObject(parent), lines(state) {
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

    connect(&connection, &InstrumentConnection::linkStatus, this, &WeatherStation::statusText);
    connect(&lines, &WeatherFeed::statusText, this, &WeatherStation::statusText);
    connect(&lines, &WeatherFeed::onlineMarkEnabled, this, [this] { emit onlineChanged(true); });
    connect(&connection, &InstrumentConnection::onlineMarkDisabled, this,
            [this] { emit onlineChanged(false); });

    connect(&poll, &QTimer::timeout, &connection, &InstrumentConnection::poll);
    connect(&send, &QTimer::timeout, this, &WeatherStation::sendTick);
}

void WeatherStation::relay(const QByteArray& line) {
    if (connection.IPPort().isOpen())
        connection.IPPort().write(line);
}

void WeatherStation::sendTick() {
    if (schedule.tick())
        emit pageDue();
}

void WeatherStation::startSerialPort(bool displayMode) {
    if (displayMode || connection.portSettings.comPort == TcpIpComPort)
        return;
    connection.StartComm();
    lines.ResetReceiveState();
}

void WeatherStation::startTimers() {
    poll.start();
    send.start();
}

void WeatherStation::stopTimers() {
    poll.stop();
    send.stop();
}

void WeatherStation::closeLinks() {
    connection.closeRelay();
    connection.CloseComm();
}
