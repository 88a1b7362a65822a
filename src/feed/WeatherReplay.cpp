#include "core/OpenViews.h"
#include "feed/CorrectionFactor.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherLogFormat.h"

namespace {

constexpr double SecondsPerDay = 86400.0;
// Rows between two reports of progress: often enough for a smooth bar and a quick Cancel,
// seldom enough to cost nothing beside the rows.
constexpr int RowsPerReport = 512;

int replayRows(WeatherLogLines& lines, const OpenViews& views, const ReplayProgress& progress) {
    LoggedWeather row;
    int replayed = 0;
    std::string_view line;
    while (lines.next(line)) {
        if (progress && replayed % RowsPerReport == 0 && replayed > 0 &&
            !progress(lines.fractionRead()))
            break;
        int second = 0;
        if (!readWeatherLogRow(line, row, second))
            break;
        // The factor is worked out for every row, so a row that cannot have one ends the
        // replay whether or not the factor's chart is open.
        const auto factor = correctionFactor(row.ABP, row.Temp, row.VP);
        if (!factor)
            break;
        const float t = float(second / SecondsPerDay);
        views.addLoggedRow(row, t, *factor);
        ++replayed;
    }
    return replayed;
}

} // namespace

int loadLoggedWeather(const QString& path, const OpenViews& views, const ReplayProgress& progress) {
    WeatherLogLines lines(path);
    const int replayed = replayRows(lines, views, progress);
    views.endOfReplay();
    return replayed;
}
