#include "prediction/PredictionCheck.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "prediction/ComputeFault.h"
#include "prediction/EtModel.h"
#include "prediction/LogPrediction.h"
#include "prediction/RunOrder.h"
#include "racelog/RaceLog.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>

namespace PredictionCheck {

namespace {

using NumberText::isNumeric;

// The pairs of run and reference the mode sets against each other, grouped by run.
QList<std::pair<int, int>> pairsOf(const Inputs& in, Mode mode) {
    const QList<int> runs = RunOrder::countingRunsInTimeOrder(in.cells, in.rowCount);
    QList<std::pair<int, int>> pairs;
    if (mode == Mode::OnTheDay) {
        for (qsizetype i = 1; i < runs.size(); ++i)
            pairs.append({runs[i], runs[i - 1]});
        return pairs;
    }
    QList<int> byRow = runs;
    std::sort(byRow.begin(), byRow.end());
    for (const int run : byRow) {
        for (const int reference : byRow) {
            if (reference != run)
                pairs.append({run, reference});
        }
    }
    return pairs;
}

// Each pair timed to the same mark, predicted. A pair whose numbers do not compute is left
// out, as the live prediction would show nothing for it.
QList<Prediction> predictionsOf(const Inputs& in, Mode mode, const QString& performanceFactor) {
    const QList<std::pair<int, int>> pairs = pairsOf(in, mode);
    // Each run's mark and time, read once for the whole log.
    struct Timed {
        int mark = 0;
        double et = 0;
    };
    QList<Timed> timed(in.rowCount);
    for (const auto& [run, reference] : pairs) {
        for (const int row : {run, reference}) {
            if (timed[row].mark == 0) {
                timed[row].mark = *farthestMark(in.cells, row);
                timed[row].et = *NumberText::toDouble(in.cells(row, timed[row].mark));
            }
        }
    }
    QList<Prediction> predictions;
    for (const auto& [run, reference] : pairs) {
        if (timed[reference].mark != timed[run].mark)
            continue;
        try {
            const auto et = PredictionModel::predictEt(
                in.cells, reference, in.cells(run, RunColumn::AA), performanceFactor);
            if (et)
                predictions.append({run, reference, timed[run].et, *et});
        } catch (const ComputeFault&) {
        }
    }
    return predictions;
}

// When a run was made: its time of day, and its date when it has one.
struct Moment {
    QTime time;
    std::optional<QDate> date;
};

std::optional<Moment> momentOf(const RunCells& cells, int row) {
    const auto time = DateText::parse(cells(row, RunColumn::Time));
    if (!time || !time->time)
        return std::nullopt;
    const auto date = DateText::parse(cells(row, RunColumn::Date));
    return Moment{*time->time, date ? date->date : std::nullopt};
}

// How far apart two runs are: in seconds when both have a time, across days when both have
// a date, else in runs of the table, counted after every timed pair so a time always wins.
using Moments = QList<std::optional<Moment>>; // by row, read once for the whole log

qint64 distance(const Moments& moments, int run, int reference) {
    const auto& a = moments[run];
    const auto& b = moments[reference];
    if (a && b && a->date && b->date)
        return std::abs(QDateTime(*a->date, a->time).secsTo(QDateTime(*b->date, b->time)));
    if (a && b)
        return std::abs(a->time.secsTo(b->time));
    constexpr qint64 untimed = qint64(1) << 40;
    return untimed + std::abs(run - reference);
}

// The reference nearest in time to the run; on a tie the earlier one, the run a crew would
// have had in hand.
const Prediction& nearestOf(const Moments& moments, const QList<const Prediction*>& ofRun) {
    const Prediction* nearest = ofRun.front();
    if (ofRun.size() == 1)
        return *nearest;
    qint64 best = distance(moments, nearest->run, nearest->reference);
    for (const Prediction* p : ofRun) {
        const qint64 d = distance(moments, p->run, p->reference);
        if (d < best || (d == best && p->reference < nearest->reference)) {
            nearest = p;
            best = d;
        }
    }
    return *nearest;
}

double meanAbsoluteError(const QList<const Prediction*>& predictions) {
    double sum = 0;
    for (const Prediction* p : predictions)
        sum += std::fabs(p->error());
    return sum / double(predictions.size());
}

// The mean absolute error of every pair with a given factor, by the model itself.
double meanAbsoluteErrorAt(const QList<Prediction>& pairs, double performanceFactor) {
    const double sensitivity = EtModel::sensitivity(performanceFactor);
    double sum = 0;
    for (const Prediction& p : pairs)
        sum +=
            std::fabs(p.actualEt - EtModel::etAtAltitude(p.et.referenceEt, p.et.referenceAltitude,
                                                         p.et.altitude, sensitivity));
    return sum / double(pairs.size());
}

// The model's prediction is a straight line in the sensitivity, and the sensitivity a
// straight line in the factor; so each pair's error is |a + b x factor| and the mean of them
// is lowest at the median of the pairs' zeros weighted by their slopes. The field takes any
// signed number, so the whole line is searched this way; the best hundredth lies then on one
// side or the other of that point.
std::optional<double> factorOfLeastError(const QList<Prediction>& pairs) {
    struct Zero {
        double factor;
        double weight;
    };
    QList<Zero> zeros;
    double totalWeight = 0;
    for (const Prediction& p : pairs) {
        const auto errorAt = [&p](double factor) {
            return p.actualEt - EtModel::etAtAltitude(p.et.referenceEt, p.et.referenceAltitude,
                                                      p.et.altitude, EtModel::sensitivity(factor));
        };
        const double a = errorAt(0.0);
        const double b = errorAt(1.0) - a;
        if (b == 0.0 || !std::isfinite(b))
            continue;
        zeros.append({-a / b, std::fabs(b)});
        totalWeight += std::fabs(b);
    }
    if (zeros.isEmpty())
        return std::nullopt;
    std::sort(zeros.begin(), zeros.end(),
              [](const Zero& x, const Zero& y) { return x.factor < y.factor; });
    double weight = 0;
    for (const Zero& zero : zeros) {
        weight += zero.weight;
        if (weight >= totalWeight / 2)
            return zero.factor;
    }
    return zeros.back().factor;
}

// The best hundredth lies on one side or the other of the factor of least error.
std::optional<BestFactor> bestFactorOf(const QList<Prediction>& pairs) {
    const std::optional<double> least = factorOfLeastError(pairs);
    if (!least)
        return std::nullopt;
    const double below = std::floor(*least * 100.0) / 100.0;
    const double above = std::ceil(*least * 100.0) / 100.0;
    const double errorBelow = meanAbsoluteErrorAt(pairs, below);
    const double errorAbove = meanAbsoluteErrorAt(pairs, above);
    if (errorAbove < errorBelow)
        return BestFactor{above, errorAbove};
    return BestFactor{below, errorBelow};
}

// A tidy width for the bins: 1, 2 or 5 times a power of ten.
double binWidth(double span) {
    const double rough = std::max(span / 12.0, 0.0001);
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double step : {1.0, 2.0, 5.0}) {
        if (step * power >= rough * (1 - 1e-9))
            return step * power;
    }
    return 10.0 * power;
}

} // namespace

Report check(const Inputs& inputs, Mode mode) {
    Report report;
    report.factorIsNumber = isNumeric(inputs.performanceFactor);
    if (!report.factorIsNumber) {
        // The pairs themselves do not depend on the factor; any number reads them.
        report.best = bestFactorOf(predictionsOf(inputs, mode, QStringLiteral("0")));
        return report;
    }
    report.predictions = predictionsOf(inputs, mode, inputs.performanceFactor);
    report.best = bestFactorOf(report.predictions);
    if (report.predictions.isEmpty())
        return report;

    QList<const Prediction*> all;
    for (const Prediction& p : report.predictions)
        all.append(&p);
    report.meanAbsoluteError = meanAbsoluteError(all);

    // Only from every other run does a run have references to choose the nearest from.
    Moments moments;
    if (mode == Mode::EveryOther) {
        for (int row = 0; row < inputs.rowCount; ++row)
            moments.append(momentOf(inputs.cells, row));
    }
    // The predictions come grouped by run.
    double worstError = -1;
    for (qsizetype first = 0; first < all.size();) {
        qsizetype end = first;
        while (end < all.size() && all[end]->run == all[first]->run)
            ++end;
        const QList<const Prediction*> ofRun = all.mid(first, end - first);
        const RunCheck runCheck{nearestOf(moments, ofRun), meanAbsoluteError(ofRun)};
        if (runCheck.meanAbsoluteError > worstError) {
            worstError = runCheck.meanAbsoluteError;
            report.worstRun = runCheck.nearest.run;
        }
        report.runs.append(runCheck);
        first = end;
    }
    return report;
}

Report check(const RaceLog& log, Mode mode) {
    return check({LogPrediction::runCells(log), log.runs().tableRows(), log.content().pf}, mode);
}

Histogram histogram(const QList<Prediction>& predictions) {
    if (predictions.isEmpty())
        return {};
    const auto [low, high] = std::minmax_element(
        predictions.begin(), predictions.end(),
        [](const Prediction& a, const Prediction& b) { return a.error() < b.error(); });
    Histogram bins;
    bins.width = binWidth(high->error() - low->error());
    // An error on a bin's edge belongs to the bin it opens, whatever the rounding of the
    // division makes of it.
    const auto binsTo = [&bins](double error) {
        return int(std::floor((error - bins.start) / bins.width + 1e-9));
    };
    bins.start = std::floor(low->error() / bins.width + 1e-9) * bins.width;
    const int count = binsTo(high->error()) + 1;
    bins.counts = QList<int>(count, 0);
    for (const Prediction& p : predictions)
        ++bins.counts[std::clamp(binsTo(p.error()), 0, count - 1)];
    return bins;
}

} // namespace PredictionCheck
