#include "common/TestHome.h"
#include "core/Registry.h"
#include "feed/PagerSchedule.h"

#include <QTest>

namespace {

// Which of the next ticks send a page, as "-" and "P".
QString ticks(PagerSchedule& schedule, int count) {
    QString pattern;
    for (int i = 0; i < count; ++i)
        pattern += schedule.tick() ? u'P' : u'-';
    return pattern;
}

} // namespace

class TestPagerSchedule : public QObject {
    Q_OBJECT
private slots:
    void pagesOnTheTickAfterTheFrequency_data() {
        QTest::addColumn<int>("frequency");
        QTest::addColumn<QString>("pattern");
        QTest::newRow("0 pages every tick") << 0 << "PPPPP";
        QTest::newRow("1 pages every second tick") << 1 << "-P-P-P";
        QTest::newRow("3 pages every fourth tick") << 3 << "---P---P";
    }
    void pagesOnTheTickAfterTheFrequency() {
        QFETCH(int, frequency);
        QFETCH(QString, pattern);
        PagerSchedule schedule(frequency);
        QCOMPARE(ticks(schedule, int(pattern.size())), pattern);
    }

    void defaultPagesOnTick76() {
        PagerSchedule schedule;
        QCOMPARE(schedule.frequency(), 75);
        QCOMPARE(ticks(schedule, 76), QString(75, u'-') + u'P');
    }

    void forcedPageGoesOutAtTheNextTickAndResetsThePeriod() {
        PagerSchedule schedule(3);
        QCOMPARE(ticks(schedule, 2), "--");
        schedule.forcePage();
        QCOMPARE(ticks(schedule, 5), "P---P");
    }

    void forcingSendsNothingByItself() {
        PagerSchedule schedule(3);
        schedule.forcePage();
        schedule.forcePage();
        QCOMPARE(ticks(schedule, 2), "P-");
    }

    void newFrequencyKeepsTheTicksCounted() {
        PagerSchedule schedule(10);
        QCOMPARE(ticks(schedule, 3), "---");
        schedule.setFrequency(2);
        QCOMPARE(schedule.frequency(), 2);
        QCOMPARE(ticks(schedule, 4), "P--P");
    }

    void frequencyFromText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("frequency");
        QTest::newRow("default") << "75" << 75;
        QTest::newRow("135 stays") << "135" << 135;
        QTest::newRow("136 is too many") << "136" << 75;
        QTest::newRow("0 stays") << "0" << 0;
        QTest::newRow("below 0") << "-1" << 75;
        QTest::newRow("not a number") << "abc" << 75;
        QTest::newRow("nothing stored") << Registry::NoKeyValue << 75;
        QTest::newRow("half rounds to even, down") << "12.5" << 12;
        QTest::newRow("half rounds to even, up") << "13.5" << 14;
        QTest::newRow("135.4 rounds into range") << "135.4" << 135;
        QTest::newRow("beyond a whole number") << "1e10" << 75;
    }
    void frequencyFromText() {
        QFETCH(QString, text);
        QFETCH(int, frequency);
        QCOMPARE(PagerSchedule::frequencyFromText(text), frequency);
    }

    void loadFrequencyFromTheSettings_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("frequency");
        QTest::newRow("nothing stored") << "" << 75;
        QTest::newRow("136") << "136" << 75;
        QTest::newRow("135") << "135" << 135;
        QTest::newRow("abc") << "abc" << 75;
        QTest::newRow("15") << "15" << 15;
    }
    void loadFrequencyFromTheSettings() {
        QFETCH(QString, stored);
        QFETCH(int, frequency);
        TestHome home;
        if (!stored.isEmpty())
            Registry::set("SOFTWARE\\Zorvane\\Main\\Defaults\\", "PagerFrequency", stored);
        QCOMPARE(PagerSchedule::loadFrequency(), frequency);
    }
};

QTEST_GUILESS_MAIN(TestPagerSchedule)
#include "tst_pagerschedule.moc"
