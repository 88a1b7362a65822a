#include "racelog/OpenRaceLogs.h"
#include "racelog/RaceLog.h"

#include <QSignalSpy>
#include <QTest>

namespace {

using Log = RaceLog;

QList<int> slotsIn(const QSignalSpy& spy) {
    QList<int> list;
    for (const QList<QVariant>& call : spy)
        list.append(call.at(0).toInt());
    return list;
}

} // namespace

class TestOpenRaceLogs : public QObject {
    Q_OBJECT

private slots:
    void atStartThereIsOneEmptySlot() {
        OpenRaceLogs logs;
        QCOMPARE(logs.slotCount(), 1);
        QCOMPARE(logs.at(0), nullptr);
        QCOMPARE(logs.at(5), nullptr);
        QCOMPARE(logs.at(-1), nullptr);
    }

    void aLogTakesTheFirstEmptySlotOrANewOne() {
        OpenRaceLogs logs;
        Log first, second, third, fourth;
        QCOMPARE(logs.open(&first), 0);
        QCOMPARE(logs.open(&second), 1);
        QCOMPARE(logs.open(&third), 2);
        logs.close(&second);
        QCOMPARE(logs.bySlot(), (QList<RaceLog*>{&first, nullptr, &third}));
        QCOMPARE(logs.open(&fourth), 1);
        QCOMPARE(logs.bySlot(), (QList<RaceLog*>{&first, &fourth, &third}));
        // Each log knows its slot, which names it where it has no page identifier.
        QCOMPARE(first.slot(), 0);
        QCOMPARE(fourth.slot(), 1);
        QCOMPARE(third.slot(), 2);
    }

    // A closed log leaves its slot empty: the slots after it keep their numbers, and with them
    // the names of their windows.
    void closingKeepsTheOtherSlots() {
        OpenRaceLogs logs;
        Log first, second;
        logs.open(&first);
        logs.open(&second);
        logs.close(&first);
        QCOMPARE(logs.slotCount(), 2);
        QCOMPARE(logs.at(0), nullptr);
        QCOMPARE(logs.at(1), &second);
        Log stranger;
        logs.close(&stranger);
        logs.close(nullptr);
        QCOMPARE(logs.at(1), &second);
    }

    void openingAndClosingAreAnnounced() {
        OpenRaceLogs logs;
        QSignalSpy opened(&logs, &OpenRaceLogs::opened);
        QSignalSpy closed(&logs, &OpenRaceLogs::closed);
        Log first, second, stranger;
        logs.open(&first);
        logs.open(&second);
        logs.close(&first);
        logs.close(&stranger);
        logs.close(&first);
        QCOMPARE(slotsIn(opened), (QList<int>{0, 1}));
        QCOMPARE(slotsIn(closed), (QList<int>{0}));
    }

    void resetEmptiesEverySlot() {
        OpenRaceLogs logs;
        Log first, second;
        logs.open(&first);
        logs.open(&second);
        logs.reset();
        QCOMPARE(logs.bySlot(), QList<RaceLog*>{nullptr});
    }
};

QTEST_GUILESS_MAIN(TestOpenRaceLogs)
#include "tst_openracelogs.moc"
