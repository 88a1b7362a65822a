#include "prediction/LikelyMiss.h"

#include <algorithm>
#include <cmath>

namespace LikelyMiss {

std::optional<PredictionTrust::Miss> of(const QList<PredictionCheck::Prediction>& onTheDay) {
    const qsizetype count = std::min<qsizetype>(onTheDay.size(), LatestPredictions);
    if (count < FewestPredictions)
        return std::nullopt;
    QList<double> misses;
    misses.reserve(count);
    for (qsizetype i = onTheDay.size() - count; i < onTheDay.size(); ++i)
        misses.append(std::fabs(onTheDay[i].error()));
    std::sort(misses.begin(), misses.end());
    // The nearest rank: the smallest miss that at least four in five are within.
    const qsizetype rank = (4 * count + 4) / 5;
    return PredictionTrust::Miss{misses[rank - 1], int(count)};
}

} // namespace LikelyMiss
