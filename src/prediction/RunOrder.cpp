#include "prediction/RunOrder.h"

#include "core/DateText.h"
#include "core/NumberText.h"

#include <algorithm>
#include <optional>

namespace RunOrder {

namespace {

// The moment as the cells give it, in seconds of the calendar: the clock on the wall at the
// track, with no time zone to look up for every run.
std::optional<qint64> madeAt(const RunCells& cells, int row) {
    const auto time = DateText::parse(cells(row, RunColumn::Time));
    const auto date = DateText::parse(cells(row, RunColumn::Date));
    if (!time || !time->time || !date || !date->date)
        return std::nullopt;
    return date->date->toJulianDay() * 86400 + time->time->msecsSinceStartOfDay() / 1000;
}

// A run counts when it has a time at some mark and an adjusted altitude.
bool counts(const RunCells& cells, int row) {
    return farthestMark(cells, row) && NumberText::isNumeric(cells(row, RunColumn::AA));
}

} // namespace

QList<int> countingRunsInTimeOrder(const RunCells& cells, int rowCount) {
    struct Placed {
        std::optional<qint64> moment; // its own, or that of the run above it
        int row;
    };
    QList<Placed> runs;
    std::optional<qint64> above;
    for (int row = 1; row < rowCount; ++row) {
        if (const auto moment = madeAt(cells, row))
            above = moment;
        if (counts(cells, row))
            runs.append({above, row});
    }
    // Runs before the first dated one come first; equal moments keep the table's order.
    std::stable_sort(runs.begin(), runs.end(),
                     [](const Placed& a, const Placed& b) { return a.moment < b.moment; });
    QList<int> rows;
    rows.reserve(runs.size());
    for (const Placed& run : runs)
        rows.append(run.row);
    return rows;
}

} // namespace RunOrder
