#include "racelog/RunRows.h"

#include "core/DateText.h"
#include "racelog/RunTable.h"

namespace RunRows {

namespace {

// Shift Time, Dial-In and Timer 1, in the order they are carried over.
constexpr int CarriedColumns[] = {16, 17, 15};

} // namespace

int appendRun(RunTable& table, const QDateTime& now) {
    const int row = table.addRun();
    table.setCell(row, 1, DateText::timeText(now.time()));
    table.setCell(row, 2, DateText::runDateText(now.date()));
    for (const int column : CarriedColumns)
        table.setCell(row, column, table.cell(row - 1, column));
    table.paintRowBand(row);
    return row;
}

void deleteRun(RunTable& table, int row) {
    if (table.tableRows() < 3 && row < 2) {
        for (int column = 1; column < table.cols(); ++column)
            table.setCell(row, column, QString());
        return;
    }
    table.removeRun(row);
}

} // namespace RunRows
