#pragma once

#include "prediction/AirOutlook.h"
#include "prediction/PredictionModel.h"
#include "prediction/PredictionSettings.h"
#include "prediction/RunCompletion.h"

class RaceLog;

// The predictor of a race log and its run completion, read from the log as it stands.
namespace LogPrediction {

// The log's run table as the prediction code reads it.
RunCells runCells(const RaceLog& log);

// The log's prediction for the present air; slot names the log in the caption of a log that
// has no page identifier.
PredictionModel::Outcome predict(const RaceLog& log, int slot, bool deltaVP);

// Runs the log's prediction and publishes it in the log: the last line made stands, or the
// one before when the model made none; a fault is told after the line.
void publish(RaceLog& log, bool deltaVP);

// A reading of the feed: its adjusted altitude and vapor pressure, as the feed writes them,
// become the log's inputs when the settings take the live weather, and the prediction is
// published afresh.
void takeReading(RaceLog& log, const QString& adjustedAltitude, const QString& vaporPressure,
                 const PredictionSettings& settings);

// Works out afresh how far the log's prediction can be trusted and keeps it in the log: the
// likely miss of its predictions on the day, and the track's drift over its runs of today.
void weigh(RaceLog& log, const QDate& today);

// The log's line of the next rounds' air, with its ET at each horizon, track offset included.
QString outlookLine(const RaceLog& log, const std::optional<AirOutlook::Forecast>& forecast);

// The completion of the run in row from the log's reference run.
RunCompletion::Outcome completeRun(const RaceLog& log, int row);

} // namespace LogPrediction
