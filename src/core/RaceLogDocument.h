#pragma once

#include <QString>
#include <QtGlobal>

// What the weather feed and the pager need of an open race log. The race log window offers
// it; the feed and the pager hold the open logs only through this face, so they never depend
// on a window.
class RaceLogDocument {
public:
    virtual ~RaceLogDocument() = default;
    // The live adjusted altitude (whole feet) and vapor pressure go into the log's
    // prediction inputs when automatic updates are on.
    virtual void takeLiveWeather(qint32 adjustedAltitude, float vaporPressure) = 0;
    // Recompute the log's prediction from its inputs.
    virtual void updatePredictions() = 0;
    // The feed has brought no weather for `seconds` seconds: the prediction stands on old
    // weather and should say so. Told again each second while it lasts.
    virtual void predictionStale(int seconds) { Q_UNUSED(seconds); }
    // The weather is live again, or no link is open: the prediction is no longer marked.
    virtual void predictionFresh() {}
    // Whether the log's prediction goes into the periodic page. A log that predicts nothing
    // for the pager takes no part.
    virtual bool pagerPredictions() const { return false; }
    // The log's piece of the page: its last published prediction, empty before the first.
    virtual QString pagerMessage() const { return {}; }
};
