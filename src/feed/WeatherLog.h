#pragma once

#include "feed/LoggedWeather.h"
#include "feed/WeatherQuantities.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QString>
#include <QTime>
#include <functional>

class OpenViews;
struct WeatherRecord;

// The daily weather log: one CSV file a day, YYYY-MM-DD.csv, in the program's data folder,
// one row for each line of the feed. Rows are read back to replay a day into the charts and
// to look up the weather of a run.

// A day as the log names its file: "2026-11-22".
QString dateStamp(const QDate& day = QDate::currentDate());

// The data folder, or the application folder when there is no data folder.
QString weatherLogFolder();
// The log file of a day in that folder.
QString weatherLogPath(const QDate& day);

// Told, every few hundred rows of a replay, how much of the file is read (0 to 1); the replay
// goes on while it returns true.
using ReplayProgress = std::function<bool(double fractionRead)>;

// Replays a log file into the open views, row by row, each row to the views in the replay
// order of the view table, and then tells them the replay has ended. Never touches the live
// weather. A malformed row, or a row whose Correction Factor cannot be worked out (worked out
// for every row, whether or not its view is open), ends the replay in silence; the rows
// before it stay sent. So does a progress that says stop: every view has then had the same
// rows. Returns the number of rows replayed.
int loadLoggedWeather(const QString& path, const OpenViews& views,
                      const ReplayProgress& progress = {});

// The daily log this instance writes: today's file, kept open from row to row, and whether a
// row is being written or a lookup is scanning, either of which holds the other back.
class WeatherLog {
public:
    // Appends a reading to today's file, as a row stamped with the clock time, and keeps the
    // file's path in the settings (value WeatherLog). Each row is one unbuffered write, so a
    // crash loses nothing else. Skipped, not queued, while a lookup is scanning; a write that
    // fails loses the row in silence.
    void writeRow(const ReadingTexts& reading);
    // The same at a given moment of the clock; the day of `now` names the file.
    void writeRow(const ReadingTexts& reading, const QDateTime& now);

    // The first row of the given day's file written in the same minute as `time`. Blocks
    // writing while it scans. An empty record when the file does not exist, when no row
    // matches, or when a row's time cannot be read (the scan stops there).
    LoggedWeather find(const QDate& date, const QTime& time);

    // A row is being written or a lookup is scanning.
    bool isBusy() const { return busy; }
    // Anything left half done by a command that was cut short no longer holds the log back.
    void release() { busy = false; }

    // Holds the log busy while it lives: a row being written, a lookup scanning.
    class Hold {
    public:
        explicit Hold(WeatherLog& log) : log(log) { log.busy = true; }
        ~Hold() { log.busy = false; }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        WeatherLog& log;
    };

private:
    bool busy = false;
    QDate day;    // the day of the last row written
    QString path; // and its file, as the settings know it
    QFile file;   // that file, open for appending from row to row
};
