#pragma once

#include "racelog/PredictionTrust.h"

#include <QString>

// The words the side panel and the crew's phones put to a log's measures of trust.
namespace TrustTexts {

// "Likely miss: ±0.004 s (last 12 predictions)", or "Likely miss: not enough runs".
QString likelyMiss(const std::optional<PredictionTrust::Miss>& miss);

// The miss as the crew's phones put it after the ET: "±0.004"; empty when there is none.
QString plusMinus(const std::optional<PredictionTrust::Miss>& miss);

// "Track: +0.012 s slower than the air says (last 3 runs today)", "faster" for a track that
// runs quicker; empty when there is no drift to tell.
QString drift(const std::optional<PredictionTrust::Drift>& drift);

// Seconds to the thousandth with their sign: "+0.012", "-0.008", "0.000".
QString signedThousandths(double seconds);

} // namespace TrustTexts
