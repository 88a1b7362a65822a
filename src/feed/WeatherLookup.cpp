#include "feed/WeatherLog.h"
#include "feed/WeatherLogFormat.h"

#include <QFile>

namespace {

// The first row of the wanted minute of the day; an empty record when there is none or a
// row's time cannot be read.
LoggedWeather scanForMinute(const QString& path, int wantedMinute) {
    WeatherLogLines lines(path);
    std::string_view line;
    while (lines.next(line)) {
        const auto second = readRowSecond(line);
        if (!second)
            break;
        if (*second / 60 == wantedMinute) {
            LoggedWeather row;
            int rowSecond = 0;
            return readWeatherLogRow(line, row, rowSecond) ? row : LoggedWeather{};
        }
    }
    return {};
}

} // namespace

LoggedWeather WeatherLog::find(const QDate& date, const QTime& time) {
    const QString dayPath = weatherLogPath(date);
    if (!time.isValid() || !QFile::exists(dayPath))
        return {};

    const Hold scanning(*this);
    return scanForMinute(dayPath, time.msecsSinceStartOfDay() / 60000);
}
