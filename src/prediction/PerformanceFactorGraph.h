#pragma once

#include "prediction/RunCells.h"

#include <QColor>
#include <QList>
#include <array>

class RaceLog;

// The performance factor graph finds the factor by eye: every run of a log is a point of ET
// against AA, and through each point runs a short line along which the model, with a trial
// factor, moves that run's time as the air changes. When the lines of the runs lie along one
// another, the factor fits the car. This is the arithmetic of that graph; the window draws it.
namespace PerformanceFactorGraph {

// One usable run: its time, its adjusted altitude and the model's slope through it, in feet
// of AA per second of ET.
struct Run {
    double et = 0;
    double aa = 0;
    double slope = 0;
};

// The slope through a run with the trial factor pf. A factor of 10 (no sensitivity) or an AA
// of exactly 1 leaves nothing to divide by: that is a ComputeFault.
double slope(double et, double aa, double pf);

// The runs of a table, row 1 on, with their slopes for pf. The list stops at the first row
// without a time or an AA, and at the first whose slope cannot be computed: the runs before
// it are the graph's.
QList<Run> usableRuns(const RunCells& cells, int lastRow, double pf);
// The same for the runs of a race log as it stands.
QList<Run> usableRuns(const RaceLog& log, double pf);

// The slopes again with another trial factor, run by run. A run whose slope cannot be
// computed throws ComputeFault; the runs before it have their new slopes already.
void reslope(QList<Run>& runs, double pf);

// How far the line through a run reaches either way, in feet of AA.
inline constexpr double HalfLength = 250.0;

// The two ends of the line through a run, HalfLength feet of AA above and below it, along its
// slope: x the ET, y the AA. A flat slope (a run at AA 0) cannot be drawn: ComputeFault.
struct Line {
    std::array<double, 2> x;
    std::array<double, 2> y;
};
Line lineThrough(const Run& run);

// The line colour of the graph's plot number plot (from 1): white, green, red, yellow, blue,
// cyan, magenta, and round again from the eighth.
QColor plotColour(int plot);

} // namespace PerformanceFactorGraph
