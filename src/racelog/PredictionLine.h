#pragma once

#include <QString>
#include <optional>

// One prediction of a race log as it is published: the log's piece of the page, its window
// caption, and the numbers the line was made of. The ET alone comes first; the throttle stop
// setting joins it when the log has a target ET, a timer on its reference run and a ratio.
struct PredictionLine {
    QString pagerMessage;
    QString caption;
    std::optional<double> predictedEt;
    std::optional<double> targetEt;     // with throttleStop, when the line shows a setting
    std::optional<double> throttleStop; // the throttle stop timer that makes the target

    bool operator==(const PredictionLine&) const = default;
};
