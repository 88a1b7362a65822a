#pragma once

#include "prediction/RunCells.h"

#include <QString>
#include <optional>
#include <vector>

// The throttle stop graph of a race log: every run as its ET taken to the model's common
// altitude against its throttle stop timer, a cloud per lane. The crew lays a line through the
// cloud with two cursors; the slope of that line is the log's throttle stop ratio.
namespace ThrottleStopPoints {

struct Point {
    double x = 0; // corrected ET
    double y = 0; // Timer 2
};

struct Lanes {
    std::vector<Point> left;
    std::vector<Point> right;
};

// The run's ET taken to adjusted altitude 0 with the log's sensitivity, so that runs made
// in different air line up.
double correctedEt(double et, double adjustedAltitude, double sensitivity);

// The points of the runs in rows 1 to lastRow. Only a lane reading exactly "Right" goes to
// the right list. The graph is all or nothing: nullopt when the log's PF or target ET is not
// numeric (a log with no target shows no graph) or when any run lacks a time, an AA or a
// timer, because a partial cloud would give a wrong slope without anyone noticing.
std::optional<Lanes> collect(const RunCells& cells, int lastRow, const QString& performanceFactor,
                             const QString& targetEt);

// The ratio of the line through two cursor points, timer seconds per hundredth of ET: the
// 0.01 undoes the 100 of the throttle stop formula. nullopt when the points are level (the
// ratio found before stays) or the line is upright (no ratio can be worked out).
std::optional<float> ratio(float x1, float y1, float x2, float y2);

// The least-squares line through points, timer on ET, as the crew would lay it by eye: its
// slope and intercept, the first and last ET of the points, and the root mean square of the
// timers' distances from the line, in timer seconds.
struct LineFit {
    double slope = 0;
    double intercept = 0;
    double firstX = 0;
    double lastX = 0;
    double rms = 0;
    double at(double x) const { return intercept + slope * x; }
};

// nullopt for fewer than two points, or points that all share one ET: no line is fixed.
std::optional<LineFit> fitLine(const std::vector<Point>& points);

// The window's caption with a ratio: the first 19 characters of the caption ("Throttle Stop
// Ratio"), ": " and the ratio's size in six decimals. Falling and rising lines alike give a
// positive figure, which is what the crew types into the log.
QString captionWithRatio(const QString& caption, float ratio);

// The ratio as the caption shows it, the text from its 21st character on, trimmed; nullopt
// while the caption holds no number.
std::optional<QString> ratioInCaption(const QString& caption);

} // namespace ThrottleStopPoints
