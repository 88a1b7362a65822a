#include "charts/StripCharts.h"

#include <algorithm>
#include <cmath>

namespace StripCharts {

namespace {

using View = ViewTable::View;

constexpr Axis MorningOn{0.3, 1.0, 0.2, 0.1};
constexpr Axis EarlyMorningOn{0.2, 1.0, 0.2, 0.1};
constexpr Axis OneToTen{1, 10, 1, 0.5};
constexpr Axis ZeroToOne{0, 1, 0.2, 0.1};
constexpr Axis Altitude{1000, 2000, 200, 100};
constexpr Axis DensityAltitude{2000, 3000, 200, 100};

const QColor Yellow(255, 255, 0);
const QColor Red(255, 0, 0);
const QColor Green(0, 255, 0);

Cursor cursor(QStringView name, QStringView text, double x, double y, QColor color = Yellow) {
    return {name, text, x, y, color};
}

} // namespace

// clang-format off
const std::array<Chart, 8> Charts{{
    {View::WindSpeed, u"windSpeed", MorningOn, {
        {u"WS", QColor(27, 250, 239), OneToTen, cursor(u"miWSCursor", u"WS Cursor", 0.37, 1.9)},
     }, false},
    {View::VaporPressure, u"graphVP", EarlyMorningOn, {
        {u"VP", QColor(0, 202, 202), ZeroToOne, cursor(u"miVPCursor", u"VP Cursor", 0.37, 1.9)},
        {u"TEMP", Red, ZeroToOne, cursor(u"miTempCursor", u"Temp Cursor", 0.44, 2.8, Red)},
     }, true},
    {View::AADA, u"graphAA", EarlyMorningOn, {
        {u"AA", Yellow, Altitude, cursor(u"miAACursor", u"AA Cursor", 0.28, 0.1)},
        {u"DA", Green, DensityAltitude, cursor(u"miDACursor", u"DA Cursor", 0.36, 1200, Green)},
     }, true},
    {View::ABP, u"graphABP", MorningOn, {
        {u"ABP", QColor(255, 0, 255), OneToTen, cursor(u"miABPCursor", u"ABP Cursor", 0.37, 1.9)},
     }, false},
    {View::GR, u"graphGR", MorningOn, {
        {u"GR", QColor(0, 255, 255), OneToTen, cursor(u"miGRCursor", u"GR Cursor", 0.37, 1.9)},
     }, false},
    // The temperature of this chart has no cursor of its own, unlike the one of the vapor
    // pressure chart.
    {View::RH, u"graphRH", EarlyMorningOn, {
        {u"RH", Green, OneToTen, cursor(u"miRHCursor", u"RH Cursor", 0.37, 1.9)},
        {u"TEMP", Red, OneToTen, std::nullopt},
     }, false},
    {View::CF, u"Graph", MorningOn, {
        {u"CF", QColor(217, 38, 199), OneToTen, cursor(u"miCFCursor", u"CF Cursor", 0.37, 1.9)},
     }, false},
    {View::ADR, u"Graph", MorningOn, {
        {u"ADR", QColor(255, 0, 128), OneToTen, cursor(u"miADRCursor", u"ADR Cursor", 0.37, 1.9)},
     }, false},
}};
// clang-format on

const Chart* find(ViewTable::View view) {
    const auto found = std::find_if(Charts.begin(), Charts.end(),
                                    [view](const Chart& chart) { return chart.view == view; });
    return found == Charts.end() ? nullptr : &*found;
}

MenuEntry centerEntry(const Chart& chart) {
    if (chart.pluralCursors)
        return {QStringLiteral("miCenterCursors"), QStringLiteral("Center Cursors")};
    return {QStringLiteral("miCenterCursor"), QStringLiteral("Center Cursor")};
}

MenuEntry removeEntry(const Chart& chart) {
    if (chart.pluralCursors)
        return {QStringLiteral("miRemoveCursors"), QStringLiteral("Remove Cursors")};
    return {QStringLiteral("miRemoveCursor"), QStringLiteral("Remove Cursor")};
}

float dayFraction(const QTime& time) {
    return float(double(time.msecsSinceStartOfDay()) / 86400000.0);
}

QString timeOfDayText(double dayFraction) {
    if (!std::isfinite(dayFraction))
        return {};
    const double withinDay = dayFraction - std::floor(dayFraction);
    // Whole seconds, as the label shows them; a value just short of midnight reads 12:00:00a.
    const qint64 seconds = qint64(std::llround(withinDay * 86400.0)) % 86400;
    const int hour = int(seconds / 3600);
    const int minute = int(seconds / 60 % 60);
    const int second = int(seconds % 60);
    const int clockHour = hour % 12 == 0 ? 12 : hour % 12;
    const auto twoDigits = [](int value) { return QString::number(value).rightJustified(2, u'0'); };
    return QString::number(clockHour) + u':' + twoDigits(minute) + u':' + twoDigits(second) +
           (hour < 12 ? u'a' : u'p');
}

} // namespace StripCharts
