// The weather station as a whole, on real links: an instrument on a pseudo-terminal and a
// relay on 127.0.0.1. A line goes to the open race logs, the status line and the weather log,
// and out to the relay; the poll asks the instrument and greys the online mark; the send tick
// says when a page is due.
#include "common/PtyPair.h"
#include "common/TestHome.h"
#include "common/TestRelay.h"
#include "feed/PortDevices.h"
#include "feed/WeatherStation.h"
#include "prediction/RunCells.h"
#include "racelog/RaceLog.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTest>
#include <memory>

namespace {

const QByteArray Line =
    " 11/22/26 10:42:07 29.92 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r";
// A later reading, told apart by its pressure.
const QByteArray LaterLine =
    " 11/22/26 10:42:37 30.01 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r";
const QByteArray Garbage = "#%&*@ 29.9 ?? garbage\r";

// The alarm on the status line, with the seconds it tells.
const QRegularExpression StaleAlarm(QStringLiteral("^No weather for (\\d+) s$"));

int alarmSeconds(const QString& text) {
    const QRegularExpressionMatch match = StaleAlarm.match(text);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

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

// An open race log with a reference run, noting what reaches it and in which order: the live
// weather taken, each prediction published, and its stale mark.
class NotingLog : public RaceLog {
public:
    explicit NotingLog(QStringList& events) {
        runs().setCell(1, RunColumn::Ft1320, QStringLiteral("9.5"));
        runs().setCell(1, RunColumn::AA, QStringLiteral("2000"));
        change({}, [](RaceLogData& data) { data.pf = QStringLiteral("5"); });
        connect(this, &RaceLog::fieldChanged, [this, &events](Field field) {
            if (field == Field::VP)
                events << QStringLiteral("weather %1 %2")
                              .arg(this->field(Field::AA), this->field(Field::VP));
        });
        connect(&prediction(), &PublishedPrediction::published,
                [&events] { events << QStringLiteral("predict"); });
        connect(&prediction(), &PublishedPrediction::staleChanged, [&events](int seconds) {
            events << (seconds > 0 ? QStringLiteral("stale %1").arg(seconds)
                                   : QStringLiteral("fresh"));
        });
    }
};

// One tick of a timer, now.
void tick(QTimer& timer) {
    QMetaObject::invokeMethod(&timer, "timeout");
}

} // namespace

class TestWeatherStation : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<PtyPair> pty;

    // COM port 3, 9600,N,8,1, is the port end of a fresh cable.
    void cableOnComPort3(WeatherStation& station) {
        pty = std::make_unique<PtyPair>();
        QVERIFY(pty->isReady());
        setPortDevice(3, pty->portEnd());
        station.link().portSettings = PortSettings{3, 5, 0, 4, 0, 0, "None", "None"};
    }

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() {
        pty.reset();
        home.reset();
    }

    void itsTimersPollAndCountTheSendTicks() {
        WeatherStation station;
        QCOMPARE(station.pollTimer().objectName(), QStringLiteral("tmrMain"));
        QCOMPARE(station.pollTimer().interval(), 20000);
        QCOMPARE(station.sendTimer().objectName(), QStringLiteral("tmrSend"));
        QCOMPARE(station.sendTimer().interval(), 4000);
        QVERIFY(!station.pollTimer().isActive());
        station.startTimers();
        QVERIFY(station.pollTimer().isActive() && station.sendTimer().isActive());
        station.stopTimers();
        QVERIFY(!station.pollTimer().isActive() && !station.sendTimer().isActive());
    }

    // One serial line: the log first, then the online mark and the status line, the weather
    // log row, and last the echo to the relay.
    void aSerialLineReachesTheLogsTheStatusLineTheWeatherLogAndTheRelay() {
        WeatherStation station;
        station.predictionSettings().automaticUpdates = true;
        QStringList events;
        NotingLog log(events);
        station.raceLogs().open(&log);
        cableOnComPort3(station);
        connect(&station, &WeatherStation::onlineChanged, this,
                [&](bool online) { events << QStringLiteral("online %1").arg(online); });
        connect(&station, &WeatherStation::statusText, this,
                [&](const QString& text) { events << QStringLiteral("status ") + text; });
        Relay relay;
        station.link().portSettings.host = QStringLiteral("127.0.0.1");
        station.link().portSettings.tcpPort = relay.port();
        QVERIFY(station.link().connectIPPort());
        QTcpSocket* display = relay.waitForClient();
        QVERIFY(display);

        station.startSerialPort();
        QVERIFY(station.link().serialPort().isOpen());
        Instrument instrument(pty->instrumentEnd());
        instrument.port.write(Line);
        QTRY_VERIFY(display->bytesAvailable() >= Line.size());
        QCOMPARE(display->readAll(), Line);

        QCOMPARE(events.size(), 4);
        QCOMPARE(events[0], QStringLiteral("weather 1250 0.33"));
        QCOMPARE(events[1], QStringLiteral("predict"));
        QCOMPARE(events[2], QStringLiteral("online 1"));
        QVERIFY(events[3].startsWith(QStringLiteral("status ")));
        QVERIFY(events[3].contains(QStringLiteral("1250")));
        QCOMPARE(station.reading().AA, 1250);

        // The day's weather log holds the row.
        const QDir folder(home->weatherLogFolder());
        const QStringList days = folder.entryList(QDir::Files);
        QCOMPARE(days.size(), 1);
        QFile day(folder.filePath(days[0]));
        QVERIFY(day.open(QIODevice::ReadOnly));
        QCOMPARE(day.readAll().count('\n'), 1);
        station.raceLogs().close(&log);
    }

    void thePollAsksTheInstrumentAndGreysTheMark() {
        WeatherStation station;
        cableOnComPort3(station);
        station.startSerialPort();
        Instrument instrument(pty->instrumentEnd());
        QSignalSpy online(&station, &WeatherStation::onlineChanged);
        tick(station.pollTimer());
        QTRY_COMPARE(instrument.received, QByteArray("l\r"));
        QCOMPARE(online.size(), 1);
        QCOMPARE(online[0][0].toBool(), false);
    }

    void aDisplayInstanceAndARelayPortOpenNoSerialPort() {
        WeatherStation display(InstanceRole::Display);
        cableOnComPort3(display);
        display.startSerialPort();
        QVERIFY(!display.link().serialPort().isOpen());
        WeatherStation station;
        cableOnComPort3(station);
        station.link().portSettings.comPort = TcpIpComPort;
        station.startSerialPort();
        QVERIFY(!station.link().serialPort().isOpen());
    }

    // The instrument sends a line and goes quiet. Once the threshold has gone by the status
    // line counts the seconds since that line and the open log marks its prediction; a garbage
    // line changes nothing of it, and the next whole line ends it with its own reading.
    void aQuietInstrumentMakesTheFeedStale() {
        WeatherStation station;
        QStringList events;
        NotingLog log(events);
        station.raceLogs().open(&log);
        station.watchdog().setThreshold(2);
        cableOnComPort3(station);
        QStringList texts;
        connect(&station, &WeatherStation::statusText, this,
                [&](const QString& text) { texts << text; });
        QSignalSpy lines(&station, &WeatherStation::onlineChanged);
        station.startSerialPort();
        QVERIFY(station.link().serialPort().isOpen());
        Instrument instrument(pty->instrumentEnd());

        instrument.port.write(Line);
        QTRY_COMPARE(lines.size(), 1);
        QElapsedTimer sinceLine;
        sinceLine.start();
        QVERIFY(texts.last().startsWith(QStringLiteral("ABP=29.92 ")));
        QVERIFY(!station.watchdog().isStale());
        QTest::qWait(1000);
        QVERIFY(!station.watchdog().isStale());
        QCOMPARE(alarmSeconds(texts.last()), -1);

        QTRY_VERIFY_WITH_TIMEOUT(station.watchdog().isStale(), 4000);
        const int firstAlarm = alarmSeconds(texts.last());
        QVERIFY2(firstAlarm >= 2, qPrintable(texts.last()));
        QVERIFY(firstAlarm <= sinceLine.elapsed() / 1000 + 1);
        QVERIFY(events.contains(QStringLiteral("stale %1").arg(firstAlarm)));

        // A garbage line is a line (the online mark lights) but no record.
        events.clear();
        instrument.port.write(Garbage);
        QTRY_COMPARE(lines.size(), 2);
        QVERIFY(station.watchdog().isStale());
        QVERIFY2(alarmSeconds(texts.last()) >= firstAlarm, qPrintable(texts.last()));
        QVERIFY(!events.contains(QStringLiteral("fresh")));
        // The clock still runs from the whole line: the count goes on past the first alarm.
        QTRY_VERIFY_WITH_TIMEOUT(alarmSeconds(texts.last()) > firstAlarm, 2500);
        QVERIFY(station.watchdog().isStale());

        instrument.port.write(LaterLine);
        QTRY_COMPARE(lines.size(), 3);
        QVERIFY(!station.watchdog().isStale());
        QVERIFY2(texts.last().startsWith(QStringLiteral("ABP=30.01 ")), qPrintable(texts.last()));
        QCOMPARE(events.last(), QStringLiteral("fresh"));
        station.raceLogs().close(&log);
    }

    // A port that opens and never delivers is stale a threshold after its opening. Closing it
    // ends the alarm for good, and the status line shows what it showed before.
    void aSilentPortGoesStaleFromItsOpeningUntilItCloses() {
        WeatherStation station;
        station.watchdog().setThreshold(2);
        cableOnComPort3(station);
        QStringList texts;
        connect(&station, &WeatherStation::statusText, this,
                [&](const QString& text) { texts << text; });
        QElapsedTimer sinceOpening;
        sinceOpening.start();
        station.startSerialPort();
        QVERIFY(station.link().serialPort().isOpen());

        QTRY_VERIFY_WITH_TIMEOUT(!texts.isEmpty(), 4000);
        QVERIFY(sinceOpening.elapsed() >= 2000);
        QVERIFY2(alarmSeconds(texts.last()) >= 2, qPrintable(texts.last()));
        QVERIFY(station.watchdog().isStale());

        station.closeLinks();
        QVERIFY(!station.watchdog().isStale());
        QCOMPARE(texts.last(), QStringLiteral("Waiting for Weather Update..."));
        const qsizetype toldBefore = texts.size();
        QTest::qWait(1500);
        QCOMPARE(texts.size(), toldBefore);
    }

    // With a frequency of 2 every third tick is due; a forced page is due at the next tick.
    void theSendTicksSayWhenAPageIsDue() {
        WeatherStation station;
        QCOMPARE(station.pagerFrequency(), 75);
        station.setPagerFrequency(2);
        QSignalSpy due(&station, &WeatherStation::pageDue);
        QString pattern;
        for (int count = 0; count < 6; ++count) {
            const qsizetype before = due.size();
            tick(station.sendTimer());
            pattern += due.size() > before ? u'P' : u'-';
        }
        QCOMPARE(pattern, QStringLiteral("--P--P"));
        tick(station.sendTimer());
        station.forcePage();
        tick(station.sendTimer());
        QCOMPARE(due.size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestWeatherStation)
#include "tst_weatherstation.moc"
