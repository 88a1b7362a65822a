#include "charts/SlidingRange.h"

void SlidingRange::push(double value) {
    // A value that is older and no lower than the new one can never be the least again; the
    // same holds for the greatest the other way round.
    while (!lows.empty() && lows.back().value >= value)
        lows.pop_back();
    lows.push_back({value, next});
    while (!highs.empty() && highs.back().value <= value)
        highs.pop_back();
    highs.push_back({value, next});
    ++next;
}

void SlidingRange::dropOldest() {
    if (isEmpty())
        return;
    if (lows.front().arrival == first)
        lows.pop_front();
    if (highs.front().arrival == first)
        highs.pop_front();
    ++first;
}

void SlidingRange::clear() {
    lows.clear();
    highs.clear();
    first = next;
}
