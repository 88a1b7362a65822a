#include "SampleRunTable.h"
#include "common/ModelByHand.h"
#include "prediction/LikelyMiss.h"

#include <QRandomGenerator>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <numeric>

using namespace RunColumn;
using PredictionCheck::Prediction;

namespace {

// Predictions whose errors, actual minus predicted, are the ones given.
QList<Prediction> withErrors(const QList<double>& errors) {
    QList<Prediction> predictions;
    for (const double error : errors) {
        Prediction p;
        p.et.predictedEt = 9.5;
        p.actualEt = 9.5 + error;
        predictions.append(p);
    }
    return predictions;
}

struct Run {
    double et;
    double aa;
};

// Forty runs of a car that follows the model at a factor of 5 from 9.40 s at sea level, with
// timing noise drawn uniformly from -0.002 to +0.002 s, made every 15 minutes on one day but
// entered in the table in a shuffled order; times kept to 4 decimals as the timing gives them.
struct GeneratedLog {
    QList<Run> inTimeOrder;
    SampleRunTable table;
};

GeneratedLog fortyRunsAtFactor5(quint32 seed) {
    QRandomGenerator random(seed);
    GeneratedLog log;
    for (int i = 0; i < 40; ++i) {
        const double aa = std::round(1500 + random.generateDouble() * 2000);
        const double noise = (random.generateDouble() * 2 - 1) * 0.002;
        log.inTimeOrder.append(
            {std::round((ModelByHand::etAt(9.40, 0, aa, 5) + noise) * 1e4) / 1e4, aa});
    }
    QList<int> order(40);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), random);
    for (const int i : order) {
        const QTime at = QTime(9, 0).addSecs(15 * 60 * i);
        log.table.addRun({{Ft1320, QString::number(log.inTimeOrder[i].et, 'f', 4)},
                          {AA, QString::number(log.inTimeOrder[i].aa)},
                          {Time, at.toString("hh:mmap")},
                          {Date, "11/21/26"}});
    }
    return log;
}

} // namespace

class LikelyMissTest : public QObject {
    Q_OBJECT
private slots:
    void isTheMissFourInFiveStayWithin();
    void countsTheLastTwentyPredictionsOnly();
    void needsThreePredictions();
    void aLogMadeByTheModelWithTimingNoiseMissesByTheNoise();
};

void LikelyMissTest::isTheMissFourInFiveStayWithin() {
    // Twelve misses of 1 to 12 thousandths, in no order and of either sign: 80 % of 12 is 9.6,
    // so the nearest rank is the 10th smallest, 0.010.
    const QList<double> errors{0.003,  -0.011, 0.001, 0.007,  -0.010, 0.002,
                               -0.012, 0.005,  0.004, -0.009, 0.006,  -0.008};
    const auto miss = LikelyMiss::of(withErrors(errors));
    QVERIFY(miss);
    QCOMPARE(miss->predictions, 12);
    QVERIFY(std::fabs(miss->seconds - 0.010) < 1e-12);

    // Five misses: 80 % of 5 is exactly 4, the 4th smallest.
    const auto five = LikelyMiss::of(withErrors({0.005, -0.001, 0.004, 0.002, -0.003}));
    QCOMPARE(five->predictions, 5);
    QVERIFY(std::fabs(five->seconds - 0.004) < 1e-12);
}

void LikelyMissTest::countsTheLastTwentyPredictionsOnly() {
    // Five large misses long ago, then twenty of 1 to 20 thousandths: the old ones are gone,
    // and 80 % of 20 is the 16th smallest, 0.016.
    QList<double> errors{0.5, -0.5, 0.4, 0.3, -0.2};
    for (int i = 20; i >= 1; --i)
        errors.append((i % 2 ? -1 : 1) * i / 1000.0);
    const auto miss = LikelyMiss::of(withErrors(errors));
    QCOMPARE(miss->predictions, 20);
    QVERIFY(std::fabs(miss->seconds - 0.016) < 1e-12);
}

void LikelyMissTest::needsThreePredictions() {
    QVERIFY(!LikelyMiss::of({}));
    QVERIFY(!LikelyMiss::of(withErrors({0.001, 0.002})));
    // Three: 80 % of 3 is 2.4, so the 3rd smallest, the largest.
    const auto three = LikelyMiss::of(withErrors({0.001, -0.003, 0.002}));
    QCOMPARE(three->predictions, 3);
    QVERIFY(std::fabs(three->seconds - 0.003) < 1e-12);
}

void LikelyMissTest::aLogMadeByTheModelWithTimingNoiseMissesByTheNoise() {
    const GeneratedLog log = fortyRunsAtFactor5(2026);
    const auto report =
        PredictionCheck::check({log.table.cells(), 41, "5"}, PredictionCheck::Mode::OnTheDay);
    const auto miss = LikelyMiss::of(report.predictions);
    QVERIFY(miss);
    QCOMPARE(miss->predictions, 20);

    // Each of the last twenty runs of the day from the run made before it, by hand.
    QList<double> misses;
    for (int i = 20; i < 40; ++i) {
        const Run& run = log.inTimeOrder[i];
        const Run& before = log.inTimeOrder[i - 1];
        misses.append(std::fabs(run.et - ModelByHand::etAt(before.et, before.aa, run.aa, 5)));
    }
    std::sort(misses.begin(), misses.end());
    QCOMPARE(miss->seconds, misses[15]); // 80 % of 20: the 16th smallest
    // Two runs' noise of up to 0.002 s each: their difference spreads to 0.004 s, and four in
    // five of such differences lie within about 0.0022 s.
    QVERIFY2(miss->seconds >= 0.002 && miss->seconds <= 0.005,
             qPrintable(QString::number(miss->seconds)));
}

QTEST_GUILESS_MAIN(LikelyMissTest)
#include "tst_likelymiss.moc"
