#pragma once

#include "prediction/PredictionCheck.h"
#include "racelog/PredictionTrust.h"

// How far the next prediction of a log is likely to be off, read from how far its latest
// predictions on the day were: the miss four predictions in five stayed within.
namespace LikelyMiss {

// How many of the latest predictions count: enough to steady the figure, few enough that it
// follows a car and a day that change.
inline constexpr int LatestPredictions = 20;
// Below this the figure says nothing.
inline constexpr int FewestPredictions = 3;

// The 80th percentile, by nearest rank, of the absolute errors of the last 20 predictions,
// all of them when fewer; nullopt with fewer than 3. onTheDay is in time order.
std::optional<PredictionTrust::Miss> of(const QList<PredictionCheck::Prediction>& onTheDay);

} // namespace LikelyMiss
