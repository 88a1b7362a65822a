#include "FeedSamples.h"
#include "common/TestHome.h"
#include "core/LiveView.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherStation.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <functional>
#include <memory>
#include <vector>

using namespace FeedSamples;

namespace {

const QString AllShown = QStringLiteral("ABP=29.92 Temp=71.5 RH=43.2 AA=1250 AH=5.1 GR=45 VP=0.33 "
                                        "DP=49 ADR=98.6 DA=1410 PA=120 WD=275 WS=7 WG=11 AL=340");
const QString SecondLine = QStringLiteral(
    " 11/23/26 10:43:07 30.01 80.5 50.5 2000 6.1 50 0.45 52 97.1 2100 130 90 3 5 400\r");

WeatherRecord SecondRecord() {
    WeatherRecord r;
    r.Date = QStringLiteral("11/23/26");
    r.ABP = 30.01f;
    r.Temp = 80.5f;
    r.RH = 50.5f;
    r.AA = 2000;
    r.AH = 6.1f;
    r.GR = 50;
    r.VP = 0.45f;
    r.DP = 52;
    r.ADR = 97.1f;
    r.DA = 2100;
    r.PA = 130;
    r.WD = 90;
    r.WS = 3;
    r.WG = 5;
    r.AL = 400;
    return r;
}

QByteArray todaysLog() {
    return ReadFile(weatherLogPath(QDate::currentDate()));
}

int todaysRows() {
    return int(todaysLog().count("\r\n"));
}

// An open view that hands each reading it is shown to the test.
class SeeingView : public LiveView {
public:
    SeeingView(OpenViews& views, std::function<void(const WeatherRecord&)> seen,
               ViewTable::View view = ViewTable::View::WindSpeed)
        : views(views), seen(std::move(seen)), view(view) {
        views.open(view, this);
    }
    ~SeeingView() override { views.close(view, this); }
    void showReading(const WeatherRecord& reading, const QString&) override { seen(reading); }

private:
    OpenViews& views;
    std::function<void(const WeatherRecord&)> seen;
    ViewTable::View view;
};

} // namespace

class TestWeatherFeed : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    // Logs in slot order skipping the empty slot, then the online mark, the status line, the
    // views and the weather log row; the relay goes out after all of it.
    void dispatchRunsInOrderAndRelaysLast() {
        QStringList events;
        RecordingRaceLog first(QStringLiteral("log0"), events);
        RecordingRaceLog third(QStringLiteral("log2"), events);
        WeatherStation station;
        RecordingRaceLog closed(QStringLiteral("closed"), events);
        station.raceLogs().open(&first);
        station.raceLogs().open(&closed);
        station.raceLogs().open(&third);
        station.raceLogs().close(&closed);
        WeatherFeed& feed = station.feed();
        QSignalSpy online(&feed, &WeatherFeed::onlineMarkEnabled);
        QSignalSpy status(&feed, &WeatherFeed::statusText);
        QSignalSpy relay(&feed, &WeatherFeed::relayLine);
        connect(&feed, &WeatherFeed::onlineMarkEnabled, this, [&] { events << "online"; });
        connect(&feed, &WeatherFeed::statusText, this, [&](const QString& text) {
            events << QStringLiteral("status kept=%1").arg(station.statusLine() == text);
        });
        SeeingView view(station.views(), [&](const WeatherRecord&) {
            events << QStringLiteral("views rows=%1").arg(todaysRows());
        });
        connect(&feed, &WeatherFeed::relayLine, this, [&](const QByteArray&) {
            events << QStringLiteral("relay rows=%1").arg(todaysRows());
        });

        feed.serialBytes(FullLine.toLatin1());

        QCOMPARE(events, (QStringList{"log0 takeLiveWeather", "log0 updatePredictions",
                                      "log2 takeLiveWeather", "log2 updatePredictions", "online",
                                      "status kept=1", "views rows=0", "relay rows=1"}));
        QCOMPARE(online.count(), 1);
        QCOMPARE(status.count(), 1);
        QCOMPARE(status.first().first().toString(), AllShown);
        QCOMPARE(relay.count(), 1);
    }

    void logsGetTheNewReading() {
        QStringList events;
        RecordingRaceLog log(QStringLiteral("log0"), events);
        WeatherStation station;
        station.raceLogs().open(&log);
        WeatherFeed& feed = station.feed();
        feed.serialBytes(FullLine.toLatin1());
        QCOMPARE(log.aa(), 1250);
        QCOMPARE(log.vp(), 0.33f);
    }

    void automaticUpdatesOffKeepsInputsAndStillPredicts() {
        QStringList events;
        RecordingRaceLog log(QStringLiteral("log0"), events);
        WeatherStation station;
        station.predictionSettings().automaticUpdates = false;
        station.raceLogs().open(&log);
        WeatherFeed& feed = station.feed();
        feed.serialBytes((FullLine + SecondLine).toLatin1());
        QCOMPARE(log.aa(), -1);
        QCOMPARE(log.vp(), -1.0f);
        QCOMPARE(log.predictions, 2);
        QCOMPARE(events, (QStringList{"log0 updatePredictions", "log0 updatePredictions"}));
    }

    void openViewsGetTheNewReading() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QList<WeatherRecord> seen;
        SeeingView view(station.views(), [&](const WeatherRecord& record) { seen << record; });
        feed.serialBytes(FullLine.toLatin1());
        QCOMPARE(seen, QList<WeatherRecord>{FullRecord()});
    }

    // Rose plot, wind direction, wind speed, weather, vapor pressure, AA/DA, ABP, RH, GR, CF,
    // ADR; opened here in another order, and one of them closed again.
    void theOpenViewsGetItInTheirFixedOrder() {
        using View = ViewTable::View;
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QStringList order;
        std::vector<std::unique_ptr<SeeingView>> views;
        const QList<std::pair<View, const char*>> opened{{View::ADR, "ADR"},
                                                         {View::CF, "CF"},
                                                         {View::GR, "GR"},
                                                         {View::RH, "RH"},
                                                         {View::ABP, "ABP"},
                                                         {View::AADA, "AADA"},
                                                         {View::VaporPressure, "VP"},
                                                         {View::Weather, "Weather"},
                                                         {View::WindSpeed, "WindSpeed"},
                                                         {View::WindDirection, "WindDirection"},
                                                         {View::RosePlot, "RosePlot"}};
        for (const auto& [kind, name] : opened)
            views.push_back(std::make_unique<SeeingView>(
                station.views(),
                [&order, text = name](const WeatherRecord&) { order << QLatin1String(text); },
                kind));
        views[3].reset(); // RH closes
        feed.serialBytes(FullLine.toLatin1());
        QCOMPARE(order, (QStringList{"RosePlot", "WindDirection", "WindSpeed", "Weather", "VP",
                                     "AADA", "ABP", "GR", "CF", "ADR"}));
    }

    void statusLineKeptInState() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        feed.serialBytes(FullLine.toLatin1());
        QCOMPARE(station.statusLine(), AllShown);
    }

    void relayIsTheLineAsItCame() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QSignalSpy relay(&feed, &WeatherFeed::relayLine);
        feed.serialBytes("\n" + FullLine.toLatin1() + "\n");
        QCOMPARE(relay.count(), 1);
        QCOMPARE(relay.first().first().toByteArray(), FullLine.toLatin1());
    }

    void fullLineSetsLiveWeather() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        feed.serialBytes(FullLine.toLatin1());
        QCOMPARE(station.reading(), FullRecord());
    }

    void wordBeforeDateDroppedByFraming() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        feed.serialBytes("READY" + FullLine.toLatin1());
        QCOMPARE(station.reading(), FullRecord());
    }

    void lineWithoutLeadingSpaceLosesItsDate() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        feed.serialBytes(FullLine.mid(1).toLatin1());
        // " 10:42:07 29.92 71.5 ..." : every field one token off, AL finds nothing.
        WeatherRecord expected;
        expected.Date = QStringLiteral("10:42:07");
        expected.ABP = 71.5f;
        expected.Temp = 43.2f;
        expected.RH = 1250;
        expected.AA = 5;
        expected.AH = 45;
        expected.GR = 0;
        expected.VP = 49;
        expected.DP = 99;
        expected.ADR = 1410;
        expected.DA = 120;
        expected.PA = 275;
        expected.WD = 7;
        expected.WS = 11;
        expected.AL = 340; // token 16 finds no space behind "340", so WG keeps its value
        QCOMPARE(station.reading(), expected);
    }

    void emptyLineStillRunsTheDispatch() {
        QStringList events;
        RecordingRaceLog log(QStringLiteral("log0"), events);
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        feed.serialBytes(FullLine.toLatin1());
        station.raceLogs().open(&log);
        QSignalSpy online(&feed, &WeatherFeed::onlineMarkEnabled);
        feed.serialBytes(" \r");
        QCOMPARE(station.reading(), FullRecord());
        QCOMPARE(log.predictions, 1);
        QCOMPARE(online.count(), 1);
        const QByteArray rows = todaysLog();
        QCOMPARE(rows.count("\r\n"), 2);
        const QByteArray row = rows.mid(rows.indexOf("\r\n") + 2);
        QCOMPARE(row.mid(row.indexOf(',')), FullRow.mid(FullRow.indexOf(',')));
    }

    void displayModeWritesNoLogRow() {
        WeatherStation station(InstanceRole::Display);
        WeatherFeed& feed = station.feed();
        QSignalSpy online(&feed, &WeatherFeed::onlineMarkEnabled);
        feed.serialBytes(FullLine.toLatin1());
        feed.tcpBytes(SecondLine.toLatin1());
        QCOMPARE(online.count(), 2);
        QVERIFY(!QFile::exists(weatherLogPath(QDate::currentDate())));
    }

    void mainInstanceWritesOneRowPerLine() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        feed.serialBytes((FullLine + SecondLine + FullLine).toLatin1());
        QCOMPARE(todaysRows(), 3);
    }

    void tcpTwoLinesInOneChunkBothHandled() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QList<WeatherRecord> seen;
        SeeingView view(station.views(), [&](const WeatherRecord& record) { seen << record; });
        feed.tcpBytes((FullLine + SecondLine).toLatin1());
        QCOMPARE(seen, (QList<WeatherRecord>{FullRecord(), SecondRecord()}));
    }

    void tcpLineSplitAcrossChunksHandledWhole() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QSignalSpy online(&feed, &WeatherFeed::onlineMarkEnabled);
        const QByteArray line = FullLine.toLatin1();
        feed.tcpBytes(line.left(20));
        QCOMPARE(online.count(), 0);
        feed.tcpBytes(line.mid(20));
        QCOMPARE(online.count(), 1);
        QCOMPARE(station.reading(), FullRecord());
    }

    // CR LF line ends feed the same record as CR alone, over a real connection and on the
    // serial link.
    void crLfLinesParseAsCrLines() {
        WeatherStation station(InstanceRole::Display);
        WeatherFeed& feed = station.feed();
        QList<WeatherRecord> seen;
        SeeingView view(station.views(), [&](const WeatherRecord& record) { seen << record; });
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost, 0));
        QTcpSocket sender;
        sender.connectToHost(QHostAddress::LocalHost, server.serverPort());
        QVERIFY(sender.waitForConnected(5000));
        QVERIFY(server.waitForNewConnection(5000));
        QTcpSocket* receiver = server.nextPendingConnection();
        connect(receiver, &QTcpSocket::readyRead, this,
                [&] { feed.tcpBytes(receiver->readAll()); });
        const QByteArray crLf = (FullLine + u'\n' + SecondLine + u'\n').toLatin1();
        sender.write(crLf.left(FullLine.size())); // the LF comes in a later chunk
        sender.flush();
        QTRY_COMPARE(seen.size(), 1);
        sender.write(crLf.mid(FullLine.size()));
        QTRY_COMPARE(seen.size(), 2);
        QCOMPARE(seen, (QList<WeatherRecord>{FullRecord(), SecondRecord()}));

        seen.clear();
        feed.serialBytes(crLf);
        QCOMPARE(seen, (QList<WeatherRecord>{FullRecord(), SecondRecord()}));
    }

    // An overlong line is dropped whole on both links and counted; the next line is read.
    void overlongLinesAreDroppedAndCounted() {
        WeatherStation station(InstanceRole::Display);
        WeatherFeed& feed = station.feed();
        QList<WeatherRecord> seen;
        SeeingView view(station.views(), [&](const WeatherRecord& record) { seen << record; });
        QByteArray overlong = FullLine.toLatin1();
        overlong.chop(1); // its CR
        while (overlong.size() <= 5000)
            overlong += " 99 99 99 99";
        overlong += '\r';
        feed.serialBytes(overlong + SecondLine.toLatin1());
        feed.tcpBytes(overlong + FullLine.toLatin1());
        QCOMPARE(seen, (QList<WeatherRecord>{SecondRecord(), FullRecord()}));
        QCOMPARE(feed.overlongLines(), 2u);
    }

    void tcpLinesAreNotRelayed() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QSignalSpy relay(&feed, &WeatherFeed::relayLine);
        feed.tcpBytes(FullLine.toLatin1());
        QCOMPARE(station.reading(), FullRecord());
        QCOMPARE(relay.count(), 0);
    }

    // The main instance relays its serial line over TCP; the display instance parses it,
    // sends it on to nobody and writes no row.
    void relayedLineParsedOnDisplayInstance() {
        WeatherStation mainInstance;
        WeatherFeed& mainFeed = mainInstance.feed();
        WeatherStation displayInstance(InstanceRole::Display);
        WeatherFeed& displayFeed = displayInstance.feed();

        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost, 0));
        QTcpSocket sender;
        sender.connectToHost(QHostAddress::LocalHost, server.serverPort());
        QVERIFY(sender.waitForConnected(5000));
        QVERIFY(server.waitForNewConnection(5000));
        QTcpSocket* receiver = server.nextPendingConnection();
        connect(&mainFeed, &WeatherFeed::relayLine, &sender,
                [&](const QByteArray& line) { sender.write(line); });
        connect(receiver, &QTcpSocket::readyRead, this,
                [&] { displayFeed.tcpBytes(receiver->readAll()); });
        QSignalSpy displayOnline(&displayFeed, &WeatherFeed::onlineMarkEnabled);
        QSignalSpy displayRelay(&displayFeed, &WeatherFeed::relayLine);

        mainFeed.serialBytes((FullLine + SecondLine).toLatin1());

        QTRY_COMPARE(displayOnline.count(), 2);
        QCOMPARE(displayInstance.reading(), SecondRecord());
        QCOMPARE(displayRelay.count(), 0);
        QCOMPARE(todaysRows(), 2); // the main instance's rows only
    }

    // A log that lets events run while it predicts can bring the next serial bytes in; that
    // line waits until the first one has gone all the way through.
    void serialBytesDuringDispatchWaitTheirTurn() {
        QStringList events;
        RecordingRaceLog log(QStringLiteral("log0"), events);
        WeatherStation station;
        station.raceLogs().open(&log);
        WeatherFeed& feed = station.feed();
        log.onPredict = [&] {
            if (log.predictions == 1)
                feed.serialBytes(SecondLine.toLatin1());
        };
        connect(&feed, &WeatherFeed::relayLine, this, [&](const QByteArray& line) {
            events << QStringLiteral("relay ") + line.mid(1, 8);
        });
        feed.serialBytes(FullLine.toLatin1());
        QCOMPARE(events,
                 (QStringList{"log0 takeLiveWeather", "log0 updatePredictions", "relay 11/22/26",
                              "log0 takeLiveWeather", "log0 updatePredictions", "relay 11/23/26"}));
        QCOMPARE(station.reading(), SecondRecord());
    }

    void commErrorTexts_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::newRow("1001") << 1001 << "Comm Error: Break signal received";
        QTest::newRow("1004") << 1004 << "Comm Error: Framing error";
        QTest::newRow("1006") << 1006 << "Comm Error: Port overrun";
        QTest::newRow("1008") << 1008 << "Comm Error: Receive buffer overflow";
        QTest::newRow("1009") << 1009 << "Comm Error: Parity error";
        QTest::newRow("1010") << 1010 << "Comm Error: Transmit buffer full";
        QTest::newRow("1011") << 1011
                              << "Comm Error: Unexpected error retrieving Device Control Block "
                                 "for the port";
        // Where the instrument has no words of its own, the link's are shown.
        QTest::newRow("1002") << 1002 << "Comm Error: No such file or directory";
        QTest::newRow("1012") << 1012 << "Comm Error: No such file or directory";
        QTest::newRow("0") << 0 << "Comm Error: No such file or directory";
    }
    void commErrorTexts() {
        QFETCH(int, code);
        QFETCH(QString, text);
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QSignalSpy status(&feed, &WeatherFeed::statusText);
        feed.commError(code, QStringLiteral("No such file or directory"));
        QCOMPARE(status.count(), 1);
        QCOMPARE(status.first().first().toString(), text);
    }

    void commErrorLosesThePartialLine() {
        WeatherStation station;
        WeatherFeed& feed = station.feed();
        QSignalSpy online(&feed, &WeatherFeed::onlineMarkEnabled);
        const QByteArray line = FullLine.toLatin1();
        feed.serialBytes(line.left(40));
        feed.commError(1006, QStringLiteral("Overrun"));
        feed.serialBytes("\r");
        QCOMPARE(online.count(), 0);
        feed.serialBytes(line);
        QCOMPARE(online.count(), 1);
        QCOMPARE(station.reading(), FullRecord());
    }
};

QTEST_GUILESS_MAIN(TestWeatherFeed)
#include "tst_weatherfeed.moc"
