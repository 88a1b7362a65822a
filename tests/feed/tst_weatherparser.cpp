#include "FeedSamples.h"
#include "feed/WeatherParser.h"

#include <QTest>

using namespace FeedSamples;

class TestWeatherParser : public QObject {
    Q_OBJECT
private slots:
    void fullLineSetsEveryField() {
        WeatherRecord record;
        parseWeatherLine(FullLine, record);
        QCOMPARE(record, FullRecord());
    }

    void timeFieldStaysEmpty() {
        WeatherRecord record;
        parseWeatherLine(FullLine, record);
        QVERIFY(record.Time.isEmpty());
    }

    void fourDigitYearDateKeptAsReceived() {
        WeatherRecord record;
        parseWeatherLine(QStringLiteral(" 11/22/2026 x 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\r"),
                         record);
        QCOMPARE(record.Date, QStringLiteral("11/22/2026"));
    }

    void tokenThatIsNoDateLeavesDate() {
        WeatherRecord record;
        record.Date = QStringLiteral("01/02/26");
        parseWeatherLine(QStringLiteral(" NODATE x 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\r"), record);
        QCOMPARE(record.Date, QStringLiteral("01/02/26"));
        QCOMPARE(record.ABP, 1.0f);
        QCOMPARE(record.AL, 15);
    }

    void nonNumericRhKeepsRhAndSetsTheRest() {
        WeatherRecord record;
        record.RH = 55.5f;
        parseWeatherLine(QStringLiteral(" 11/22/26 10:42 29.92 71.5 HUMID 1250 5.1 45 0.33 49 98.6 "
                                        "1410 120 275 7 11 340\r"),
                         record);
        WeatherRecord expected = FullRecord();
        expected.RH = 55.5f;
        QCOMPARE(record, expected);
    }

    void tokensSeparatedByManySpaces() {
        WeatherRecord record;
        parseWeatherLine(QStringLiteral("   11/22/26   10:42:07  29.92 71.5 43.2 1250 5.1 45 0.33 "
                                        "49 98.6 1410 120 275 7 11    340  \r"),
                         record);
        QCOMPARE(record, FullRecord());
    }

    void sixTokenLinePutsSixthTokenIntoAL() {
        WeatherRecord record = FullRecord();
        parseWeatherLine(QStringLiteral(" 11/23/26 10:43 30.01 80.5 50.5 2000\r"), record);
        QCOMPARE(record.Date, QStringLiteral("11/23/26"));
        QCOMPARE(record.ABP, 30.01f);
        QCOMPARE(record.Temp, 80.5f);
        QCOMPARE(record.RH, 50.5f);
        QCOMPARE(record.AA, 1250); // untouched: token 6 went to AL
        QCOMPARE(record.WG, 11);
        QCOMPARE(record.AL, 2000);
    }

    void emptyLineSetsNothing() {
        WeatherRecord record = FullRecord();
        parseWeatherLine(QStringLiteral(" \r"), record);
        QCOMPARE(record, FullRecord());
    }

    void twoLinesInOneTextLeaveAL() {
        WeatherRecord record;
        record.AL = 99;
        const QString second = QStringLiteral(
            " 11/23/26 10:43:07 30.01 80.5 50.5 2000 6.1 50 0.45 52 97.1 2100 130 90 3 5 400\r");
        parseWeatherLine(FullLine + second, record);
        WeatherRecord expected = FullRecord();
        expected.AL = 99; // "340\r 11/23/26 ..." is no number
        QCOMPARE(record, expected);
    }

    void integerRoundsHalfToEven_data() {
        QTest::addColumn<QString>("token");
        QTest::addColumn<int>("wd");
        QTest::newRow("359.5") << "359.5" << 360;
        QTest::newRow("2.5") << "2.5" << 2;
        QTest::newRow("3.5") << "3.5" << 4;
        QTest::newRow("-2.5") << "-2.5" << -2;
        QTest::newRow("2.4") << "2.4" << 2;
    }
    void integerRoundsHalfToEven() {
        QFETCH(QString, token);
        QFETCH(int, wd);
        WeatherRecord record;
        parseWeatherLine(
            QStringLiteral(" 11/22/26 t 1 2 3 4 5 6 7 8 9 10 11 %1 13 14 15\r").arg(token), record);
        QCOMPARE(record.WD, wd);
    }

    void integerPassesThroughFloat() {
        WeatherRecord record;
        parseWeatherLine(QStringLiteral(" 11/22/26 t 1 2 3 16777217 5 6 7 8 9 10 11 12 13 14 15\r"),
                         record);
        QCOMPARE(record.AA, 16777216);
    }

    void numberTooLargeForFloatEndsLine() {
        WeatherRecord record;
        record.VP = 0.5f;
        record.DP = 7;
        parseWeatherLine(
            QStringLiteral(
                " 11/22/26 t 29.92 71.5 43.2 1250 5.1 45 1e39 49 98.6 1410 120 275 7 11 340\r"),
            record);
        QCOMPARE(record.GR, 45);   // stored before the fault
        QCOMPARE(record.VP, 0.5f); // the fault
        QCOMPARE(record.DP, 7);    // never reached
        QCOMPARE(record.AL, 0);
    }

    void numberTooLargeForIntegerEndsLine() {
        WeatherRecord record;
        parseWeatherLine(
            QStringLiteral(
                " 11/22/26 t 29.92 71.5 43.2 3e9 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r"),
            record);
        QCOMPARE(record.RH, 43.2f);
        QCOMPARE(record.AA, 0);
        QCOMPARE(record.AH, 0.0f);
        QCOMPARE(record.AL, 0);
    }

    void lastTokenReadWithItsCr() {
        WeatherRecord record;
        parseWeatherLine(QStringLiteral(" 11/22/26 t 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15.5\r"),
                         record);
        QCOMPARE(record.AL, 16);
    }

    // Only a line that fills every quantity counts as a record; what it did store stays stored
    // either way.
    void aWholeLineIsARecord_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("record");
        QTest::newRow("full line") << FullLine << true;
        QTest::newRow("date that is no date")
            << QStringLiteral(" NODATE x 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\r") << true;
        QTest::newRow("garbage") << QStringLiteral("#%&*@ garbage\r") << false;
        QTest::newRow("empty") << QStringLiteral(" \r") << false;
        QTest::newRow("short line")
            << QStringLiteral(" 11/23/26 10:43 30.01 80.5 50.5 2000\r") << false;
        QTest::newRow("one word among the numbers")
            << QStringLiteral(" 11/22/26 t 1 2 HUMID 4 5 6 7 8 9 10 11 12 13 14 15\r") << false;
        QTest::newRow("last quantity missing")
            << QStringLiteral(" 11/22/26 t 1 2 3 4 5 6 7 8 9 10 11 12 13 14 \r") << false;
        QTest::newRow("number too large")
            << QStringLiteral(" 11/22/26 t 1 2 3 3e9 5 6 7 8 9 10 11 12 13 14 15\r") << false;
    }
    void aWholeLineIsARecord() {
        QFETCH(QString, line);
        QFETCH(bool, record);
        WeatherRecord weather;
        QCOMPARE(parseWeatherLine(line, weather), record);
    }

    void tabIsNoSeparator() {
        WeatherRecord record;
        record.ABP = 5;
        parseWeatherLine(QStringLiteral(" 11/22/26 t 1\t2 3 4 5 6 7 8 9 10 11 12 13 14 15\r"),
                         record);
        QCOMPARE(record.ABP, 5.0f); // "1\t2" is one token and no number
        QCOMPARE(record.Temp, 3.0f);
    }
};

QTEST_GUILESS_MAIN(TestWeatherParser)
#include "tst_weatherparser.moc"
