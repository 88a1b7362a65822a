#include "FeedSamples.h"
#include "common/TestHome.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherLogFormat.h"
#include "feed/WeatherStation.h"

#include <QDir>
#include <QTest>
#include <QTimer>
#include <memory>

using namespace FeedSamples;

namespace {
const QDate Day(2026, 11, 22);
} // namespace

class TestWeatherLookup : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

    void writeDay(const QByteArray& rows) {
        QDir().mkpath(home->weatherLogFolder());
        QVERIFY(WriteFile(weatherLogPath(Day), rows));
    }

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void rowOfTheMinuteFound() {
        writeDay(Row("10:41:59am") + FullRow + Row("10:43:00am"));
        WeatherLog log;
        const LoggedWeather found = log.find(Day, QTime(10, 42));
        LoggedWeather expected;
        static_cast<WeatherRecord&>(expected) = FullRecord();
        expected.Date.clear();
        expected.Time = QStringLiteral("10:42:07am");
        QCOMPARE(found, expected);
    }

    void secondsOfTheAskedTimeDoNotMatter() {
        writeDay(FullRow);
        WeatherLog log;
        QCOMPARE(log.find(Day, QTime(10, 42, 59)).AL, 340);
    }

    void minuteWithNoRowGivesEmptyRecord() {
        writeDay(Row("10:41:59am") + Row("10:43:00am"));
        WeatherLog log;
        QCOMPARE(log.find(Day, QTime(10, 42)), LoggedWeather{});
    }

    void missingFileGivesEmptyRecord() {
        WeatherLog log;
        QCOMPARE(log.find(Day, QTime(10, 42)), LoggedWeather{});
        QVERIFY(!log.isBusy());
    }

    void earliestOfSeveralInTheMinuteWins() {
        writeDay(Row("10:42:01am", 29.1f) + Row("10:42:02am", 29.2f) + Row("10:42:03am", 29.3f));
        WeatherLog log;
        const LoggedWeather found = log.find(Day, QTime(10, 42, 30));
        QCOMPARE(found.Time, QStringLiteral("10:42:01am"));
        QCOMPARE(found.ABP, 29.1f);
    }

    void afternoonRowsAreTwelveHoursOn() {
        writeDay(Row("10:42:00am", 29.1f) + Row("10:42:00pm", 29.2f));
        WeatherLog log;
        QCOMPARE(log.find(Day, QTime(22, 42)).ABP, 29.2f);
    }

    void malformedTimeStopsTheScan() {
        writeDay(Row("10:41:00am") + Row("teatime") + FullRow);
        WeatherLog log;
        QCOMPARE(log.find(Day, QTime(10, 42)), LoggedWeather{});
        QVERIFY(!log.isBusy());
    }

    // A time the general reader takes ("4A" with blanks of the 8-bit set after it) is found
    // as the minute it names, and the time the lookup hands back reads as that minute again.
    void aFoundRowsTimeReadsAsTheMinuteAskedFor() {
        writeDay(QByteArray("4A\x0b\x0b\x85\x0b,29.5,1,21,1,21,2,11,22,1,2,21,21,2,2,1\r\n"));
        WeatherLog log;
        const LoggedWeather found = log.find(Day, QTime(4, 0));
        QCOMPARE(found.ABP, 29.5f);
        const auto second = readClockTime(found.Time);
        QVERIFY(second);
        QCOMPARE(*second / 60, 4 * 60);
    }

    void lastMinuteOfTheDayFound() {
        writeDay(Row("11:58:59pm", 29.1f) + Row("11:59:30pm", 29.2f));
        WeatherLog log;
        QCOMPARE(log.find(Day, QTime(23, 59)).ABP, 29.2f);
    }

    void busyFlagClearedAfterTheScan() {
        writeDay(FullRow);
        WeatherLog log;
        log.find(Day, QTime(10, 42));
        QVERIFY(!log.isBusy());
    }

    // Rows are written on this same thread to their end, so a lookup never waits for one:
    // it lets no other event run, whatever the flag says when it starts.
    void aLookupLetsNoEventsRun() {
        writeDay(FullRow);
        WeatherLog log;
        const WeatherLog::Hold writing(log);
        int turns = 0;
        QTimer turn;
        turn.setInterval(0);
        connect(&turn, &QTimer::timeout, this, [&] { ++turns; });
        turn.start();
        QCOMPARE(log.find(Day, QTime(10, 42)).AL, 340);
        turn.stop();
        QCOMPARE(turns, 0);
        QVERIFY(!log.isBusy());
    }

    // A display instance writes no rows of its own; it finds the rows the main instance
    // wrote into the shared folder.
    void displayInstanceCanLookUp() {
        WeatherLog mainInstance;
        WeatherRecord reading = FullRecord();
        mainInstance.writeRow(readingTexts(reading), QDateTime(Day, QTime(10, 42, 7)));
        reading.ABP = 30.05f;
        mainInstance.writeRow(readingTexts(reading), QDateTime(Day, QTime(10, 43, 1)));

        WeatherStation displayInstance(InstanceRole::Display);
        WeatherLog& display = displayInstance.weatherLog();
        const LoggedWeather found = display.find(Day, QTime(10, 43, 30));
        QCOMPARE(found.Time, QStringLiteral("10:43:01am"));
        QCOMPARE(found.ABP, 30.05f);
        QCOMPARE(found.AL, 340);
        QVERIFY(!display.isBusy());
    }
};

QTEST_GUILESS_MAIN(TestWeatherLookup)
#include "tst_weatherlookup.moc"
