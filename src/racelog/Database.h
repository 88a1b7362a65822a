#pragma once

#include "racelog/RaceLogData.h"

#include <QString>

// Reading and writing race log files (.trl). Every routine opens the file, does its work and
// closes it again; none holds the file afterwards.
namespace Database {

// Makes the file with both tables when no file of that path exists; an existing file is left
// alone. False when the file cannot be made.
bool createLogDatabase(const QString& path);

// Replace all runs of the Log table with the runs of the log, numbered from 1.
bool saveLogTable(const QString& path, const RaceLogData& log);
// Write the log's fields into the one row of Properties, adding it on the first save.
bool savePropertiesTable(const QString& path, const RaceLogData& log);

enum class SaveResult { Ok, CreateFailed, LogTableFailed, PropertiesFailed };

// The save of a whole log: makes the file if needed, then rewrites the runs and the log's
// fields in one transaction. A failure or a crash at any point leaves the file as it was
// before or as it is after, never half written. The result names the step that failed.
SaveResult saveRaceLog(const QString& path, const RaceLogData& log);

// What the user is told when a save fails.
struct SaveFailureMessage {
    QString text;
    QString title;
};
SaveFailureMessage saveFailureMessage(SaveResult result);

// What a load made of a file. A value the file holds that does not fit its place (a run time
// that is no time, a word in a number) leaves its cell or field empty or as it was and is
// counted, so the user can be told and the original kept before it is saved over.
struct LoadResult {
    enum class Status { Loaded, NotRaceLog, MissingColumn };
    Status status = Status::NotRaceLog;
    QString missingColumn; // "Log.RT": the table and the column the file lacks
    int unreadValues = 0;

    explicit operator bool() const { return status == Status::Loaded; }
};

// Reads a race log file into a new log: the runs into the run table (one row per stored run,
// numbered from 1, with the reference run list to match) and the log's fields. A file that
// is missing, is no race log or lacks a column leaves the log as it was.
LoadResult loadLog(const QString& path, RaceLogData& log);

// The copy of the original a first save over a file that did not load whole keeps beside it:
// "race.trl" keeps "race.bak.trl".
QString backupPath(const QString& path);

} // namespace Database
