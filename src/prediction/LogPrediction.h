#pragma once

#include "prediction/PredictionModel.h"
#include "prediction/RunCompletion.h"

class RaceLog;

// The prediction and the run completion of a race log, read from the log as it stands.
namespace LogPrediction {

// The log's run table as the prediction code reads it.
RunCells runCells(const RaceLog& log);

// The log's prediction for the present air; slot names the log in the caption of a log that
// has no page identifier.
PredictionModel::Outcome predict(const RaceLog& log, int slot, bool deltaVP);

// The completion of the run in row from the log's reference run.
RunCompletion::Outcome completeRun(const RaceLog& log, int row);

} // namespace LogPrediction
