// The watchdog of the feed on its real clock, with a threshold of a second or two so the test
// waits no longer than the alarm itself.
#include "common/TestHome.h"
#include "core/Registry.h"
#include "feed/FeedWatchdog.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

class TestFeedWatchdog : public QObject {
    Q_OBJECT
private slots:
    void beforeALinkOpensNothingIsWatched() {
        FeedWatchdog watchdog;
        QCOMPARE(watchdog.threshold(), 10);
        QSignalSpy stale(&watchdog, &FeedWatchdog::staleFor);
        watchdog.recordArrived();
        QTest::qWait(1200);
        QVERIFY(!watchdog.isWatching());
        QVERIFY(!watchdog.isStale());
        QCOMPARE(stale.size(), 0);
    }

    // Opened and never fed: stale once the threshold has gone by, told again each second with
    // the age counted from the opening.
    void aLinkThatNeverDeliversGoesStaleAfterTheThreshold() {
        FeedWatchdog watchdog;
        watchdog.setThreshold(2);
        QSignalSpy stale(&watchdog, &FeedWatchdog::staleFor);
        QElapsedTimer opened;
        opened.start();
        watchdog.start();
        QTest::qWait(1500);
        QVERIFY(!watchdog.isStale());
        QCOMPARE(stale.size(), 0);

        QTRY_VERIFY_WITH_TIMEOUT(stale.size() >= 1, 3000);
        QVERIFY(opened.elapsed() >= 2000);
        QVERIFY(watchdog.isStale());
        QCOMPARE(stale[0][0].toInt(), 2);

        QTRY_VERIFY_WITH_TIMEOUT(stale.size() >= 2, 2000);
        QCOMPARE(stale[1][0].toInt(), 3);
        QCOMPARE(watchdog.secondsSinceLast(), int(opened.elapsed() / 1000));
    }

    // A record ends the alarm and starts the clock again: a second later it is still fresh.
    void aRecordEndsTheAlarmAndRestartsTheClock() {
        FeedWatchdog watchdog;
        watchdog.setThreshold(2);
        QSignalSpy stale(&watchdog, &FeedWatchdog::staleFor);
        QSignalSpy fresh(&watchdog, &FeedWatchdog::fresh);
        watchdog.start();
        QTRY_VERIFY_WITH_TIMEOUT(watchdog.isStale(), 4000);

        watchdog.recordArrived();
        QVERIFY(!watchdog.isStale());
        QCOMPARE(fresh.size(), 1);
        QCOMPARE(watchdog.secondsSinceLast(), 0);
        const qsizetype toldBefore = stale.size();
        QTest::qWait(1500);
        QVERIFY(!watchdog.isStale());
        QCOMPARE(stale.size(), toldBefore);
        // A record on a fresh feed has no alarm to end.
        watchdog.recordArrived();
        QCOMPARE(fresh.size(), 1);
    }

    // With every link closed there is no alarm, and none comes.
    void stoppingEndsTheAlarmForGood() {
        FeedWatchdog watchdog;
        watchdog.setThreshold(2);
        QSignalSpy stale(&watchdog, &FeedWatchdog::staleFor);
        QSignalSpy fresh(&watchdog, &FeedWatchdog::fresh);
        watchdog.start();
        QTRY_VERIFY_WITH_TIMEOUT(watchdog.isStale(), 4000);

        watchdog.stop();
        QVERIFY(!watchdog.isStale());
        QVERIFY(!watchdog.isWatching());
        QCOMPARE(fresh.size(), 1);
        const qsizetype toldBefore = stale.size();
        QTest::qWait(1500);
        QCOMPARE(stale.size(), toldBefore);
        QVERIFY(!watchdog.isStale());
    }

    // A link opening again counts from its own opening.
    void openingAgainEndsTheAlarmAndCountsAfresh() {
        FeedWatchdog watchdog;
        watchdog.setThreshold(2);
        QSignalSpy fresh(&watchdog, &FeedWatchdog::fresh);
        watchdog.start();
        QTRY_VERIFY_WITH_TIMEOUT(watchdog.isStale(), 4000);
        watchdog.start();
        QVERIFY(!watchdog.isStale());
        QCOMPARE(fresh.size(), 1);
        QCOMPARE(watchdog.secondsSinceLast(), 0);
    }

    void theThresholdIsAWholeNumberOfAtLeastTwoSeconds_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("threshold");
        QTest::newRow("default") << "10" << 10;
        QTest::newRow("longer") << "30" << 30;
        QTest::newRow("least") << "2" << 2;
        QTest::newRow("rounded") << "4.4" << 4;
        QTest::newRow("below two") << "1" << 10;
        QTest::newRow("zero") << "0" << 10;
        QTest::newRow("negative") << "-5" << 10;
        QTest::newRow("word") << "soon" << 10;
        QTest::newRow("empty") << "" << 10;
        QTest::newRow("too large for a whole number") << "1e12" << 10;
    }
    void theThresholdIsAWholeNumberOfAtLeastTwoSeconds() {
        QFETCH(QString, stored);
        QFETCH(int, threshold);
        QCOMPARE(FeedWatchdog::thresholdFromText(stored), threshold);
    }

    void theThresholdIsReadFromTheSettings() {
        TestHome home;
        QCOMPARE(FeedWatchdog::loadThreshold(), 10);
        Registry::set(QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\"),
                      QStringLiteral("NoWeatherSeconds"), QStringLiteral("25"));
        QCOMPARE(FeedWatchdog::loadThreshold(), 25);
        Registry::set(QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\"),
                      QStringLiteral("NoWeatherSeconds"), QStringLiteral("1"));
        QCOMPARE(FeedWatchdog::loadThreshold(), 10);
    }
};

QTEST_GUILESS_MAIN(TestFeedWatchdog)
#include "tst_feedwatchdog.moc"
