#pragma once

#include "core/AppState.h"
#include "feed/LoggedWeather.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>
#include <functional>

// The daily weather log: one CSV file a day, YYYY-MM-DD.csv, in the program's data folder,
// one row for each line of the feed. Rows are read back to replay a day into the charts and
// to look up the weather of a run.

// A day as the log names its file: "2026-11-22".
QString DateStamp(const QDate& day = QDate::currentDate());

// The data folder, or the application folder when there is no data folder.
QString WeatherLogFolder();
// The log file of a day in that folder.
QString WeatherLogPath(const QDate& day);

// Appends the live weather to today's file, as a row stamped with the clock time, and keeps
// the file's path in the settings (value WeatherLog). Each row is one unbuffered write, so a
// crash loses nothing else. Skipped, not queued, while loggingWeather is set (a lookup is
// scanning); a write that fails loses the row in silence.
void LogWeather(AppState& state);
// The same at a given moment of the clock; the day of `now` names the file.
void LogWeather(AppState& state, const QDateTime& now);

// Told, every few hundred rows of a replay, how much of the file is read (0 to 1); the replay
// goes on while it returns true.
using ReplayProgress = std::function<bool(double fractionRead)>;

// Replays a log file into the open views, row by row, each row to the views in the replay
// order of the view table, and then tells them the replay has ended. Never touches the live
// weather. A malformed row, or a row whose Correction Factor cannot be worked out (worked out
// for every row, whether or not its view is open), ends the replay in silence; the rows
// before it stay sent. So does a progress that says stop: every view has then had the same
// rows. Returns the number of rows replayed.
int LoadLoggedWeather(const QString& path, const OpenViews& views,
                      const ReplayProgress& progress = {});

// The first row of the given day's file written in the same minute as `time`. Waits a little
// for a row being written, and blocks writing while it scans. An empty record when the file
// does not exist, when no row matches, or when a row's time cannot be read (the scan stops
// there).
LoggedWeather FindLoggedWeather(AppState& state, const QDate& date, const QTime& time);
