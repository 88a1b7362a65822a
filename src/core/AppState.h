#pragma once

#include "core/OpenRaceLogs.h"
#include "core/OpenViews.h"
#include "core/WeatherRecord.h"

#include <QDate>
#include <QFile>
#include <QList>
#include <QString>
#include <array>

// The state that lives as long as the process: the role, the live weather, the open race
// logs and views, and the flags that guard the weather log. One AppState is made at start and
// handed to whoever needs it; nothing else holds process-wide state.
struct AppState {
    bool displayMode = false;     // a pure display fed over TCP
    bool automaticUpdates = true; // the feed overwrites the logs' AA and VP inputs
    bool deltaVP = false;         // predictions report the change of vapor pressure
    bool loggingWeather = false;  // the weather log file is open
    QDate weatherLogDay;          // the day of the last row logged
    QString weatherLogPath;       // and its file, as the settings know it
    QFile weatherLogFile;         // that file, open for appending from row to row

    OpenViews views;

    WeatherRecord currentWeather; // the live weather; written only by the feed parser
    QString statusLine;           // the status text of the last line handled

    OpenRaceLogs raceLogs;

    // The run clipboard shared by all race log windows, surviving their closing: the runs cut
    // or copied last, in order; element c of a run holds its column c (columns 1 to 32 take
    // part).
    QList<std::array<QString, 34>> runClipboard;
};
