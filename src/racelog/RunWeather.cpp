#include "racelog/RunWeather.h"

#include "core/ReadingText.h"
#include "core/WeatherRecord.h"
#include "racelog/RunTable.h"

namespace {

struct WeatherCell {
    int column;
    QString (*value)(const WeatherRecord&);
};

// clang-format off
constexpr WeatherCell WeatherCells[] = {
    {22, [](const WeatherRecord& w) { return valueText(w.ABP); }},
    {23, [](const WeatherRecord& w) { return valueText(w.Temp); }},
    {24, [](const WeatherRecord& w) { return valueText(w.RH); }},
    {19, [](const WeatherRecord& w) { return valueText(w.AA); }},
    {25, [](const WeatherRecord& w) { return valueText(w.AH); }},
    {26, [](const WeatherRecord& w) { return valueText(w.GR); }},
    {21, [](const WeatherRecord& w) { return valueText(w.VP); }},
    {27, [](const WeatherRecord& w) { return valueText(w.DP); }},
    {28, [](const WeatherRecord& w) { return valueText(w.ADR); }},
    {20, [](const WeatherRecord& w) { return valueText(w.DA); }},
    {29, [](const WeatherRecord& w) { return valueText(w.PA); }},
    {30, [](const WeatherRecord& w) { return valueText(w.WD); }},
    {31, [](const WeatherRecord& w) { return valueText(w.WS); }},
    {32, [](const WeatherRecord& w) { return valueText(w.WG); }},
    {33, [](const WeatherRecord& w) { return valueText(w.AL); }},
};
// clang-format on

} // namespace

void writeRunWeather(RunTable& table, int row, const WeatherRecord& weather) {
    for (const WeatherCell& cell : WeatherCells)
        table.setCell(row, cell.column, cell.value(weather));
}
