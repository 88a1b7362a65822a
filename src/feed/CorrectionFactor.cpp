#include "feed/CorrectionFactor.h"

#include <cmath>

namespace {

// A term as the factor keeps it: worked out in double, stored as a 32-bit float. nullopt when
// the arithmetic went wrong on the way or the float cannot hold the result.
std::optional<float> term(double value) {
    const float single = float(value);
    if (!std::isfinite(value) || !std::isfinite(single))
        return std::nullopt;
    return single;
}

} // namespace

std::optional<float> correctionFactor(float abp, float temp, float vp) {
    const double pressure = abp;
    const double dryPressure = pressure - double(vp);
    if (pressure == 0 || dryPressure == 0)
        return std::nullopt;
    const auto t = term(std::sqrt((double(temp) + 459.7) / 519.7));
    const auto p = term(29.92 / pressure);
    const auto h = term(pressure / dryPressure);
    if (!t || !p || !h)
        return std::nullopt;
    return term(*p * *t * *h);
}
