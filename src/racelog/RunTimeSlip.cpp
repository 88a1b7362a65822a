#include "racelog/RunTimeSlip.h"

#include "core/DateText.h"
#include "racelog/RunTable.h"

#include <iterator>

namespace {

enum Column { TimeColumn = 1, LaneColumn = 3 };

// The columns of the slip's timing figures, in their order; the delay box (5) lies between
// the reaction time and the 60 ft time and is not the receiver's.
constexpr int TimingColumns[] = {4, 6, 7, 8, 9, 10, 11, 12, 13};

} // namespace

void writeRunTimeSlip(RunTable& table, int row, const RunTimeSlip& slip) {
    table.setCell(row, TimeColumn, DateText::timeText(slip.time));
    if (slip.lane == QLatin1String("L"))
        table.setCell(row, LaneColumn, QStringLiteral("Left"));
    else if (slip.lane == QLatin1String("R"))
        table.setCell(row, LaneColumn, QStringLiteral("Right"));
    for (int i = 0; i < int(std::size(TimingColumns)); ++i)
        table.setCell(row, TimingColumns[i], slip.timing.value(i));
}
