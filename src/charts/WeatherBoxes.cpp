#include "charts/WeatherBoxes.h"

#include "feed/WeatherQuantities.h"

namespace WeatherBoxes {

// clang-format off
const std::array<Box, Count> Boxes{{
    {u"ABP",  u"Absolute Barometric Pressure",      [](const WeatherRecord& w) { return valueText(w.ABP); }},
    {u"AA",   u"Adjusted Altitude",                 [](const WeatherRecord& w) { return valueText(w.AA); }},
    {u"WD",   u"Wind Direction",                    [](const WeatherRecord& w) { return valueText(w.WD); }},
    {u"TEMP", u"Temperature in Degrees Fahrenheit", [](const WeatherRecord& w) { return valueText(w.Temp); }},
    {u"RH",   u"Relative Humidity",                 [](const WeatherRecord& w) { return valueText(w.RH); }},
    {u"AH",   u"Absolute Humidity",                 [](const WeatherRecord& w) { return valueText(w.AH); }},
    {u"GR",   u"Grains per lb",                     [](const WeatherRecord& w) { return valueText(w.GR); }},
    {u"DA",   u"Density Altitude",                  [](const WeatherRecord& w) { return valueText(w.DA); }},
    {u"VP",   u"Vapor Pressure",                    [](const WeatherRecord& w) { return valueText(w.VP); }},
    {u"PA",   u"Pressure Altitude",                 [](const WeatherRecord& w) { return valueText(w.PA); }},
    {u"ADR",  u"Air Density Ratio",                 [](const WeatherRecord& w) { return valueText(w.ADR); }},
    {u"WS",   u"Wind Speed",                        [](const WeatherRecord& w) { return valueText(w.WS); }},
    {u"WG",   u"Wind Gust",                         [](const WeatherRecord& w) { return valueText(w.WG); }},
    {u"AL",   u"Ambient Light",                     [](const WeatherRecord& w) { return valueText(w.AL); }},
    {u"DP",   u"Dew Point",                         [](const WeatherRecord& w) { return valueText(w.DP); }},
}};

const std::array<QStringView, Count> FillOrder{
    u"AA", u"ABP", u"ADR", u"AH", u"AL", u"DA", u"DP", u"GR",
    u"PA", u"RH",  u"TEMP", u"VP", u"WD", u"WG", u"WS",
};
// clang-format on

const Box& find(QStringView name) {
    for (const Box& box : Boxes) {
        if (box.name == name)
            return box;
    }
    Q_ASSERT_X(false, "WeatherBoxes::find", "a name outside the table");
    return Boxes.front();
}

QString boxName(const Box& box) {
    return QStringLiteral("txt") + box.name.toString();
}

QString labelName(const Box& box) {
    return QStringLiteral("lbl") + box.name.toString();
}

QString labelText(const Box& box) {
    return box.name.toString() + u':';
}

} // namespace WeatherBoxes
