#include "common/PtyPair.h"
#include "common/TestHome.h"
#include "common/TestRelay.h"
#include "core/ScriptedDialogs.h"
#include "feed/InstrumentConnection.h"
#include "feed/PortDevices.h"
#include "feed/ReplayLink.h"

#include <QDeadlineTimer>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryFile>
#include <QTest>
#include <memory>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

Q_DECLARE_METATYPE(PortSettings)

namespace {

const QByteArray Line =
    " 11/22/26 10:42:07 29.92 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 "
    "11 340\r";

// The instrument's end of the cable.
class Instrument {
public:
    explicit Instrument(const QString& device) : port(device) {
        QObject::connect(&port, &QSerialPort::readyRead, [this] { received += port.readAll(); });
        port.open(QIODevice::ReadWrite);
    }
    QSerialPort port;
    QByteArray received;
};

// 9600,N,8,1 without flow control, as Restore Defaults sets it, on COM port 3.
void chooseComPort3(InstrumentConnection& connection) {
    connection.portSettings = PortSettings{3, 5, 0, 4, 0, 0, "None", "None"};
}

// A port whose driver refuses to drop the input it holds.
class RefusingPort : public PortLink {
public:
    bool open(const PortOptions&) override { return portOpen = true; }
    bool discardInput() override { return false; }
    bool isOpen() const override { return portOpen; }
    bool write(const QByteArray&) override { return portOpen; }
    void close() override { portOpen = false; }

private:
    bool portOpen = false;
};

// A pseudo-terminal whose far side the test holds itself: from there it sees how the port
// side is set up, which a second handle on an open port can't, since ports are opened for
// one user at a time.
class WatchedPty {
public:
    WatchedPty() {
        char name[128] = {};
        if (openpty(&master, &slave, name, nullptr, nullptr) == 0)
            path = QString::fromLocal8Bit(name);
    }
    ~WatchedPty() {
        ::close(slave);
        ::close(master);
    }
    termios line() const {
        termios settings{};
        tcgetattr(master, &settings);
        return settings;
    }
    QString path;

private:
    int master = -1;
    int slave = -1;
};

// The warnings the connection gives, in order: the boxes the windows are to show.
class Warnings {
public:
    explicit Warnings(InstrumentConnection& connection) {
        QObject::connect(&connection, &InstrumentConnection::warning, &receiver,
                         [this](const Dialogs::Message& message) { messages << message; });
    }
    QList<Dialogs::Message> messages;

private:
    QObject receiver;
};

// Every warning of the connection is a one-button box with the critical icon.
void verifyCriticalBox(const Dialogs::Message& box, const QString& text, const QString& title) {
    QCOMPARE(box.text, text);
    QCOMPARE(box.title, title);
    QCOMPARE(box.icon, Dialogs::Icon::Critical);
    QCOMPARE(box.buttons, Dialogs::Buttons::Ok);
    QCOMPARE(box.defaultAnswer, Dialogs::Answer::Ok);
}

} // namespace

class TestInstrumentConnection : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<PtyPair> pty;

    // COM port 3 is the port end of a fresh cable.
    void cableOnComPort3() {
        pty = std::make_unique<PtyPair>();
        QVERIFY(pty->isReady());
        setPortDevice(3, pty->portEnd());
    }

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() {
        pty.reset();
        home.reset();
    }

    void startCommOpensTheChosenPort() {
        cableOnComPort3();
        InstrumentConnection connection;
        Warnings warnings(connection);
        chooseComPort3(connection);
        QSignalSpy opened(&connection.serialPort(), &PortLink::opened);
        QVERIFY(connection.startComm());
        QVERIFY(connection.serialPort().isOpen());
        QCOMPARE(opened.count(), 1);
        QVERIFY(warnings.messages.isEmpty());
    }

    // Lines come in from the instrument; the poll goes out as exactly "l" and a CR.
    void bytesFlowBothWays() {
        cableOnComPort3();
        InstrumentConnection connection;
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        Instrument instrument(pty->instrumentEnd());
        QVERIFY(instrument.port.isOpen());

        QByteArray fromInstrument;
        connect(&connection, &InstrumentConnection::serialBytesReceived,
                [&](const QByteArray& bytes) { fromInstrument += bytes; });
        instrument.port.write(Line);
        QTRY_COMPARE(fromInstrument, Line);

        connection.poll();
        QTRY_COMPARE(instrument.received, QByteArray("l\r"));
        QTest::qWait(100);
        QCOMPARE(instrument.received, QByteArray("l\r"));
    }

    // A pseudo-terminal always carries 8 bits and drops the parity bit itself, so what can be
    // seen of the line here is its speed, odd or even parity, stop bits and flow control.
    void lineSettingsReachThePort_data() {
        QTest::addColumn<PortSettings>("settings");
        QTest::addColumn<speed_t>("speed");
        QTest::addColumn<tcflag_t>("cflagsSet");
        QTest::addColumn<tcflag_t>("cflagsClear");
        QTest::addColumn<tcflag_t>("iflagsSet");
        QTest::newRow("9600,N,8,1")
            << PortSettings{3, 5, 0, 4, 0, 0, "None", "None"} << speed_t(B9600) << tcflag_t(0)
            << tcflag_t(PARODD | CSTOPB | CRTSCTS) << tcflag_t(0);
        QTest::newRow("19200,E,7,2,RTS")
            << PortSettings{3, 7, 2, 3, 1, 2, "None", "None"} << speed_t(B19200)
            << tcflag_t(CSTOPB | CRTSCTS) << tcflag_t(PARODD) << tcflag_t(0);
        QTest::newRow("1200,O,5,1,Xon / Xoff")
            << PortSettings{3, 3, 1, 1, 0, 1, "None", "None"} << speed_t(B1200) << tcflag_t(PARODD)
            << tcflag_t(CSTOPB | CRTSCTS) << tcflag_t(IXON | IXOFF);
    }
    void lineSettingsReachThePort() {
        QFETCH(PortSettings, settings);
        QFETCH(speed_t, speed);
        QFETCH(tcflag_t, cflagsSet);
        QFETCH(tcflag_t, cflagsClear);
        QFETCH(tcflag_t, iflagsSet);
        WatchedPty watched;
        QVERIFY(!watched.path.isEmpty());
        setPortDevice(3, watched.path);
        InstrumentConnection connection;
        connection.portSettings = settings;
        QVERIFY(connection.applyPortSettings());
        const termios line = watched.line();
        QCOMPARE(cfgetospeed(&line), speed);
        QCOMPARE(line.c_cflag & cflagsSet, cflagsSet);
        QCOMPARE(line.c_cflag & cflagsClear, tcflag_t(0));
        QCOMPARE(line.c_iflag & iflagsSet, iflagsSet);
    }

    // Start-up may run while the port is already open; it then changes nothing.
    void startCommLeavesAnOpenPortAlone() {
        cableOnComPort3();
        InstrumentConnection connection;
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        QSignalSpy closed(&connection.serialPort(), &PortLink::closed);
        connection.portSettings.comPort = 0;
        QVERIFY(connection.startComm());
        QVERIFY(connection.serialPort().isOpen());
        QCOMPARE(closed.count(), 0);
    }

    void applyReopensThePort() {
        WatchedPty watched;
        setPortDevice(3, watched.path);
        InstrumentConnection connection;
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        QSignalSpy closed(&connection.serialPort(), &PortLink::closed);
        QSignalSpy opened(&connection.serialPort(), &PortLink::opened);
        connection.portSettings.baud = 7;
        QVERIFY(connection.applyPortSettings());
        QCOMPARE(closed.count(), 1);
        QCOMPARE(opened.count(), 1);
        const termios line = watched.line();
        QCOMPARE(cfgetospeed(&line), speed_t(B19200));
    }

    void closeCommClosesThePort() {
        cableOnComPort3();
        InstrumentConnection connection;
        Warnings warnings(connection);
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        QVERIFY(connection.closeComm());
        QVERIFY(!connection.serialPort().isOpen());
        QVERIFY(connection.closeComm());
        QVERIFY(warnings.messages.isEmpty());
    }

    // No port: the settings are taken, nothing opens, and the poll has nowhere to go.
    void noComPortOpensNothing() {
        cableOnComPort3();
        setPortDevice(2, pty->portEnd()); // the port a start prepares before the settings
        InstrumentConnection connection;
        chooseComPort3(connection);
        connection.portSettings.comPort = 0;
        QVERIFY(connection.applyPortSettings());
        QVERIFY(!connection.serialPort().isOpen());
        QVERIFY(connection.startComm());
        QVERIFY(!connection.serialPort().isOpen());

        Instrument instrument(pty->instrumentEnd());
        connection.poll();
        QTest::qWait(100);
        QCOMPARE(instrument.received, QByteArray());
    }

    // A position outside its list leaves its part of the settings text empty, which no port
    // takes.
    void settingOutsideItsListFailsApply() {
        cableOnComPort3();
        InstrumentConnection connection;
        chooseComPort3(connection);
        connection.portSettings.baud = 8;
        QVERIFY(!connection.applyPortSettings());
        QVERIFY(!connection.serialPort().isOpen());
        connection.portSettings.comPort = 0;
        QVERIFY(!connection.applyPortSettings());
    }

    // A first run's 4 data bits are kept, but no port opens with them.
    void fourDataBitsDoNotOpen() {
        cableOnComPort3();
        InstrumentConnection connection;
        chooseComPort3(connection);
        connection.portSettings.dataBits = 0;
        QVERIFY(!connection.applyPortSettings());
        QVERIFY(!connection.serialPort().isOpen());
    }

    // At start a port that can't be opened shows nothing: the program runs offline.
    void unopenableDeviceRunsOffline() {
        setPortDevice(3, home->root() + QStringLiteral("/no-such-tty"));
        InstrumentConnection connection;
        Warnings warnings(connection);
        chooseComPort3(connection);
        QSignalSpy errors(&connection, &InstrumentConnection::serialError);
        QVERIFY(!connection.applyPortSettings());
        QVERIFY(connection.startComm());
        QVERIFY(!connection.serialPort().isOpen());
        connection.poll();
        QVERIFY(warnings.messages.isEmpty());
        QCOMPARE(errors.count(), 0);
    }

    // A port number past the list keeps the port chosen before; a start chose port 2.
    void comPortPastTheListKeepsTheEarlierPort() {
        cableOnComPort3();
        setPortDevice(2, pty->portEnd());
        setPortDevice(3, home->root() + QStringLiteral("/no-such-tty"));
        InstrumentConnection connection;
        chooseComPort3(connection);
        connection.portSettings.comPort = 26;
        QVERIFY(connection.startComm());
        QVERIFY(connection.serialPort().isOpen());
    }

    // An unplugged adapter is told once, with no comm event of its own, and the port closes.
    void vanishedDeviceIsReportedOnce() {
        cableOnComPort3();
        InstrumentConnection connection;
        Warnings warnings(connection);
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        QSignalSpy errors(&connection, &InstrumentConnection::serialError);
        pty->unplug();
        QTRY_COMPARE(errors.count(), 1);
        QCOMPARE(errors[0][0].toInt(), 0);
        QTRY_VERIFY(!connection.serialPort().isOpen());
        QTest::qWait(200);
        QCOMPARE(errors.count(), 1);
        QVERIFY(connection.closeComm());
        QVERIFY(warnings.messages.isEmpty());
    }

    // An adapter pulled and plugged back in: the port opens again by itself within five
    // seconds, the status line says so meanwhile, and lines flow again. No box is shown.
    void aPortThatComesBackIsOpenedAgain() {
        cableOnComPort3();
        InstrumentConnection connection;
        Warnings warnings(connection);
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        QSignalSpy status(&connection, &InstrumentConnection::linkStatus);
        pty->unplug();
        QTRY_VERIFY(!connection.serialPort().isOpen());
        QTRY_COMPARE(status.count(), 1);
        QCOMPARE(status[0][0].toString(), QStringLiteral("Reconnecting..."));
        QTest::qWait(1500); // tries that find no device
        QVERIFY(!connection.serialPort().isOpen());

        QVERIFY(pty->plugIn());
        QTRY_VERIFY_WITH_TIMEOUT(connection.serialPort().isOpen(), 5000);
        QByteArray fromInstrument;
        connect(&connection, &InstrumentConnection::serialBytesReceived,
                [&](const QByteArray& bytes) { fromInstrument += bytes; });
        Instrument instrument(pty->instrumentEnd());
        instrument.port.write(Line);
        QTRY_COMPARE(fromInstrument, Line);
        QCOMPARE(status.count(), 1);
        QVERIFY(warnings.messages.isEmpty());
    }

    // A port the user closed, or set up again, is not reopened behind the user's back.
    void aPortClosedByTheUserStaysClosed() {
        cableOnComPort3();
        InstrumentConnection connection;
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        QSignalSpy status(&connection, &InstrumentConnection::linkStatus);
        QVERIFY(connection.closeComm());
        QTest::qWait(1500);
        QVERIFY(!connection.serialPort().isOpen());
        QVERIFY(connection.applyPortSettings());
        QVERIFY(connection.serialPort().isOpen());
        QCOMPARE(status.count(), 0);
    }

    // The connection only warns; the box is the windows' to open.
    void startCommWarnsWhenThePortRefuses() {
        ScriptedDialogs dialogs;
        InstrumentConnection connection;
        Warnings warnings(connection);
        connection.setSerialPort(std::make_unique<RefusingPort>());
        chooseComPort3(connection);
        QVERIFY(!connection.startComm());
        QVERIFY(!connection.serialPort().isOpen());
        QCOMPARE(warnings.messages.size(), 1);
        verifyCriticalBox(warnings.messages[0],
                          QStringLiteral("WARNING:\r\n  Unable to start serial communications"),
                          QStringLiteral("Serial Port - Open"));
        QVERIFY(dialogs.messages.isEmpty());
    }

    void closeCommWarnsWhenThePortRefuses() {
        ScriptedDialogs dialogs;
        InstrumentConnection connection;
        Warnings warnings(connection);
        connection.setSerialPort(std::make_unique<RefusingPort>());
        chooseComPort3(connection);
        QVERIFY(connection.applyPortSettings());
        QVERIFY(!connection.closeComm());
        QVERIFY(connection.serialPort().isOpen());
        QCOMPARE(warnings.messages.size(), 1);
        verifyCriticalBox(warnings.messages[0],
                          QStringLiteral("WARNING:\r\n  Unable to close serial communications"),
                          QStringLiteral("Serial Port - Open"));
        QVERIFY(dialogs.messages.isEmpty());
    }

    // Another link can stand in the serial port's place and feeds the connection the same.
    void replacementLinkFeedsTheConnection() {
        QTemporaryFile recording;
        QVERIFY(recording.open());
        recording.write(Line.chopped(1) + '\n');
        recording.close();
        auto replay = std::make_unique<ReplayLink>(recording.fileName());
        replay->setInterval(10);
        InstrumentConnection connection;
        connection.setSerialPort(std::move(replay));
        chooseComPort3(connection);
        QSignalSpy received(&connection, &InstrumentConnection::serialBytesReceived);
        QVERIFY(connection.startComm());
        QTRY_COMPARE(received.count(), 1);
        QCOMPARE(received[0][0].toByteArray(), Line);
    }

    // TCP/IP as the port: the serial port stays closed, the relay's lines come in, and the
    // poll sends nothing anywhere.
    void relayFeedsWhileSerialStaysClosed() {
        cableOnComPort3();
        Relay relay;
        InstrumentConnection connection;
        Warnings warnings(connection);
        chooseComPort3(connection);
        connection.portSettings.comPort = TcpIpComPort;
        connection.applyLink(QStringLiteral(" 127.0.0.1 "), QStringLiteral(" ") + relay.port());
        QCOMPARE(connection.portSettings.host, QStringLiteral("127.0.0.1"));
        QCOMPARE(connection.portSettings.tcpPort, relay.port());
        QVERIFY(!connection.serialPort().isOpen());
        QTcpSocket* client = relay.waitForClient();
        QVERIFY(client);
        QTRY_VERIFY(connection.ipPort().isOpen());

        QByteArray fromRelay;
        connect(&connection, &InstrumentConnection::tcpBytesReceived,
                [&](const QByteArray& bytes) { fromRelay += bytes; });
        client->write(Line);
        QTRY_COMPARE(fromRelay, Line);

        Instrument instrument(pty->instrumentEnd());
        QSignalSpy markDisabled(&connection, &InstrumentConnection::onlineMarkDisabled);
        connection.poll();
        QCOMPARE(markDisabled.count(), 1);
        QTest::qWait(100);
        QCOMPARE(client->bytesAvailable(), 0);
        QCOMPARE(instrument.received, QByteArray());
        QVERIFY(warnings.messages.isEmpty());
    }

    void newRelayReplacesTheOld() {
        Relay first, second;
        InstrumentConnection connection;
        connection.applyLink(QStringLiteral("127.0.0.1"), first.port());
        QTcpSocket* firstClient = first.waitForClient();
        QVERIFY(firstClient);
        QTRY_VERIFY(connection.ipPort().isOpen());
        connection.applyLink(QStringLiteral("127.0.0.1"), second.port());
        QVERIFY(second.waitForClient());
        QTRY_COMPARE(firstClient->state(), QAbstractSocket::UnconnectedState);
        QTRY_VERIFY(connection.ipPort().isOpen());
    }

    // The boxes' texts are taken even when empty or "None", or not a number: the relay is
    // dropped, in silence.
    void relayWithoutUsableAddressIsDropped_data() {
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("port"); // "relay" stands for the relay's own port
        QTest::newRow("emptied host") << ""
                                      << "relay";
        QTest::newRow("host None") << "None"
                                   << "relay";
        QTest::newRow("emptied port") << "127.0.0.1"
                                      << "";
        QTest::newRow("port None") << "127.0.0.1"
                                   << "None";
        QTest::newRow("port not a number") << "127.0.0.1"
                                           << "abc";
        QTest::newRow("port past the last") << "127.0.0.1"
                                            << "70000";
    }
    void relayWithoutUsableAddressIsDropped() {
        QFETCH(QString, host);
        QFETCH(QString, port);
        Relay relay;
        InstrumentConnection connection;
        Warnings warnings(connection);
        connection.applyLink(QStringLiteral("127.0.0.1"), relay.port());
        QTcpSocket* client = relay.waitForClient();
        QVERIFY(client);
        QTRY_VERIFY(connection.ipPort().isOpen());

        const QString portText = port == u"relay" ? relay.port() : port;
        connection.applyLink(host, portText);
        QCOMPARE(connection.portSettings.host, host);
        QCOMPARE(connection.portSettings.tcpPort, portText);
        QVERIFY(!connection.ipPort().isOpen());
        QTRY_COMPARE(client->state(), QAbstractSocket::UnconnectedState);
        QVERIFY(relay.noNewClient());
        QVERIFY(warnings.messages.isEmpty());
    }

    // A port that won't open is told before the relay is taken up, and the relay is still
    // applied.
    void applyFailureIsShownAndTheRelayStillConnects() {
        setPortDevice(3, home->root() + QStringLiteral("/no-such-tty"));
        Relay relay;
        InstrumentConnection connection;
        Warnings warnings(connection);
        chooseComPort3(connection);
        QStringList hostsWhenWarned;
        connect(&connection, &InstrumentConnection::warning, this,
                [&] { hostsWhenWarned << connection.portSettings.host; });
        connection.applyLink(QStringLiteral("127.0.0.1"), relay.port());
        QCOMPARE(warnings.messages.size(), 1);
        verifyCriticalBox(warnings.messages[0], QStringLiteral("Error applying settings"),
                          QStringLiteral("Tarnwick"));
        QCOMPARE(hostsWhenWarned, QStringList{QStringLiteral("None")});
        QVERIFY(relay.waitForClient());
        QTRY_VERIFY(connection.ipPort().isOpen());
    }

    void relayErrorIsShown() {
        const quint16 closedPort = freePort();
        InstrumentConnection connection;
        Warnings warnings(connection);
        connection.applyLink(QStringLiteral("127.0.0.1"), QString::number(closedPort));
        QTRY_COMPARE(warnings.messages.size(), 1);
        verifyCriticalBox(warnings.messages[0], QStringLiteral("Error 0: Connection refused"),
                          QStringLiteral("Network Connection"));
        QVERIFY(!connection.ipPort().isOpen());

        // The tries that follow say so in the status line only, and the relay is reached as
        // soon as it listens.
        QSignalSpy status(&connection, &InstrumentConnection::linkStatus);
        QTest::qWait(2500);
        QCOMPARE(warnings.messages.size(), 1);
        QVERIFY(status.count() >= 1);
        QCOMPARE(status.last()[0].toString(), QStringLiteral("Reconnecting..."));
        QTcpServer relay;
        QVERIFY(relay.listen(QHostAddress::LocalHost, closedPort));
        QTRY_VERIFY_WITH_TIMEOUT(connection.ipPort().isOpen(), 5000);
        QCOMPARE(warnings.messages.size(), 1);
    }

    // The relay ending the connection is no fault: no box, and the link is made again.
    void relayHangingUpIsConnectedAgain() {
        Relay relay;
        InstrumentConnection connection;
        Warnings warnings(connection);
        connection.applyLink(QStringLiteral("127.0.0.1"), relay.port());
        QTcpSocket* client = relay.waitForClient();
        QVERIFY(client);
        QTRY_VERIFY(connection.ipPort().isOpen());
        QSignalSpy closed(&connection.ipPort(), &TcpLink::closed);
        QSignalSpy status(&connection, &InstrumentConnection::linkStatus);
        QSignalSpy connected(&connection, &InstrumentConnection::relayConnected);
        client->disconnectFromHost();
        QTRY_COMPARE(closed.count(), 1);
        QCOMPARE(status.count(), 1);
        QCOMPARE(status[0][0].toString(), QStringLiteral("Reconnecting..."));
        relay.client = nullptr;
        QVERIFY(relay.waitForClient());
        QTRY_VERIFY(connection.ipPort().isOpen());
        QCOMPARE(connected.count(), 1);
        QVERIFY(warnings.messages.isEmpty());
    }

    // A relay the user let go of is not called again.
    void aClosedRelayIsNotCalledAgain() {
        Relay relay;
        InstrumentConnection connection;
        connection.applyLink(QStringLiteral("127.0.0.1"), relay.port());
        QVERIFY(relay.waitForClient());
        QTRY_VERIFY(connection.ipPort().isOpen());
        connection.closeRelay();
        QTest::qWait(2500);
        QVERIFY(relay.noNewClient());
        QVERIFY(!connection.ipPort().isOpen());
    }

    // A display instance connects at start to the relay in its settings, when it names one.
    void connectIPPortNeedsHostAndPort() {
        Relay relay;
        InstrumentConnection connection;
        connection.portSettings.host = QStringLiteral("None");
        connection.portSettings.tcpPort = relay.port();
        QVERIFY(!connection.connectIPPort());
        QVERIFY(relay.noNewClient());
        connection.portSettings.host = QStringLiteral("127.0.0.1");
        QVERIFY(connection.connectIPPort());
        QVERIFY(relay.waitForClient());
        QTRY_VERIFY(connection.ipPort().isOpen());
    }

    // Each tick greys the mark; only a line lights it again, and none came.
    void ticksWithoutLineKeepTheMarkGrey() {
        cableOnComPort3();
        InstrumentConnection connection;
        chooseComPort3(connection);
        QVERIFY(connection.startComm());
        Instrument instrument(pty->instrumentEnd());
        QSignalSpy markDisabled(&connection, &InstrumentConnection::onlineMarkDisabled);
        QSignalSpy received(&connection, &InstrumentConnection::serialBytesReceived);
        connection.poll();
        connection.poll();
        QCOMPARE(markDisabled.count(), 2);
        QTRY_COMPARE(instrument.received, QByteArray("l\rl\r"));
        QCOMPARE(received.count(), 0);

        instrument.port.write(Line);
        QTRY_VERIFY(received.count() > 0);
        QCOMPARE(markDisabled.count(), 2);
    }
};

QTEST_GUILESS_MAIN(TestInstrumentConnection)
#include "tst_instrumentconnection.moc"
