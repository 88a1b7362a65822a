#pragma once

#include "core/ViewTable.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringView>
#include <QTime>
#include <array>
#include <optional>

// The eight strip charts as data: each a chart of one or two quantities against the time of
// day, which differ only in the row of this table that configures them.
namespace StripCharts {

// Every chart keeps this many points of each quantity; the oldest goes when one more comes.
constexpr int History = 5000;

// An axis as the chart starts: its limits and its tick spacing. From the first point on the
// chart scales itself.
struct Axis {
    double lower;
    double upper;
    double majorTick;
    double minorTick;
};

// The line across the chart that the user can show and drag, to read off one quantity by eye.
struct Cursor {
    QStringView menuName;
    QStringView menuText;
    double x;
    double y;
    QColor color;
};

// One quantity of a chart: its line and its value axis share the name.
struct Plot {
    QStringView name;
    QColor color;
    Axis axis;
    std::optional<Cursor> cursor;
};

struct Chart {
    ViewTable::View view;
    QStringView control; // the name of the chart control inside the window
    Axis time;
    QList<Plot> plots;
    // Whether the entries that center and remove the cursors speak of several.
    bool pluralCursors;
};

// The name of the time axis that all the plots of a chart share.
inline constexpr QStringView TimeAxis = u"time";

extern const std::array<Chart, 8> Charts;

// The chart of a view; nullptr for a view that is no strip chart.
const Chart* find(ViewTable::View view);

// The entries that center and remove the cursors: "Center Cursor" or "Center Cursors", with
// their names.
struct MenuEntry {
    QString name;
    QString text;
};
MenuEntry centerEntry(const Chart& chart);
MenuEntry removeEntry(const Chart& chart);

// The time of day as the chart's time axis counts it: a fraction of a day, in single
// precision as the points are kept.
float dayFraction(const QTime& time);

// A point of the time axis as its labels read, in the 12-hour form "2:05:09p". The whole days
// of a value that carries a date are left out.
QString timeOfDayText(double dayFraction);

} // namespace StripCharts
