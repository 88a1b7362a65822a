#include "SampleRunTable.h"
#include "common/ModelByHand.h"
#include "prediction/TrackDrift.h"

#include <QRandomGenerator>
#include <QTest>
#include <cmath>

using namespace RunColumn;

namespace {

const QDate Today(2026, 11, 22);
const QString TodayText = "11/22/26";

QString fixed(double value) {
    return QString::number(value, 'f', 4);
}

TrackDrift::Inputs inputsOf(const SampleRunTable& table, int rowCount, int referenceRow) {
    return {table.cells(), rowCount, referenceRow, "5", Today};
}

} // namespace

class TrackDriftTest : public QObject {
    Q_OBJECT
private slots:
    void isTheMeanMissOfTheLastThreeRunsToday();
    void runsOfOtherDaysAndTheReferenceRunDoNotCount();
    void needsTwoRunsToday();
    void needsAReferenceRun();
    void aTrackRunningSlowerThanTheAirIsFoundThroughTheNoise();
};

void TrackDriftTest::isTheMeanMissOfTheLastThreeRunsToday() {
    SampleRunTable table;
    const int reference =
        table.addRun({{Ft1320, "9.5000"}, {AA, "2000"}, {Time, "09:00am"}, {Date, TodayText}});
    // Four runs today, the first the oldest: it falls out of the last three.
    table.addRun({{Ft1320, "9.6000"}, {AA, "2050"}, {Time, "10:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5150"}, {AA, "2100"}, {Time, "01:00pm"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5100"}, {AA, "2200"}, {Time, "11:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5020"}, {AA, "1900"}, {Time, "02:00pm"}, {Date, TodayText}});
    const auto drift = TrackDrift::of(inputsOf(table, 6, reference));
    QVERIFY(drift);
    QCOMPARE(drift->runs, 3);
    const double misses = (9.5150 - ModelByHand::etAt(9.5, 2000, 2100, 5)) +
                          (9.5100 - ModelByHand::etAt(9.5, 2000, 2200, 5)) +
                          (9.5020 - ModelByHand::etAt(9.5, 2000, 1900, 5));
    QCOMPARE(drift->seconds, misses / 3);
}

void TrackDriftTest::runsOfOtherDaysAndTheReferenceRunDoNotCount() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.5200"}, {AA, "2100"}, {Time, "04:00pm"}, {Date, "11/21/26"}});
    const int reference =
        table.addRun({{Ft1320, "9.5000"}, {AA, "2000"}, {Time, "09:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5150"}, {AA, "2100"}, {Time, "10:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5250"}, {AA, "2100"}, {Time, "10:30am"}}); // no date
    table.addRun({{Ft660, "6.1000"}, {AA, "2100"}, {Time, "11:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5100"}, {AA, "2200"}, {Time, "11:30am"}, {Date, TodayText}});
    const auto drift = TrackDrift::of(inputsOf(table, 7, reference));
    QVERIFY(drift);
    QCOMPARE(drift->runs, 2);
    QCOMPARE(drift->seconds, ((9.5150 - ModelByHand::etAt(9.5, 2000, 2100, 5)) +
                              (9.5100 - ModelByHand::etAt(9.5, 2000, 2200, 5))) /
                                 2);
}

void TrackDriftTest::needsTwoRunsToday() {
    SampleRunTable table;
    const int reference =
        table.addRun({{Ft1320, "9.5000"}, {AA, "2000"}, {Time, "09:00am"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.5150"}, {AA, "2100"}, {Time, "10:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5100"}, {AA, "2200"}, {Time, "11:00am"}, {Date, "11/21/26"}});
    QVERIFY(!TrackDrift::of(inputsOf(table, 4, reference)));
}

void TrackDriftTest::needsAReferenceRun() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.5150"}, {AA, "2100"}, {Time, "10:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5100"}, {AA, "2200"}, {Time, "11:00am"}, {Date, TodayText}});
    table.addRun({{Ft1320, "9.5000"}, {AA, "2300"}, {Time, "12:00pm"}, {Date, TodayText}});
    QVERIFY(!TrackDrift::of(inputsOf(table, 4, 0)));
}

void TrackDriftTest::aTrackRunningSlowerThanTheAirIsFoundThroughTheNoise() {
    // Yesterday the car ran as the model says from its reference run; today it runs 0.015 s
    // slower than that, with timing noise drawn uniformly from -0.002 to +0.002 s.
    QRandomGenerator random(15);
    SampleRunTable table;
    const int reference =
        table.addRun({{Ft1320, "9.4800"}, {AA, "2000"}, {Time, "09:00am"}, {Date, "11/21/26"}});
    for (int i = 0; i < 8; ++i) {
        const double aa = std::round(1500 + random.generateDouble() * 2000);
        const double noise = (random.generateDouble() * 2 - 1) * 0.002;
        const bool today = i >= 4;
        const double et = ModelByHand::etAt(9.48, 2000, aa, 5) + (today ? 0.015 : 0.0) + noise;
        table.addRun({{Ft1320, fixed(et)},
                      {AA, QString::number(aa)},
                      {Time, QTime(10 + i, 0).toString("hh:mmap")},
                      {Date, today ? TodayText : "11/21/26"}});
    }
    const auto drift = TrackDrift::of(inputsOf(table, 10, reference));
    QVERIFY(drift);
    QCOMPARE(drift->runs, 3);
    QVERIFY2(std::fabs(drift->seconds - 0.015) <= 0.002,
             qPrintable(QString::number(drift->seconds)));
}

QTEST_GUILESS_MAIN(TrackDriftTest)
#include "tst_trackdrift.moc"
