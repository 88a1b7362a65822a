#pragma once

#include "racelog/RunClipboard.h"
#include "racelog/RunTimeSlip.h"

#include <QDateTime>
#include <QString>
#include <optional>

class RaceLog;
struct WeatherRecord;

// The changes the run commands make to a race log, each one step of its undo stack under the
// name the Undo command shows.
namespace RunEdits {

// "Edit <caption>": the text of one cell.
void editCell(RaceLog& log, int row, int column, const QString& text);

// "New Run": a run stamped with the moment, added to the reference run list. Returns its row.
int newRun(RaceLog& log, const QDateTime& now);

// "Delete Run <n>" when the user said yes. Either way the reference run list loses its last
// item and run 1 becomes the reference run while the list has more than one item: on No the
// list is then one short of the runs until the next New Run or load.
void deleteRun(RaceLog& log, int row, bool confirmed);

// "Cut Run <n>" / "Cut <k> Runs": the runs firstRow to lastRow into the clipboard, blanked.
void cutRuns(RaceLog& log, int firstRow, int lastRow, RunClipboard::Runs& clipboard);
// "Paste Run" / "Paste <k> Runs": the clipboard's runs from row down. Runs beyond the last are
// added, with their numbers in the reference run list.
void pasteRuns(RaceLog& log, int row, const RunClipboard::Runs& clipboard);

// "Import Weather": a reading into the run's weather cells. A run without a readable time or
// date gets the moment given as well.
struct RunMoment {
    std::optional<QTime> time;
    std::optional<QDate> date;
};
void importWeather(RaceLog& log, int row, const WeatherRecord* weather, const RunMoment& stamp);

// "Get iCard && Weather": a time slip of the timing receiver's log and the logged weather of
// its minute into the run, as one step. Either may be absent: a search that finds no slip
// still leaves the run's date written by the stamp.
void importTimeSlip(RaceLog& log, int row, const RunTimeSlip* slip, const WeatherRecord* weather,
                    const RunMoment& stamp);

// "Complete Run <n>": the finish the run would have made, and the notes that keep what the
// finish cell held.
void completeRun(RaceLog& log, int row, int column, const QString& finish, const QString& notes);

} // namespace RunEdits
