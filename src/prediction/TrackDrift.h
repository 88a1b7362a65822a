#pragma once

#include "prediction/RunCells.h"
#include "racelog/PredictionTrust.h"

#include <QDate>
#include <QString>

// How far the track runs from what the air says today: the last runs of the day, each
// predicted from the log's reference run with the air it ran in, as the live prediction would
// have had them. A track that has lost grip, or a car that has lost power, shows as a miss of
// the same sign run after run, which no factor takes away.
namespace TrackDrift {

// How many of the day's latest runs count, and how few say nothing.
inline constexpr int LatestRuns = 3;
inline constexpr int FewestRuns = 2;

struct Inputs {
    RunCells cells;
    int rowCount = 0;     // with the header row, as the check counts it
    int referenceRow = 0; // 0 when the log has no reference run
    QString performanceFactor;
    QDate today;
};

// The mean of actual minus predicted over the last 3 counting runs dated today, the reference
// run itself left out; nullopt with fewer than 2.
std::optional<PredictionTrust::Drift> of(const Inputs& inputs);

} // namespace TrackDrift
