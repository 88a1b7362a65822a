#include "feed/WeatherLog.h"

#include "core/DateText.h"
#include "core/Registry.h"
#include "feed/DataFolder.h"
#include "feed/WeatherLogFormat.h"

#include <QCoreApplication>
#include <QFile>

QString DateStamp(const QDate& day) {
    return DateText::FileStamp(day);
}

QString WeatherLogFolder() {
    const QString folder = GetDataFolder(QStringLiteral("\\Tarnwick"));
    return folder == FolderNotValid ? QCoreApplication::applicationDirPath() : folder;
}

QString WeatherLogPath(const QDate& day) {
    return WeatherLogFolder() + u'/' + DateStamp(day) + QStringLiteral(".csv");
}

void LogWeather(AppState& state) {
    LogWeather(state, QDateTime::currentDateTime());
}

void LogWeather(AppState& state, const QDateTime& now) {
    if (state.bLoggingWeather)
        return;
    state.bLoggingWeather = true;

    // The day's file is found, and the settings learn of it, with the first row of the day;
    // the rows after it go straight to that file.
    if (now.date() != state.weatherLogDay) {
        state.weatherLogDay = now.date();
        state.weatherLogPath = WeatherLogPath(now.date());
        Registry::Set(QStringLiteral("SOFTWARE\\Zorvane\\"), QStringLiteral("WeatherLog"),
                      state.weatherLogPath);
    }
    // Opened and closed for this one row: after a crash the file holds every row but this.
    // Where the file cannot be opened, its folder may have gone since the first row: it is made
    // again for this row.
    QFile file(state.weatherLogPath);
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered)) {
        file.setFileName(WeatherLogPath(now.date()));
        file.open(QIODevice::Append | QIODevice::Unbuffered);
    }
    if (file.isOpen())
        file.write(WeatherLogRow(now.time(), state.CurrentWeather));

    state.bLoggingWeather = false;
}
