#pragma once

#include <deque>

// The least and the greatest of the values a chart holds, kept up to date as values come and
// the oldest go, so that a chart can fit its axes to every new point without looking over all
// of its history again. Each value is taken and dropped at a constant cost on average.
class SlidingRange {
public:
    void push(double value);
    // Forgets the oldest value still held; nothing happens when none is held.
    void dropOldest();
    void clear();

    bool isEmpty() const { return first == next; }
    int size() const { return int(next - first); }
    // Only meaningful while a value is held.
    double min() const { return lows.front().value; }
    double max() const { return highs.front().value; }

private:
    // A value with the number of its arrival. Each queue holds the values that may still become
    // the least (lows) or the greatest (highs) once the older ones have gone, oldest first.
    struct Entry {
        double value;
        long long arrival;
    };
    std::deque<Entry> lows;
    std::deque<Entry> highs;
    long long first = 0; // arrival number of the oldest value held
    long long next = 0;  // arrival number of the next value
};
