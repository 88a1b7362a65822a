#include "FeedSamples.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "feed/DataFolder.h"
#include "feed/WeatherLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <memory>

using namespace FeedSamples;

namespace {
const QDate Day(2026, 11, 22);
QDateTime at(const QDate& day, int hour, int minute, int second) {
    return QDateTime(day, QTime(hour, minute, second));
}
} // namespace

class TestWeatherLog : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

    QString dayFile(const QDate& day) const {
        return home->weatherLogFolder() + u'/' + day.toString(QStringLiteral("yyyy-MM-dd")) +
               QStringLiteral(".csv");
    }

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void dataFolderIsMadeUnderTheSharedDataFolder() {
        QVERIFY(!QDir(home->weatherLogFolder()).exists());
        QCOMPARE(dataFolder(QStringLiteral("\\Tarnwick")), home->weatherLogFolder());
        QVERIFY(QDir(home->weatherLogFolder()).exists());
    }

    void dataFolderEmptyArgumentIsNotValid() {
        QCOMPARE(dataFolder(QString()), QStringLiteral("Folder Not Valid"));
    }

    void dataFolderThatCannotBeMadeIsNotValid() {
        QVERIFY(WriteFile(home->dataHome() + QStringLiteral("/Tarnwick"), "in the way"));
        QCOMPARE(dataFolder(QStringLiteral("\\Tarnwick")), QStringLiteral("Folder Not Valid"));
        QCOMPARE(weatherLogFolder(), QCoreApplication::applicationDirPath());
    }

    void dateStampPadsMonthAndDay() {
        QCOMPARE(dateStamp(QDate(2026, 3, 7)), QStringLiteral("2026-03-07"));
        QCOMPARE(dateStamp(), QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")));
    }

    void logPathIsTheDayFile() { QCOMPARE(weatherLogPath(Day), dayFile(Day)); }

    void rowFormatIsExact() {
        WeatherLog log;
        WeatherRecord reading = FullRecord();
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QCOMPARE(ReadFile(dayFile(Day)), FullRow);
    }

    void rowTimeInTwelveHourForm_data() {
        QTest::addColumn<QTime>("time");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("after midnight") << QTime(0, 5, 9) << QByteArray("\"12:05:09am\",");
        QTest::newRow("noon") << QTime(12, 0, 0) << QByteArray("\"12:00:00pm\",");
        QTest::newRow("evening") << QTime(23, 59, 59) << QByteArray("\"11:59:59pm\",");
    }
    void rowTimeInTwelveHourForm() {
        QFETCH(QTime, time);
        QFETCH(QByteArray, text);
        WeatherLog log;
        const WeatherRecord reading;
        log.writeRow(readingTexts(reading), QDateTime(Day, time));
        QVERIFY(ReadFile(dayFile(Day)).startsWith(text));
    }

    void floatsInGeneralFormIntegersPlain() {
        WeatherLog log;
        WeatherRecord reading;
        reading.ABP = 0.00001f;
        reading.Temp = -3.25f;
        reading.AA = -120;
        log.writeRow(readingTexts(reading), at(Day, 9, 0, 0));
        QCOMPARE(ReadFile(dayFile(Day)),
                 QByteArray("\"09:00:00am\",1E-05,-3.25,0,-120,0,0,0,0,0,0,0,0,0,0,0\r\n"));
    }

    void rowsAreAppended() {
        WeatherLog log;
        WeatherRecord reading = FullRecord();
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QCOMPARE(ReadFile(dayFile(Day)), FullRow + FullRow);
    }

    void pathKeptInTheSettings() {
        WeatherLog log;
        const WeatherRecord reading;
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QCOMPARE(Registry::get(QStringLiteral("SOFTWARE\\Zorvane\\"), QStringLiteral("WeatherLog")),
                 dayFile(Day));
    }

    // A row on a feed line never writes the settings file again for the same day's file.
    void thePathIsStoredOnlyWhenTheDayChanges() {
        WeatherLog log;
        const WeatherRecord reading;
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QVERIFY(QFile::remove(Registry::storeFilePath()));
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 9));
        log.writeRow(readingTexts(reading), at(Day, 23, 59, 59));
        QVERIFY(!QFile::exists(Registry::storeFilePath()));
        log.writeRow(readingTexts(reading), at(Day.addDays(1), 0, 0, 1));
        QCOMPARE(Registry::get(QStringLiteral("SOFTWARE\\Zorvane\\"), QStringLiteral("WeatherLog")),
                 dayFile(Day.addDays(1)));
        QCOMPARE(ReadFile(dayFile(Day)).count("\r\n"), 3);
    }

    // The folder of the logs removed during the day is made again by the next row.
    void aRowAfterTheFolderWentMakesItAgain() {
        WeatherLog log;
        WeatherRecord reading = FullRecord();
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QVERIFY(QDir(QFileInfo(dayFile(Day)).path()).removeRecursively());
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QCOMPARE(ReadFile(dayFile(Day)), FullRow);
    }

    void aRowAfterTheFileWentMakesItAgain() {
        WeatherLog log;
        WeatherRecord reading = FullRecord();
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QVERIFY(QFile::remove(dayFile(Day)));
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QCOMPARE(ReadFile(dayFile(Day)), FullRow);
    }

    // Each row is on disk once it is logged, while the program goes on running: another
    // reader, or a crash now, finds every row.
    void eachRowIsInTheFileAtOnce() {
        WeatherLog log;
        WeatherRecord reading = FullRecord();
        for (int row = 1; row <= 3; ++row) {
            log.writeRow(readingTexts(reading), at(Day, 10, 42, row));
            QCOMPARE(ReadFile(dayFile(Day)).count("\r\n"), row);
        }
    }

    void firstRowAfterMidnightStartsANewFile() {
        WeatherLog log;
        WeatherRecord reading = FullRecord();
        log.writeRow(readingTexts(reading), at(Day, 23, 59, 59));
        log.writeRow(readingTexts(reading), at(Day.addDays(1), 0, 0, 1));
        QCOMPARE(ReadFile(dayFile(Day)).count("\r\n"), 1);
        QVERIFY(ReadFile(dayFile(Day)).startsWith("\"11:59:59pm\","));
        QCOMPARE(ReadFile(dayFile(Day.addDays(1))).count("\r\n"), 1);
        QVERIFY(ReadFile(dayFile(Day.addDays(1))).startsWith("\"12:00:01am\","));
    }

    void rowSkippedWhileTheLogIsBusy() {
        WeatherLog log;
        const WeatherRecord reading;
        const WeatherLog::Hold scanning(log);
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QVERIFY(!QFile::exists(dayFile(Day)));
        QVERIFY(log.isBusy()); // still the scanner's
    }

    void busyFlagClearedAfterTheRow() {
        WeatherLog log;
        const WeatherRecord reading;
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QVERIFY(!log.isBusy());
    }

    void writeErrorLosesTheRowSilently() {
        WeatherLog log;
        const WeatherRecord reading;
        QVERIFY(QDir().mkpath(dayFile(Day))); // a folder where the file should be
        log.writeRow(readingTexts(reading), at(Day, 10, 42, 7));
        QVERIFY(!log.isBusy());
        QVERIFY(QFileInfo(dayFile(Day)).isDir());
    }

    void clockOfTheMachineNamesTodaysFile() {
        WeatherLog log;
        const WeatherRecord reading = FullRecord();
        log.writeRow(readingTexts(reading));
        const QByteArray row = ReadFile(dayFile(QDate::currentDate()));
        QCOMPARE(row.mid(row.indexOf(',')), FullRow.mid(FullRow.indexOf(',')));
    }
};

QTEST_GUILESS_MAIN(TestWeatherLog)
#include "tst_weatherlog.moc"
