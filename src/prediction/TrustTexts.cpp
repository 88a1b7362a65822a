#include "prediction/TrustTexts.h"

#include "core/NumberText.h"

#include <cmath>

namespace TrustTexts {

namespace {

QString thousandths(double seconds) {
    return NumberText::format(seconds, QStringLiteral("0.000"));
}

} // namespace

QString likelyMiss(const std::optional<PredictionTrust::Miss>& miss) {
    if (!miss)
        return QStringLiteral("Likely miss: not enough runs");
    return QStringLiteral("Likely miss: %1 s (last %2 predictions)")
        .arg(plusMinus(miss))
        .arg(miss->predictions);
}

QString plusMinus(const std::optional<PredictionTrust::Miss>& miss) {
    return miss ? QStringLiteral("\u00b1") + thousandths(miss->seconds) : QString();
}

QString drift(const std::optional<PredictionTrust::Drift>& drift) {
    if (!drift)
        return {};
    return QStringLiteral("Track: %1 s %2 than the air says (last %3 runs today)")
        .arg(signedThousandths(drift->seconds),
             drift->seconds < 0 ? QStringLiteral("faster") : QStringLiteral("slower"))
        .arg(drift->runs);
}

QString signedThousandths(double seconds) {
    const double shown = std::round(seconds * 1000.0) / 1000.0;
    if (shown == 0)
        return QStringLiteral("0.000");
    return (shown > 0 ? QStringLiteral("+") : QString()) + thousandths(shown);
}

} // namespace TrustTexts
