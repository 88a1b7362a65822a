#include "feed/RecentAir.h"

#include <QTest>

namespace {
constexpr qint64 Minute = 60 * 1000;
} // namespace

class RecentAirTest : public QObject {
    Q_OBJECT
private slots:
    void keepsTheLastHalfHour() {
        RecentAir air;
        for (int minute = 0; minute <= 45; ++minute)
            air.add(minute * Minute, 2000 + minute);
        // At minute 45 the readings from minute 15 on are kept: 31 of them.
        QCOMPARE(air.samples().size(), 31);
        QCOMPARE(air.samples().front().at, 15 * Minute);
        QCOMPARE(air.samples().front().aa, 2015.0);
        QCOMPARE(air.samples().back().aa, 2045.0);
    }

    void aFeedThatStoppedLeavesNoOldAir() {
        RecentAir air;
        for (int minute = 0; minute <= 20; ++minute)
            air.add(minute * Minute, 2000);
        air.forgetBefore(45 * Minute);
        QCOMPARE(air.samples().size(), 6); // minutes 15 to 20
        air.forgetBefore(51 * Minute);
        QVERIFY(air.samples().isEmpty());
    }
};

QTEST_GUILESS_MAIN(RecentAirTest)
#include "tst_recentair.moc"
