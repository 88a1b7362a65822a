// The race day as the core runs it, with no window in the process: an instrument on a real
// pseudo-terminal feeds the station, three open logs predict from each line, and the page is
// made of what they published.
#include "common/ModelByHand.h"
#include "common/PtyPair.h"
#include "common/TestHome.h"
#include "feed/PortDevices.h"
#include "feed/PortSettings.h"
#include "feed/WeatherStation.h"
#include "pager/PagerLogs.h"
#include "racelog/RaceLog.h"

#include <QSerialPort>
#include <QSignalSpy>
#include <QTest>
#include <cmath>
#include <memory>

namespace {

// A reading with an adjusted altitude of 2100 ft and a vapor pressure of 0.487.
const QByteArray Line =
    " 11/22/26 10:42:07 29.92 71.5 43.2 2100 5.1 45 0.487 49 98.6 1410 120 275 7 11 340\r";
const QString LineStatus =
    QStringLiteral("ABP=29.92 Temp=71.5 RH=43.2 AA=2100 AH=5.1 GR=45 VP=0.487 DP=49 ADR=98.6 "
                   "DA=1410 PA=120 WD=275 WS=7 WG=11 AL=340");
// The air thinner: 2300 ft.
const QByteArray HigherLine =
    " 11/22/26 10:43:07 29.80 73.5 40.2 2300 5.1 45 0.501 49 97.6 1610 120 275 7 11 340\r";

QString fourPlaces(double value) {
    return QString::number(value, 'f', 4);
}

// A log's reference run and fields as a team types them.
struct Setup {
    QString pageIdentifier;
    double refEt;
    double refAltitude;
    QString timer; // empty: the reference run has no throttle stop timer
    double pf;
    QString ratio;
    QString target;
    bool pager;
};

void prepare(RaceLog& log, const Setup& setup) {
    RunTable& runs = log.runs();
    runs.setCell(1, 12, QString::number(setup.refEt));
    runs.setCell(1, 19, QString::number(setup.refAltitude));
    if (!setup.timer.isEmpty())
        runs.setCell(1, 14, setup.timer);
    log.change(QStringLiteral("Set up"), [&setup](RaceLogData& data) {
        data.pageIdentifier = setup.pageIdentifier;
        data.pf = QString::number(setup.pf);
        data.tsr = setup.ratio;
        data.targetET = setup.target;
    });
    log.setPagerPredictions(setup.pager);
}

// The instrument's end of the cable.
class Instrument {
public:
    explicit Instrument(const QString& device) : port(device) { port.open(QIODevice::ReadWrite); }
    void send(const QByteArray& line) {
        port.write(line);
        port.flush();
    }
    QSerialPort port;
};

} // namespace

class TestRaceDayWithoutWindows : public QObject {
    Q_OBJECT

private slots:
    void threeLogsPredictAndPageFromARealFeed() {
        // Nothing here can show a window: the process has no widget application.
        QVERIFY(!QCoreApplication::instance()->inherits("QApplication"));
        TestHome home;
        PtyPair pty;
        QVERIFY(pty.isReady());
        setPortDevice(3, pty.portEnd());
        WeatherStation station;
        station.link().portSettings = PortSettings{3, 5, 0, 4, 0, 0, "None", "None"};
        station.watchdog().setThreshold(2);

        const Setup red{"Red", 9.5, 2000, "1.5", 5, "0.25", "9.50", true};
        const Setup plain{"", 10.2, 1500, "", 3, "0", "0.00", true};
        const Setup blue{"Blue", 8.9, 2500, "2.0", 7, "0.3", "8.95", false};
        RaceLog redLog;
        RaceLog plainLog;
        RaceLog blueLog;
        for (auto [log, setup] :
             {std::pair{&redLog, &red}, {&plainLog, &plain}, {&blueLog, &blue}}) {
            prepare(*log, *setup);
            station.raceLogs().open(log);
        }
        QCOMPARE(plainLog.slot(), 1);
        QSignalSpy redPublished(&redLog.prediction(), &PublishedPrediction::published);

        station.startSerialPort();
        QVERIFY(station.link().serialPort().isOpen());
        Instrument instrument(pty.instrumentEnd());
        instrument.send(Line);
        QTRY_COMPARE(station.statusLine(), LineStatus);

        // Each log's prediction, worked out here from its reference run and the live 2100 ft.
        const double redEt = ModelByHand::etAt(9.5, 2000, 2100, 5);
        const double redStop = ModelByHand::throttleStopFor(9.5, 2000, 1.5, 9.50, 2100, 5, 0.25);
        const double plainEt = ModelByHand::etAt(10.2, 1500, 2100, 3);
        const double blueEt = ModelByHand::etAt(8.9, 2500, 2100, 7);
        const double blueStop = ModelByHand::throttleStopFor(8.9, 2500, 2.0, 8.95, 2100, 7, 0.3);
        QVERIFY(redStop > 0 && blueStop > 0);
        const QString redLine =
            QStringLiteral("ET: %1  TS @ 9.50: %2").arg(fourPlaces(redEt), fourPlaces(redStop));
        const QString plainLine = QStringLiteral("ET: ") + fourPlaces(plainEt);
        const QString blueLine =
            QStringLiteral("ET: %1  TS @ 8.95: %2").arg(fourPlaces(blueEt), fourPlaces(blueStop));

        const PredictionLine& redNow = redLog.prediction().line();
        QCOMPARE(redNow.pagerMessage, QStringLiteral("Red> ") + redLine);
        QCOMPARE(redNow.caption, QStringLiteral("Red  ") + redLine);
        QVERIFY(std::abs(*redNow.predictedEt - redEt) < 1e-9);
        QVERIFY(std::abs(*redNow.throttleStop - redStop) < 1e-9);
        QCOMPARE(*redNow.targetEt, 9.5);
        QCOMPARE(redPublished.size(), 1);

        const PredictionLine& plainNow = plainLog.prediction().line();
        QCOMPARE(plainNow.pagerMessage, QStringLiteral("RaceLog# 2> ") + plainLine);
        QCOMPARE(plainNow.caption, QStringLiteral("Race Log# 2  ") + plainLine);
        QVERIFY(std::abs(*plainNow.predictedEt - plainEt) < 1e-9);
        QVERIFY(!plainNow.throttleStop && !plainNow.targetEt);

        const PredictionLine& blueNow = blueLog.prediction().line();
        QCOMPARE(blueNow.pagerMessage, QStringLiteral("Blue> ") + blueLine);
        QVERIFY(std::abs(*blueNow.throttleStop - blueStop) < 1e-9);
        // The live weather became each log's inputs, as the feed brought them.
        QCOMPARE(blueLog.field(RaceLog::Field::AA), QStringLiteral("2100"));
        QCOMPARE(blueLog.field(RaceLog::Field::VP), QStringLiteral("0.487"));

        // The page: the logs that take part, in slot order, then the weather.
        const QTime twoThirtyFive(14, 35);
        QCOMPARE(PagerLogs::pageText(station, twoThirtyFive),
                 QStringLiteral("02:35pm Red> ") + redLine + QStringLiteral(" RaceLog# 2> ") +
                     plainLine + u' ' + LineStatus);

        // The instrument goes quiet: every open log marks its prediction as stale, and the page
        // says the weather is old.
        for (RaceLog* log : {&redLog, &plainLog, &blueLog})
            QVERIFY(!log->prediction().isStale());
        QTRY_VERIFY_WITH_TIMEOUT(redLog.prediction().staleSeconds() >= 2, 5000);
        QVERIFY(plainLog.prediction().staleSeconds() >= 2);
        QVERIFY(blueLog.prediction().staleSeconds() >= 2);
        QVERIFY(PagerLogs::pageText(station, twoThirtyFive)
                    .startsWith(QStringLiteral("OLD WX 02:35pm Red> ")));

        // A log that leaves the open logs takes no more lines; the others predict from the
        // new altitude and are fresh again.
        station.raceLogs().close(&blueLog);
        instrument.send(HigherLine);
        QTRY_VERIFY(!redLog.prediction().isStale());
        QVERIFY(!plainLog.prediction().isStale());
        QVERIFY(blueLog.prediction().isStale());
        QCOMPARE(redLog.prediction().line().pagerMessage,
                 QStringLiteral("Red> ET: %1  TS @ 9.50: %2")
                     .arg(fourPlaces(ModelByHand::etAt(9.5, 2000, 2300, 5)),
                          fourPlaces(
                              ModelByHand::throttleStopFor(9.5, 2000, 1.5, 9.50, 2300, 5, 0.25))));
        QCOMPARE(plainLog.prediction().line().pagerMessage,
                 QStringLiteral("RaceLog# 2> ET: ") +
                     fourPlaces(ModelByHand::etAt(10.2, 1500, 2300, 3)));
        QCOMPARE(blueLog.prediction().line().pagerMessage, QStringLiteral("Blue> ") + blueLine);
        QCOMPARE(blueLog.field(RaceLog::Field::AA), QStringLiteral("2100"));
        QVERIFY(!PagerLogs::pageText(station, twoThirtyFive).startsWith(QStringLiteral("OLD WX")));
        station.closeLinks();
    }

    // With automatic updates off the logs keep the weather the team typed and still predict.
    void automaticUpdatesOffKeepTheTypedWeather() {
        TestHome home;
        WeatherStation station;
        station.predictionSettings().automaticUpdates = false;
        RaceLog log;
        prepare(log, {"Red", 9.5, 2000, "1.5", 5, "0.25", "9.50", true});
        log.change(QStringLiteral("Typed"), [](RaceLogData& data) { data.aa = "1800"; });
        station.raceLogs().open(&log);
        station.feed().tcpBytes(Line);
        QCOMPARE(log.field(RaceLog::Field::AA), QStringLiteral("1800"));
        QCOMPARE(log.prediction().line().pagerMessage,
                 QStringLiteral("Red> ET: %1  TS @ 9.50: %2")
                     .arg(fourPlaces(ModelByHand::etAt(9.5, 2000, 1800, 5)),
                          fourPlaces(
                              ModelByHand::throttleStopFor(9.5, 2000, 1.5, 9.50, 1800, 5, 0.25))));
    }

    // A throttle stop the model cannot work out (a ratio so large the setting overflows) is
    // told by the log as a fault; the ET it published before the fault stands alone.
    void aFaultIsToldAndTheEtBeforeItStands() {
        TestHome home;
        WeatherStation station;
        RaceLog log;
        prepare(log, {"Red", 9.5, 2000, "1.5", 5, "1e308", "9.50", true});
        station.raceLogs().open(&log);
        QSignalSpy published(&log.prediction(), &PublishedPrediction::published);
        QSignalSpy failed(&log.prediction(), &PublishedPrediction::failed);
        station.feed().tcpBytes(Line);
        QCOMPARE(failed.size(), 1);
        QCOMPARE(published.size(), 1);
        QCOMPARE(log.prediction().line().pagerMessage,
                 QStringLiteral("Red> ET: ") + fourPlaces(ModelByHand::etAt(9.5, 2000, 2100, 5)));
        QVERIFY(!log.prediction().line().throttleStop);
    }
};

QTEST_GUILESS_MAIN(TestRaceDayWithoutWindows)
#include "tst_racedaywithoutwindows.moc"
