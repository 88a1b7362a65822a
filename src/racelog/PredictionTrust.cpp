#include "racelog/PredictionTrust.h"

void PredictionTrust::setMeasures(const std::optional<Miss>& likelyMiss,
                                  const std::optional<Drift>& drift) {
    if (miss == likelyMiss && trackDrift == drift)
        return;
    miss = likelyMiss;
    trackDrift = drift;
    emit changed();
}

void PredictionTrust::setOutlook(const QString& line) {
    if (outlookLine == line)
        return;
    outlookLine = line;
    emit changed();
}
