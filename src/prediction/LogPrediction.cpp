#include "prediction/LogPrediction.h"

#include "racelog/RaceLog.h"

namespace LogPrediction {

RunCells runCells(const RaceLog& log) {
    const RunTable& table = log.runs();
    return [&table](int row, int column) { return table.cell(row, column); };
}

PredictionModel::Outcome predict(const RaceLog& log, int slot, bool deltaVP) {
    const RaceLogData& content = log.content();
    return PredictionModel::compute({
        runCells(log),
        content.refRunIndex + 1,
        content.aa,
        content.vp,
        content.pf,
        content.tsr,
        content.targetET,
        content.pageIdentifier,
        slot,
        deltaVP,
    });
}

RunCompletion::Outcome completeRun(const RaceLog& log, int row) {
    const RaceLogData& content = log.content();
    return RunCompletion::compute({
        runCells(log),
        content.refRunIndex,
        row,
        content.pf,
        content.notes,
    });
}

} // namespace LogPrediction
