// The least and greatest values of a history that loses its oldest values, against a plain
// look over all the values held.
#include "charts/SlidingRange.h"

#include <QRandomGenerator>
#include <QTest>
#include <algorithm>
#include <deque>

class TestSlidingRange : public QObject {
    Q_OBJECT

private slots:
    void anEmptyRangeHoldsNothing() {
        SlidingRange range;
        QVERIFY(range.isEmpty());
        range.dropOldest();
        QVERIFY(range.isEmpty());
        QCOMPARE(range.size(), 0);
    }

    void theOldestGoesFirst() {
        SlidingRange range;
        for (double value : {5.0, 1.0, 9.0, 3.0})
            range.push(value);
        QCOMPARE(range.min(), 1.0);
        QCOMPARE(range.max(), 9.0);
        range.dropOldest(); // 5
        QCOMPARE(range.min(), 1.0);
        range.dropOldest(); // 1
        QCOMPARE(range.min(), 3.0);
        QCOMPARE(range.max(), 9.0);
        range.dropOldest(); // 9
        QCOMPARE(range.min(), 3.0);
        QCOMPARE(range.max(), 3.0);
        QCOMPARE(range.size(), 1);
    }

    void equalValuesLeaveOneAtATime() {
        SlidingRange range;
        for (double value : {2.0, 2.0, 2.0})
            range.push(value);
        range.dropOldest();
        range.dropOldest();
        QCOMPARE(range.min(), 2.0);
        QCOMPARE(range.max(), 2.0);
        range.dropOldest();
        QVERIFY(range.isEmpty());
    }

    void aClearedRangeStartsAgain() {
        SlidingRange range;
        range.push(7);
        range.push(8);
        range.clear();
        QVERIFY(range.isEmpty());
        range.push(1);
        QCOMPARE(range.min(), 1.0);
        QCOMPARE(range.max(), 1.0);
    }

    void aLongHistoryAgreesWithALookOverAllOfIt() {
        QRandomGenerator random(20261125);
        SlidingRange range;
        std::deque<double> held;
        for (int step = 0; step < 20000; ++step) {
            const double value = random.bounded(1000) / 10.0;
            range.push(value);
            held.push_back(value);
            if (held.size() > 500 || random.bounded(4) == 0) {
                range.dropOldest();
                held.pop_front();
            }
            if (held.empty()) {
                QVERIFY(range.isEmpty());
                continue;
            }
            QCOMPARE(range.size(), int(held.size()));
            QCOMPARE(range.min(), *std::min_element(held.begin(), held.end()));
            QCOMPARE(range.max(), *std::max_element(held.begin(), held.end()));
        }
    }
};

QTEST_APPLESS_MAIN(TestSlidingRange)
#include "tst_slidingrange.moc"
