#include "core/DateText.h"

#include <QTest>

class TestDateText : public QObject {
    Q_OBJECT
private slots:
    void readsDates_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("date");
        QTest::newRow("run date") << "11/22/26" << QDate(2026, 11, 22);
        QTest::newRow("log date") << "11/22/2026" << QDate(2026, 11, 22);
        QTest::newRow("file stem") << "2026-11-22" << QDate(2026, 11, 22);
        QTest::newRow("short parts") << "1/2/2026" << QDate(2026, 1, 2);
        QTest::newRow("last century") << "07/04/99" << QDate(1999, 7, 4);
    }
    void readsDates() {
        QFETCH(QString, text);
        QFETCH(QDate, date);
        auto value = DateText::parse(text);
        QVERIFY(value);
        QCOMPARE(value->date, date);
        QVERIFY(!value->time);
    }

    void readsTimes_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QTime>("time");
        QTest::newRow("run time") << "02:35pm" << QTime(14, 35);
        QTest::newRow("blank before meridiem") << "2:35 PM" << QTime(14, 35);
        QTest::newRow("seconds") << "10:42:07am" << QTime(10, 42, 7);
        QTest::newRow("twenty-four hours") << "14:35" << QTime(14, 35);
        QTest::newRow("hour and meridiem") << "2pm" << QTime(14, 0);
        QTest::newRow("short meridiem") << "10:30p" << QTime(22, 30);
        QTest::newRow("midnight") << "12:05am" << QTime(0, 5);
        QTest::newRow("noon") << "12:05pm" << QTime(12, 5);
    }
    void readsTimes() {
        QFETCH(QString, text);
        QFETCH(QTime, time);
        auto value = DateText::parse(text);
        QVERIFY(value);
        QCOMPARE(value->time, time);
    }

    void readsDateAndTime() {
        auto value = DateText::parse("11/22/2026 10:42:07am");
        QVERIFY(value);
        QCOMPARE(value->date, QDate(2026, 11, 22));
        QCOMPARE(value->time, QTime(10, 42, 7));
    }

    void rejects_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("number") << "1030";
        QTest::newRow("word") << "Friday";
        QTest::newRow("bad month") << "13/01/2026";
        QTest::newRow("bad day") << "02/30/2026";
        QTest::newRow("bad hour") << "25:00";
        QTest::newRow("thirteen pm") << "13:00pm";
        QTest::newRow("m alone") << "10:30m";
        QTest::newRow("label") << "Time";
    }
    void rejects() {
        QFETCH(QString, text);
        QVERIFY(!DateText::isDate(text));
    }

    void writesTheProgramsForms() {
        QCOMPARE(DateText::timeText(QTime(14, 35, 9)), QString("02:35pm"));
        QCOMPARE(DateText::timeText(QTime(0, 5)), QString("12:05am"));
        QCOMPARE(DateText::timeWithSecondsText(QTime(10, 42, 7)), QString("10:42:07am"));
        QCOMPARE(DateText::runDateText(QDate(2026, 1, 2)), QString("01/02/26"));
        QCOMPARE(DateText::logDateText(QDate(2026, 1, 2)), QString("01/02/2026"));
        QCOMPARE(DateText::fileStamp(QDate(2026, 1, 2)), QString("2026-01-02"));
    }
};

QTEST_GUILESS_MAIN(TestDateText)
#include "tst_datetext.moc"
