#pragma once

#include "prediction/PredictionModel.h"
#include "prediction/RunCells.h"

#include <QList>
#include <QString>
#include <optional>

class RaceLog;

// How far a log's predictions can be trusted. Runs with a time and an adjusted altitude are
// predicted from other such runs taken as the reference run, by the prediction the log makes
// live and with the log's own performance factor, and each prediction is set against the time
// the run made. Only times at the same distance are compared: a quarter mile run never
// predicts an eighth.
namespace PredictionCheck {

// Which runs predict which. On the day, each run is predicted from the run made just before
// it, as the crew had it in hand when the car went up; from every other run, each run is
// predicted from all the others, which tells how well the factor fits the whole log.
enum class Mode { OnTheDay, EveryOther };

// The run table and the factor the check reads: rowCount counts the header row, so the runs
// are rows 1 to rowCount - 1.
struct Inputs {
    RunCells cells;
    int rowCount = 0;
    QString performanceFactor;
};

// One run predicted from another.
struct Prediction {
    int run = 0;       // the run predicted (its row)
    int reference = 0; // the run taken as the reference
    double actualEt = 0;
    PredictionModel::EtPrediction et{};
    // Actual minus predicted: positive when the run was slower than predicted.
    double error() const { return actualEt - et.predictedEt; }
};

// One run of the log: its prediction from the reference nearest in time, as the crew would
// have made it, and how far off it was on average from every reference.
struct RunCheck {
    Prediction nearest;
    double meanAbsoluteError = 0;
};

// The performance factor, to a hundredth, that makes the smallest mean absolute error over
// every prediction of the log, and that error.
struct BestFactor {
    double performanceFactor = 0;
    double meanAbsoluteError = 0;
};

struct Report {
    bool factorIsNumber = false; // nothing is predicted from a factor that is not a number
    // In run order from every other run, in time order on the day; a run with no reference is
    // left out.
    QList<RunCheck> runs;
    QList<Prediction> predictions; // grouped by run, in the order of runs
    double meanAbsoluteError = 0;  // over all predictions
    int worstRun = 0;              // the run with the largest mean error; 0 when none
    // Found whether the log's own factor is a number or not; nullopt when no two runs can be
    // set against each other, or no factor changes a prediction.
    std::optional<BestFactor> best;
};

Report check(const Inputs& inputs, Mode mode);
Report check(const RaceLog& log, Mode mode);

// The errors counted in bins of equal width for the picture of their spread: bin i holds the
// errors from start + i x width up to the next bin. The width is 1, 2 or 5 times a power of
// ten, at least a ten-thousandth of a second, chosen so about a dozen bins cover the errors.
struct Histogram {
    double start = 0;
    double width = 0;
    QList<int> counts;
};

Histogram histogram(const QList<Prediction>& predictions);

} // namespace PredictionCheck
