#include "prediction/TrackDrift.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "prediction/ComputeFault.h"
#include "prediction/PredictionModel.h"
#include "prediction/RunOrder.h"

namespace TrackDrift {

namespace {

bool ranOn(const RunCells& cells, int row, const QDate& day) {
    const auto date = DateText::parse(cells(row, RunColumn::Date));
    return date && date->date == day;
}

// Actual minus predicted, when the run and the reference are timed to the same mark and the
// numbers compute.
std::optional<double> missOf(const Inputs& in, int run) {
    const auto mark = farthestMark(in.cells, run);
    if (run == in.referenceRow || farthestMark(in.cells, in.referenceRow) != mark)
        return std::nullopt;
    try {
        const auto et = PredictionModel::predictEt(
            in.cells, in.referenceRow, in.cells(run, RunColumn::AA), in.performanceFactor);
        if (!et)
            return std::nullopt;
        return *NumberText::toDouble(in.cells(run, *mark)) - et->predictedEt;
    } catch (const ComputeFault&) {
        return std::nullopt;
    }
}

} // namespace

std::optional<PredictionTrust::Drift> of(const Inputs& inputs) {
    if (inputs.referenceRow <= 0)
        return std::nullopt;
    const QList<int> runs = RunOrder::countingRunsInTimeOrder(inputs.cells, inputs.rowCount);
    double sum = 0;
    int count = 0;
    // The latest first, until enough runs of today have spoken.
    for (auto run = runs.crbegin(); run != runs.crend() && count < LatestRuns; ++run) {
        if (!ranOn(inputs.cells, *run, inputs.today))
            continue;
        if (const auto miss = missOf(inputs, *run)) {
            sum += *miss;
            ++count;
        }
    }
    if (count < FewestRuns)
        return std::nullopt;
    return PredictionTrust::Drift{sum / count, count};
}

} // namespace TrackDrift
