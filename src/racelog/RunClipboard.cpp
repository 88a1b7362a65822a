#include "racelog/RunClipboard.h"

namespace RunClipboard {

Runs copy(const RunTable& table, int firstRow, int lastRow) {
    Runs runs;
    for (int row = firstRow; row <= lastRow; ++row) {
        Cells& cells = runs.emplace_back();
        for (int column = FirstColumn; column <= LastColumn; ++column)
            cells[column] = table.cell(row, column);
    }
    return runs;
}

Runs cut(RunTable& table, int firstRow, int lastRow) {
    const Runs runs = copy(table, firstRow, lastRow);
    for (int row = firstRow; row <= lastRow; ++row) {
        for (int column = FirstColumn; column <= LastColumn; ++column)
            table.setCell(row, column, QString());
    }
    return runs;
}

void paste(RunTable& table, int row, const Runs& clipboard) {
    for (const Cells& cells : clipboard) {
        for (int column = FirstColumn; column <= LastColumn; ++column)
            table.setCell(row, column, cells[column]);
        ++row;
    }
}

} // namespace RunClipboard
