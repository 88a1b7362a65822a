#pragma once

#include "racelog/PredictionLine.h"

#include <QObject>

// What a race log's prediction says now, for everyone who shows it or sends it on: the last
// line published, and whether it stands on weather that has stopped coming. The window shows
// it, the pager sends its piece of the page, and the crew's phones read it, all by its
// signals; none of them works it out again.
class PublishedPrediction : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // The last line published; empty before the first.
    const PredictionLine& line() const { return current; }
    // Told each time, a line that says nothing new included: a caption set by hand meanwhile
    // takes the prediction again.
    void publish(const PredictionLine& line);
    // The model could not make a prediction; the line before it stands.
    void fail();

    // How long the feed has brought no weather, in seconds; 0 while it is live.
    int staleSeconds() const { return stale; }
    bool isStale() const { return stale > 0; }
    // Told again each second while the feed stays silent.
    void markStale(int seconds);
    // The weather is live again, or no link is open.
    void markFresh();

signals:
    void published(const PredictionLine& line);
    void failed();
    // The seconds without weather, or 0 when the prediction is fresh again.
    void staleChanged(int seconds);

private:
    PredictionLine current;
    int stale = 0;
};
