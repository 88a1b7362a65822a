#include "SampleRunTable.h"
#include "common/ModelByHand.h"
#include "prediction/PredictionCheck.h"
#include "racelog/RaceLog.h"

#include <QRandomGenerator>
#include <QTest>
#include <cmath>

using namespace RunColumn;
using PredictionCheck::Inputs;
using enum PredictionCheck::Mode;

namespace {

struct Run {
    double et;
    double aa;
};

double meanAbsoluteError(const QList<Run>& runs, double pf) {
    double sum = 0;
    int count = 0;
    for (qsizetype i = 0; i < runs.size(); ++i) {
        for (qsizetype j = 0; j < runs.size(); ++j) {
            if (i == j)
                continue;
            sum +=
                std::fabs(runs[i].et - ModelByHand::etAt(runs[j].et, runs[j].aa, runs[i].aa, pf));
            ++count;
        }
    }
    return sum / count;
}

// A car whose times follow its air smoothly at the given factor, with timing noise of up to
// noise seconds, over adjusted altitudes from 1500 to 3500 ft; times kept to 4 decimals as a
// timing system gives them.
QList<Run> generatedRuns(quint32 seed, double pf, double noise, int count = 40) {
    QRandomGenerator random(seed);
    const double sensitivity = ModelByHand::sensitivity(pf);
    const double baseEt = 4.5 + random.generateDouble() * 6.5;
    QList<Run> runs;
    for (int i = 0; i < count; ++i) {
        const double aa = std::round(1500 + random.generateDouble() * 2000);
        const double jitter = (random.generateDouble() * 2 - 1) * noise;
        runs.append({std::round((baseEt * std::exp(sensitivity * aa) + jitter) * 1e4) / 1e4, aa});
    }
    return runs;
}

SampleRunTable tableOf(const QList<Run>& runs) {
    SampleRunTable table;
    for (const Run& run : runs)
        table.addRun({{Ft1320, QString::number(run.et, 'f', 4)}, {AA, QString::number(run.aa)}});
    return table;
}

Inputs inputsOf(const SampleRunTable& table, int rowCount, const QString& pf) {
    return {table.cells(), rowCount, pf};
}

} // namespace

class PredictionCheckTest : public QObject {
    Q_OBJECT
private slots:
    void eachRunIsPredictedFromEveryOtherRunAtItsDistance();
    void theNearestReferenceIsTheNearestInTimeAndTheEarlierOnATie();
    void aRunWithoutADateIsComparedByItsTimeOfDay();
    void runsWithoutTimesTakeTheNearestRunOfTheTable();
    void theWorstRunHasTheLargestMeanError();
    void aFactorThatIsNoNumberPredictsNothing();
    void aPairThatDoesNotComputeIsLeftOut();
    void aLogWithOneUsableRunHasNothingToCheck();
    void theLogDocumentIsReadAsItStands();
    void bestFactorRecoversTheCarsFactor_data();
    void bestFactorRecoversTheCarsFactor();
    void bestFactorIsTheLeastErrorOfEveryHundredth();
    void theHistogramCountsEveryErrorInTidyBins();
    void onTheDayEachRunIsPredictedFromTheRunMadeBeforeIt();
    void onTheDayARunWithoutDateAndTimeFollowsTheRunAboveIt();
    void onTheDayRunsAtAnotherDistanceAreNotCompared();
};

void PredictionCheckTest::eachRunIsPredictedFromEveryOtherRunAtItsDistance() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.5000"}, {AA, "2000"}});
    table.addRun({{Ft1320, "9.5200"}, {AA, "2100"}});
    table.addRun({{Ft660, "6.1000"}, {AA, "2050"}}); // an eighth mile: nobody to compare with
    table.addRun({{Ft1320, "9.4900"}, {AA, "1900"}});
    table.addRun({{Ft1320, "9.4000"}}); // no altitude
    const auto report = PredictionCheck::check(inputsOf(table, 6, "5"), EveryOther);

    QVERIFY(report.factorIsNumber);
    QCOMPARE(report.predictions.size(), 6);
    const QList<std::pair<int, int>> pairs{{1, 2}, {1, 4}, {2, 1}, {2, 4}, {4, 1}, {4, 2}};
    const QMap<int, Run> runs{{1, {9.5, 2000}}, {2, {9.52, 2100}}, {4, {9.49, 1900}}};
    double sum = 0;
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        const auto& p = report.predictions[i];
        const auto [run, reference] = pairs[i];
        QCOMPARE(p.run, run);
        QCOMPARE(p.reference, reference);
        const double predicted =
            ModelByHand::etAt(runs[reference].et, runs[reference].aa, runs[run].aa, 5);
        QCOMPARE(p.et.predictedEt, predicted);
        QCOMPARE(p.error(), runs[run].et - predicted);
        sum += std::fabs(runs[run].et - predicted);
    }
    QCOMPARE(report.meanAbsoluteError, sum / 6);
    QCOMPARE(report.runs.size(), 3);
    QCOMPARE(report.runs[0].nearest.run, 1);
    QCOMPARE(report.runs[1].nearest.run, 2);
    QCOMPARE(report.runs[2].nearest.run, 4);
}

void PredictionCheckTest::theNearestReferenceIsTheNearestInTimeAndTheEarlierOnATie() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.50"}, {AA, "2000"}, {Time, "01:00pm"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.51"}, {AA, "2010"}, {Time, "02:00pm"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.52"}, {AA, "2020"}, {Time, "03:00pm"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.53"}, {AA, "2030"}, {Time, "03:20pm"}, {Date, "11/21/26"}});
    // The next morning: the evening before is nearer than the first afternoon run.
    table.addRun({{Ft1320, "9.54"}, {AA, "2040"}, {Time, "09:00am"}, {Date, "11/22/26"}});
    const auto report = PredictionCheck::check(inputsOf(table, 6, "4"), EveryOther);

    QCOMPARE(report.runs.size(), 5);
    QCOMPARE(report.runs[0].nearest.reference, 2);
    QCOMPARE(report.runs[1].nearest.reference, 1); // 1 h either side: the earlier run
    QCOMPARE(report.runs[2].nearest.reference, 4);
    QCOMPARE(report.runs[3].nearest.reference, 3);
    QCOMPARE(report.runs[4].nearest.reference, 4);
}

void PredictionCheckTest::aRunWithoutADateIsComparedByItsTimeOfDay() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.50"}, {AA, "2000"}, {Time, "10:00am"}});
    table.addRun({{Ft1320, "9.51"}, {AA, "2010"}, {Time, "10:10am"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.52"}, {AA, "2020"}, {Time, "10:25am"}, {Date, "11/21/26"}});
    const auto report = PredictionCheck::check(inputsOf(table, 4, "4"), EveryOther);
    QCOMPARE(report.runs[0].nearest.reference, 2);
    QCOMPARE(report.runs[1].nearest.reference, 1);
    QCOMPARE(report.runs[2].nearest.reference, 2);
}

void PredictionCheckTest::runsWithoutTimesTakeTheNearestRunOfTheTable() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.50"}, {AA, "2000"}});
    table.addRun({{Ft1320, "9.51"}, {AA, "2010"}, {Time, "02:00pm"}});
    table.addRun({{Ft1320, "9.52"}, {AA, "2020"}});
    table.addRun({{Ft1320, "9.53"}, {AA, "2030"}, {Time, "05:00pm"}});
    const auto report = PredictionCheck::check(inputsOf(table, 5, "4"), EveryOther);

    QCOMPARE(report.runs[0].nearest.reference, 2);
    QCOMPARE(report.runs[1].nearest.reference, 4); // timed runs find each other, hours apart
    QCOMPARE(report.runs[2].nearest.reference, 2); // untimed: run 2 and 4 are both one away
    QCOMPARE(report.runs[3].nearest.reference, 2);
}

void PredictionCheckTest::theWorstRunHasTheLargestMeanError() {
    const QList<Run> runs{{9.50, 2000}, {9.62, 2050}, {9.49, 2100}, {9.52, 2150}};
    const auto table = tableOf(runs);
    const auto report = PredictionCheck::check(inputsOf(table, 5, "6"), EveryOther);

    int worst = 0;
    double worstError = -1;
    for (int run = 0; run < runs.size(); ++run) {
        double sum = 0;
        for (int reference = 0; reference < runs.size(); ++reference)
            if (reference != run)
                sum += std::fabs(runs[run].et - ModelByHand::etAt(runs[reference].et,
                                                                  runs[reference].aa, runs[run].aa,
                                                                  6));
        QCOMPARE(report.runs[run].meanAbsoluteError, sum / 3);
        if (sum / 3 > worstError) {
            worstError = sum / 3;
            worst = run + 1;
        }
    }
    QCOMPARE(worst, 2);
    QCOMPARE(report.worstRun, worst);
}

void PredictionCheckTest::aFactorThatIsNoNumberPredictsNothing() {
    const auto table = tableOf({{9.5, 2000}, {9.6, 2100}});
    const auto report = PredictionCheck::check(inputsOf(table, 3, "abc"), EveryOther);
    QVERIFY(!report.factorIsNumber);
    QVERIFY(report.predictions.isEmpty());
    QVERIFY(report.runs.isEmpty());
    QCOMPARE(report.worstRun, 0);
    // The best factor needs none of the log's own.
    QVERIFY(PredictionCheck::check(inputsOf(table, 3, "abc"), EveryOther).best);
}

void PredictionCheckTest::aPairThatDoesNotComputeIsLeftOut() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.5"}, {AA, "1e308"}});
    table.addRun({{Ft1320, "9.6"}, {AA, "-1e308"}});
    table.addRun({{Ft1320, "9.7"}, {AA, "-1e308"}});
    const auto report = PredictionCheck::check(inputsOf(table, 4, "5"), EveryOther);
    // Only runs 2 and 3 share an altitude that can be computed from.
    QCOMPARE(report.predictions.size(), 2);
    QCOMPARE(report.predictions[0].run, 2);
    QCOMPARE(report.predictions[1].run, 3);
    QCOMPARE(report.runs.size(), 2);
}

void PredictionCheckTest::aLogWithOneUsableRunHasNothingToCheck() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.5"}, {AA, "2000"}});
    table.addRun({{Ft1320, "9.6"}});
    table.addRun({{AA, "2100"}});
    const Inputs in = inputsOf(table, 4, "5");
    const auto report = PredictionCheck::check(in, EveryOther);
    QVERIFY(report.factorIsNumber);
    QVERIFY(report.predictions.isEmpty());
    QVERIFY(report.runs.isEmpty());
    QCOMPARE(report.meanAbsoluteError, 0.0);
    QVERIFY(!report.best);
    QVERIFY(PredictionCheck::histogram(report.predictions).counts.isEmpty());
}

void PredictionCheckTest::theLogDocumentIsReadAsItStands() {
    RaceLog log;
    log.change("Runs", [](RaceLogData& data) {
        data.grid.addRun();
        data.grid.setCell(1, Ft1320, "9.5000");
        data.grid.setCell(1, AA, "2000");
        data.grid.setCell(2, Ft1320, "9.5400");
        data.grid.setCell(2, AA, "2200");
        data.pf = "3";
    });
    const auto report = PredictionCheck::check(log, EveryOther);
    QCOMPARE(report.predictions.size(), 2);
    QCOMPARE(report.predictions[0].et.predictedEt, ModelByHand::etAt(9.54, 2200, 2000, 3));
    QCOMPARE(report.predictions[1].et.predictedEt, ModelByHand::etAt(9.5, 2000, 2200, 3));
}

void PredictionCheckTest::bestFactorRecoversTheCarsFactor_data() {
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<double>("pf");
    QTest::newRow("PF 2.68") << 11u << 2.68;
    QTest::newRow("PF 4.50") << 12u << 4.5;
    QTest::newRow("PF 5.29") << 13u << 5.29;
    QTest::newRow("PF 6.27") << 14u << 6.27;
    QTest::newRow("PF 7.55") << 15u << 7.55;
    QTest::newRow("PF 0.80") << 16u << 0.8;
}

void PredictionCheckTest::bestFactorRecoversTheCarsFactor() {
    QFETCH(quint32, seed);
    QFETCH(double, pf);
    const QList<Run> runs = generatedRuns(seed, pf, 0.0001);
    const auto table = tableOf(runs);
    const auto best = PredictionCheck::check(inputsOf(table, 41, "0"), EveryOther).best;
    QVERIFY(best);
    QVERIFY2(std::fabs(best->performanceFactor - pf) <= 0.01 + 1e-9,
             qPrintable(QString::number(best->performanceFactor)));
    QCOMPARE(best->meanAbsoluteError, meanAbsoluteError(runs, best->performanceFactor));
}

void PredictionCheckTest::bestFactorIsTheLeastErrorOfEveryHundredth() {
    // Timing noise this large hides the car's factor; the best one is still the least error.
    const QList<Run> runs = generatedRuns(7, 5.0, 0.02, 25);
    const auto table = tableOf(runs);
    const auto best = PredictionCheck::check(inputsOf(table, 26, "1"), EveryOther).best;
    QVERIFY(best);
    double least = 1e9;
    for (int hundredths = -3000; hundredths <= 4000; ++hundredths)
        least = std::min(least, meanAbsoluteError(runs, hundredths / 100.0));
    QVERIFY(std::fabs(best->meanAbsoluteError - least) < 1e-12);
    QCOMPARE(std::round(best->performanceFactor * 100) / 100, best->performanceFactor);
    QCOMPARE(best->meanAbsoluteError, meanAbsoluteError(runs, best->performanceFactor));
}

void PredictionCheckTest::theHistogramCountsEveryErrorInTidyBins() {
    // Runs at one altitude: each error is the run's time less the reference's and the model's
    // one-foot step, so the errors are known to the test.
    const QList<Run> runs{{9.500, 2000}, {9.503, 2000}, {9.510, 2000}};
    const auto table = tableOf(runs);
    const auto report =
        PredictionCheck::check(inputsOf(table, 4, "10"), EveryOther); // no correction
    QList<double> errors;
    for (const auto& p : report.predictions)
        errors.append(p.error());
    const QList<double> expected{-0.003, -0.010, 0.003, -0.007, 0.010, 0.007};
    for (qsizetype i = 0; i < errors.size(); ++i)
        QVERIFY(std::fabs(errors[i] - expected[i]) < 1e-9);

    const auto bins = PredictionCheck::histogram(report.predictions);
    // A span of 0.020 s in about a dozen bins: 0.002 s wide, from -0.010.
    QVERIFY(std::fabs(bins.width - 0.002) < 1e-12);
    QVERIFY(std::fabs(bins.start + 0.010) < 1e-12);
    QCOMPARE(bins.counts, (QList<int>{1, 1, 0, 1, 0, 0, 1, 0, 1, 0, 1}));
}

void PredictionCheckTest::onTheDayEachRunIsPredictedFromTheRunMadeBeforeIt() {
    // Entered out of order: row 3 ran first, then row 1, row 4 the next morning, row 2 last.
    SampleRunTable table;
    table.addRun({{Ft1320, "9.51"}, {AA, "2010"}, {Time, "02:00pm"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.54"}, {AA, "2040"}, {Time, "11:00am"}, {Date, "11/22/26"}});
    table.addRun({{Ft1320, "9.50"}, {AA, "2000"}, {Time, "01:00pm"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.53"}, {AA, "2030"}, {Time, "09:00am"}, {Date, "11/22/26"}});
    const auto report = PredictionCheck::check(inputsOf(table, 5, "4"), OnTheDay);

    const QList<std::pair<int, int>> pairs{{1, 3}, {4, 1}, {2, 4}};
    const QMap<int, Run> runs{
        {1, {9.51, 2010}}, {2, {9.54, 2040}}, {3, {9.50, 2000}}, {4, {9.53, 2030}}};
    QCOMPARE(report.predictions.size(), pairs.size());
    QCOMPARE(report.runs.size(), pairs.size());
    double sum = 0;
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        const auto [run, reference] = pairs[i];
        const double predicted =
            ModelByHand::etAt(runs[reference].et, runs[reference].aa, runs[run].aa, 4);
        QCOMPARE(report.predictions[i].run, run);
        QCOMPARE(report.predictions[i].reference, reference);
        QCOMPARE(report.predictions[i].et.predictedEt, predicted);
        QCOMPARE(report.runs[i].nearest.run, run);
        QCOMPARE(report.runs[i].meanAbsoluteError, std::fabs(runs[run].et - predicted));
        sum += std::fabs(runs[run].et - predicted);
    }
    QCOMPARE(report.meanAbsoluteError, sum / 3);
}

void PredictionCheckTest::onTheDayARunWithoutDateAndTimeFollowsTheRunAboveIt() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.50"}, {AA, "2000"}, {Time, "03:00pm"}, {Date, "11/21/26"}});
    table.addRun({{Ft1320, "9.51"}, {AA, "2010"}});                    // after row 1
    table.addRun({{Ft1320, "9.52"}, {AA, "2020"}, {Time, "01:00pm"}}); // no date: after row 2
    table.addRun({{Ft1320, "9.53"}, {AA, "2030"}, {Time, "02:00pm"}, {Date, "11/21/26"}});
    const auto report = PredictionCheck::check(inputsOf(table, 5, "4"), OnTheDay);
    // In time: 4 (2:00pm), then 1 (3:00pm) with 2 and 3 after it as the table has them.
    QCOMPARE(report.predictions.size(), 3);
    QCOMPARE(std::pair(report.predictions[0].run, report.predictions[0].reference),
             std::pair(1, 4));
    QCOMPARE(std::pair(report.predictions[1].run, report.predictions[1].reference),
             std::pair(2, 1));
    QCOMPARE(std::pair(report.predictions[2].run, report.predictions[2].reference),
             std::pair(3, 2));
}

void PredictionCheckTest::onTheDayRunsAtAnotherDistanceAreNotCompared() {
    SampleRunTable table;
    table.addRun({{Ft1320, "9.50"}, {AA, "2000"}});
    table.addRun({{Ft660, "6.10"}, {AA, "2010"}}); // an eighth: neither predicted nor predicting
    table.addRun({{Ft1320, "9.52"}, {AA, "2020"}});
    table.addRun({{Ft1320, "9.53"}}); // no altitude: does not count
    table.addRun({{Ft1320, "9.54"}, {AA, "2040"}});
    const auto report = PredictionCheck::check(inputsOf(table, 6, "4"), OnTheDay);
    // Run 3 follows the eighth-mile run 2, so nothing predicts it; run 5 follows run 3.
    QCOMPARE(report.predictions.size(), 1);
    QCOMPARE(report.predictions[0].run, 5);
    QCOMPARE(report.predictions[0].reference, 3);
    QCOMPARE(report.predictions[0].et.predictedEt, ModelByHand::etAt(9.52, 2020, 2040, 4));
}

QTEST_GUILESS_MAIN(PredictionCheckTest)
#include "tst_predictioncheck.moc"
