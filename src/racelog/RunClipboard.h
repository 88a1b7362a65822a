#pragma once

#include "racelog/RunTable.h"

#include <QList>
#include <QString>
#include <array>

// Cut, Copy and Paste of whole runs through the run clipboard that all race log windows share:
// columns 1 to 32 travel, the run number stays with its row and the ambient light (column 33)
// is never carried. The clipboard holds the runs last cut or copied, in their order.
namespace RunClipboard {

using Cells = std::array<QString, RunTable::ColumnCount>;
using Runs = QList<Cells>;

constexpr int FirstColumn = 1;
constexpr int LastColumn = 32;

// The runs firstRow to lastRow.
Runs copy(const RunTable& table, int firstRow, int lastRow);
// Copies them, then blanks what was copied.
Runs cut(RunTable& table, int firstRow, int lastRow);
// Writes the runs into row and the rows below it; the rows must be there.
void paste(RunTable& table, int row, const Runs& clipboard);

} // namespace RunClipboard
