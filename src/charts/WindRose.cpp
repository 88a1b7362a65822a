#include "charts/WindRose.h"

#include "core/NumberText.h"

#include <algorithm>
#include <limits>

WindRose::WindRose() {
    std::fill(widths.begin(), widths.begin() + SectorCount, qint16(360 / SectorCount));
}

int WindRose::plotAngle(int direction) {
    int angle = 90 - direction;
    if (angle > 360)
        angle -= 360;
    if (angle < 0)
        angle += 360;
    return angle;
}

int WindRose::sectorOf(int angle) {
    // Integer division towards zero, as the sectors were always counted.
    return angle / 12;
}

bool WindRose::addWind(float value, qint16 direction) {
    // The angle is a 16-bit number from its first step: the far end of the range overflows.
    if (90 - int(direction) > std::numeric_limits<qint16>::max())
        return false;
    const int angle = plotAngle(direction);
    last = qint16(angle);
    const int sector = sectorOf(angle);
    if (sector < 0 || sector >= int(sums.size()))
        return false;
    const std::optional<qint32> sum =
        NumberText::roundToInt32(double(sums[std::size_t(sector)]) + double(value));
    if (!sum)
        return false;
    sums[std::size_t(sector)] = *sum;
    return true;
}

float WindRose::sumAt(qint16 angle) const {
    const int sector = sectorOf(angle);
    if (sector < 0 || sector >= int(sums.size()))
        return 0;
    return float(sums[std::size_t(sector)]);
}

void WindRose::clearSums() {
    std::fill(sums.begin(), sums.begin() + SectorCount, 0);
}

qint32 WindRose::maximum() const {
    return std::max(0, *std::max_element(sums.begin(), sums.begin() + SectorCount));
}
