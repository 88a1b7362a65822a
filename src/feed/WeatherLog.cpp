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

    // The settings learn of the day's file once; every row of the day after that leaves the
    // settings file alone.
    const QString path = WeatherLogPath(now.date());
    if (path != state.weatherLogStored) {
        Registry::Set(QStringLiteral("SOFTWARE\\Zorvane\\"), QStringLiteral("WeatherLog"), path);
        state.weatherLogStored = path;
    }
    // Opened and closed for this one row: after a crash the file holds every row but this.
    QFile file(path);
    if (file.open(QIODevice::Append))
        file.write(WeatherLogRow(now.time(), state.CurrentWeather));

    state.bLoggingWeather = false;
}
