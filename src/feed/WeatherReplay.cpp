#include "feed/CorrectionFactor.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherLogFormat.h"

namespace {

constexpr double SecondsPerDay = 86400.0;

// One row to every open view, in the fixed order of the views.
void sendRow(const LoggedWeather& row, float t, float correctionFactor, const ViewFlags& views,
             WeatherReplaySink& sink) {
    if (views.bWindSpeedOpen)
        sink.windSpeed(t, row.WS);
    if (views.bABPOpen)
        sink.abp(t, row.ABP);
    if (views.bRHOpen)
        sink.rh(t, row.RH, row.Temp);
    if (views.bCFOpen)
        sink.cf(t, correctionFactor);
    if (views.bADROpen)
        sink.adr(t, row.ADR);
    if (views.bGROpen)
        sink.gr(t, row.GR);
    if (views.bVPOpen)
        sink.vp(t, row.VP, row.Temp);
    if (views.bAADAOpen)
        sink.aada(t, row.AA, row.DA);
    if (views.bRosePlotOpen)
        sink.rosePlot(row.WD, row.WS);
}

} // namespace

int LoadLoggedWeather(const QString& path, const ViewFlags& views, WeatherReplaySink& sink) {
    WeatherLogLines lines(path);
    LoggedWeather row;
    int replayed = 0;
    std::string_view line;
    while (lines.next(line)) {
        int second = 0;
        if (!ReadWeatherLogRow(line, row, second))
            break;
        // The factor is worked out for every row, so a row that cannot have one ends the
        // replay whether or not the factor's chart is open.
        const auto correctionFactor = CorrectionFactor(row.ABP, row.Temp, row.VP);
        if (!correctionFactor)
            break;
        const float t = float(second / SecondsPerDay);
        sendRow(row, t, *correctionFactor, views, sink);
        ++replayed;
    }
    return replayed;
}
