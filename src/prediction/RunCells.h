#pragma once

#include <QString>
#include <functional>
#include <optional>

// A race log's run table as the prediction code reads it: the text of a cell by row and
// column. Row 0 is the header row of labels, the runs start at row 1, so a reference run
// "not chosen" (list index -1) lands on the labels and every numeric test fails.
using RunCells = std::function<QString(int row, int column)>;

// The columns of the run table that the predictions read and write.
namespace RunColumn {
enum : int {
    Time = 1, // when the run was made, with Date
    Date = 2,
    Ft60 = 6,
    Ft330 = 7,
    Ft660 = 8,
    Ft1000 = 10,
    Ft1320 = 12,
    Timer2 = 14,
    AA = 19,
    VP = 21,
};
} // namespace RunColumn

// The farthest timing mark the run has: the column of the first numeric cell of 1320 ft,
// 1000 ft, 660 ft, 330 ft and 60 ft, in that order; nullopt when none is.
std::optional<int> farthestMark(const RunCells& cells, int row);

// The run's time at its farthest timing mark: its text, or nullopt when it has none.
std::optional<QString> referenceEtText(const RunCells& cells, int row);
