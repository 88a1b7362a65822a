#include "core/ViewTable.h"

#include "core/SettingKeys.h"

#include <algorithm>

namespace ViewTable {

namespace {

QList<float> none(const WeatherRecord&, float) {
    return {};
}

// Every view in the table whose rank from rankOf is above 0, by that rank.
QList<View> rankedBy(int Entry::*rank) {
    QList<const Entry*> ranked;
    for (const Entry& view : Views) {
        if (view.*rank > 0)
            ranked << &view;
    }
    std::sort(ranked.begin(), ranked.end(),
              [rank](const Entry* a, const Entry* b) { return a->*rank < b->*rank; });
    QList<View> order;
    for (const Entry* view : ranked)
        order << view->view;
    return order;
}

} // namespace

// clang-format off
const std::array<Entry, Count> Views{{
    {View::RosePlot,      u"frmRosePlot",      u"Rose Plot",                    u"WindDirectionSpeed", u"miWindPlot",       9,
     [](const WeatherRecord& w, float) { return QList<float>{float(w.WD), float(w.WS)}; }, 7},
    {View::WindDirection, u"frmWindDirection", u"Wind Direction",               u"WindDirection",      u"miWindDirection",  0, none, 0},
    {View::WindSpeed,     u"frmWindSpeed",     u"Wind Speed",                   u"WindSpeed",          u"miWindSpeed",      1,
     [](const WeatherRecord& w, float) { return QList<float>{float(w.WS)}; }, 1},
    {View::Weather,       u"frmWeather",       u"Weather Information",          u"Weather",            u"miWeather",        0, none, 0},
    {View::VaporPressure, u"frmVP",            u"Vapor Pressure",               u"VaporPressure",      u"miVaporPressure",  7,
     [](const WeatherRecord& w, float) { return QList<float>{w.VP, w.Temp}; }, 5},
    {View::AADA,          u"frmAADA",          u"Adjusted Altitude",            u"AADA",               u"miAADA",           8,
     [](const WeatherRecord& w, float) { return QList<float>{float(w.AA), float(w.DA)}; }, 6},
    {View::ABP,           u"frmABP",           u"Absolute Barometric Pressure", u"ABP",                u"miABP",            2,
     [](const WeatherRecord& w, float) { return QList<float>{w.ABP}; }, 2},
    {View::RH,            u"frmRH",            u"Relative Humidity",            u"RH",                 u"miRH",             3,
     [](const WeatherRecord& w, float) { return QList<float>{w.RH, w.Temp}; }, 3},
    {View::GR,            u"frmGR",            u"Grains per lb",                u"GR",                 u"miGR",             6,
     [](const WeatherRecord& w, float) { return QList<float>{float(w.GR)}; }, 4},
    {View::CF,            u"frmCF",            u"Correction Factor",            u"CF",                 u"miCF",             4,
     [](const WeatherRecord&, float factor) { return QList<float>{factor}; }, 9},
    {View::ADR,           u"frmADR",           u"Air Density Ratio",            u"ADR",                u"miADR",            5,
     [](const WeatherRecord& w, float) { return QList<float>{w.ADR}; }, 8},
}};
// clang-format on

QString placementKey(View view) {
    return SettingKeys::placementPath(entry(view).branch);
}

const Entry* findByCommand(QStringView command) {
    const auto found = std::find_if(Views.begin(), Views.end(), [command](const Entry& view) {
        return view.command == command;
    });
    return found == Views.end() ? nullptr : &*found;
}

QList<View> readingOrder() {
    QList<View> order;
    for (const Entry& view : Views)
        order << view.view;
    return order;
}

QList<View> replayOrder() {
    return rankedBy(&Entry::replayRank);
}

QList<View> clearOrder() {
    return rankedBy(&Entry::clearRank);
}

} // namespace ViewTable
