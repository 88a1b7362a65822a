#pragma once

#include <QList>
#include <QString>

struct WeatherRecord;

// A window that shows the live weather: it takes each reading of the feed, the points of a
// replayed weather log, and the order to forget what it has charted.
class LiveView {
public:
    virtual ~LiveView() = default;
    // A reading of the feed with the status line made of it; the view reads the clock for
    // the time of its points.
    virtual void showReading(const WeatherRecord& reading, const QString& statusLine) = 0;
    // A replayed row at the time of day t (a fraction of a day), as the values of the view's
    // series. A view that shows only the present is never given one.
    // It is charted but not drawn until the end of the replay.
    virtual void addLoggedPoint(float /*t*/, const QList<float>& /*values*/) {}
    // The replay has handed over its rows: the view draws them now, so a whole day costs it
    // one repaint.
    virtual void endOfReplay() {}
    // "Clear Views": the points charted so far go.
    virtual void clear() {}
};
