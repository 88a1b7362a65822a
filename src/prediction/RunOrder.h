#pragma once

#include "prediction/RunCells.h"

#include <QList>

// The runs of a log that can be set against each other, and the order the crew made them in.
namespace RunOrder {

// The counting runs among rows 1 to rowCount - 1, those with a time at some mark and an
// adjusted altitude, in the order they were made: by their date and time where both cells
// hold one. A run without them keeps its place after the run above it in the table, the one
// it was entered after.
QList<int> countingRunsInTimeOrder(const RunCells& cells, int rowCount);

} // namespace RunOrder
