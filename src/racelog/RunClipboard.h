#pragma once

#include "racelog/RunTable.h"

#include <QString>
#include <array>

// Cut, Copy and Paste of a whole run through the run clipboard that all race log windows
// share: columns 1 to 32 travel, the run number stays with its row and the ambient light
// (column 33) is never carried.
namespace RunClipboard {

using Cells = std::array<QString, RunTable::ColumnCount>;

constexpr int FirstColumn = 1;
constexpr int LastColumn = 32;

void copy(const RunTable& table, int row, Cells& clipboard);
void cut(RunTable& table, int row, Cells& clipboard);
void paste(RunTable& table, int row, const Cells& clipboard);

} // namespace RunClipboard
