#include "racelog/RunWeather.h"

#include "core/NumberText.h"
#include "core/WeatherRecord.h"
#include "racelog/RunTable.h"

namespace {

QString text(float value) {
    return NumberText::General(value);
}
QString text(qint32 value) {
    return QString::number(value);
}

struct WeatherCell {
    int column;
    QString (*value)(const WeatherRecord&);
};

// clang-format off
constexpr WeatherCell WeatherCells[] = {
    {22, [](const WeatherRecord& w) { return text(w.ABP); }},
    {23, [](const WeatherRecord& w) { return text(w.Temp); }},
    {24, [](const WeatherRecord& w) { return text(w.RH); }},
    {19, [](const WeatherRecord& w) { return text(w.AA); }},
    {25, [](const WeatherRecord& w) { return text(w.AH); }},
    {26, [](const WeatherRecord& w) { return text(w.GR); }},
    {21, [](const WeatherRecord& w) { return text(w.VP); }},
    {27, [](const WeatherRecord& w) { return text(w.DP); }},
    {28, [](const WeatherRecord& w) { return text(w.ADR); }},
    {20, [](const WeatherRecord& w) { return text(w.DA); }},
    {29, [](const WeatherRecord& w) { return text(w.PA); }},
    {30, [](const WeatherRecord& w) { return text(w.WD); }},
    {31, [](const WeatherRecord& w) { return text(w.WS); }},
    {32, [](const WeatherRecord& w) { return text(w.WG); }},
    {33, [](const WeatherRecord& w) { return text(w.AL); }},
};
// clang-format on

} // namespace

void WriteRunWeather(RunTable& table, int row, const WeatherRecord& weather) {
    for (const WeatherCell& cell : WeatherCells)
        table.setCell(row, cell.column, cell.value(weather));
}
