#pragma once

#include "racelog/RaceLogData.h"

#include <QString>

// Race logs for the tests, filled the way the log window fills them.
namespace SampleLogs {

// A run with every column holding a value, each already in the form a load gives it, so a
// save and a reload bring back the same texts; `seed` makes the runs differ.
void fillRun(RunTable& grid, int row, int seed);

// Adds runs until the log has `runs` of them, each filled by fillRun, and sets every field.
void fillLog(RaceLogData& log, int runs);

// A log whose every run and field carries the number of its generation, so that a file can
// be told to hold exactly one whole save: generation g has 200 + g % 5 runs, notes
// "generation g" and PF g.
void fillGeneration(RaceLogData& log, int generation);
int runsOfGeneration(int generation);

} // namespace SampleLogs
