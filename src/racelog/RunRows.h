#pragma once

#include <QDateTime>

class RunTable;

// Adding and removing the runs of a run table, as the run commands of a race log window do.
namespace RunRows {

// Appends a run stamped with the moment it is made: its time and date, and the shift time,
// dial-in and timer 1 of the run before it, which a team rarely changes between runs. Every
// other cell starts blank; the weather comes later from a weather command. An even row gets
// the band. Returns the new row.
int appendRun(RunTable& table, const QDateTime& now);

// Removes a run and numbers the others again from 1. The only run is blanked instead, so a
// log always keeps run 1 with its number.
void deleteRun(RunTable& table, int row);

} // namespace RunRows
