#pragma once

#include "prediction/RunCells.h"

#include <QStringView>
#include <array>
#include <vector>

// The quantities of the Trend Finder: a column of the run table each, laid on the chart run
// after run so that a trend between weather and times shows by eye. Nothing is computed.
namespace TrendColumns {

struct Quantity {
    QStringView entry; // as the quantity list shows it
    int column;        // of the run table
    QStringView plot;  // the name of its plot on the chart
};

inline constexpr std::array<Quantity, 13> Quantities{{
    {u"60 ft", 6, u"ft60"},
    {u"330 ft", 7, u"ft330"},
    {u"660 ft", 8, u"ft660"},
    {u"1000 ft", 10, u"ft1000"},
    {u"1320 ft", 12, u"ft1320"},
    {u"ABP", 22, u"ABP"},
    {u"Temp", 23, u"Temp"},
    {u"RH", 24, u"RH"},
    {u"AA", 19, u"AA"},
    {u"VP", 21, u"VP"},
    {u"DA", 20, u"DA"},
    {u"WS", 31, u"WS"},
    {u"Track Temp", 18, u"TrackTemp"},
}};

// The values of the column from run 1 on, by position, up to the first cell that holds no
// number: a gap ends the column, so a run without a value never shows and the runs after it
// wait until it is filled.
std::vector<float> values(const RunCells& cells, int lastRow, int column);

} // namespace TrendColumns
