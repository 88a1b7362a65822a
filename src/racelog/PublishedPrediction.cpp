#include "racelog/PublishedPrediction.h"

void PublishedPrediction::publish(const PredictionLine& line) {
    current = line;
    emit published(current);
}

void PublishedPrediction::fail() {
    emit failed();
}

void PublishedPrediction::markStale(int seconds) {
    stale = qMax(seconds, 1);
    emit staleChanged(stale);
}

void PublishedPrediction::markFresh() {
    if (stale == 0)
        return;
    stale = 0;
    emit staleChanged(0);
}
