#pragma once

#include <QtGlobal>

// What the weather feed needs of an open race log. The race log window offers it; the feed
// holds the open logs only through this face, so it never depends on a window.
class RaceLogDocument {
public:
    virtual ~RaceLogDocument() = default;
    // The live adjusted altitude (whole feet) and vapor pressure go into the log's
    // prediction inputs when automatic updates are on.
    virtual void takeLiveWeather(qint32 adjustedAltitude, float vaporPressure) = 0;
    // Recompute the log's prediction from its inputs.
    virtual void updatePredictions() = 0;
};
