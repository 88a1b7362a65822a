#pragma once

#include "core/Dialogs.h"
#include "prediction/RunCells.h"
#include "racelog/PredictionLine.h"

#include <QList>
#include <QString>
#include <optional>

// What a race log predicts for the present air: the ET its reference run would now make,
// the throttle stop timer for the target ET, and the change of vapor pressure. Everything
// is read as the window holds it, as text, at the moment of the call; nothing is kept.
namespace PredictionModel {

struct Inputs {
    RunCells cells;            // the log's own run table
    int referenceRow = 0;      // the reference run's list index plus 1; 0 when none is chosen
    QString adjustedAltitude;  // adjusted altitude now
    QString vaporPressure;     // vapor pressure now
    QString performanceFactor; // performance factor
    QString throttleStopRatio; // throttle stop ratio
    QString targetEt;          // the ET the team wants to run
    QString pageIdentifier;
    int slot = 0;         // the log's slot
    bool deltaVP = false; // report the change of vapor pressure
    // Seconds the crew adds to the model's ET for the track; text that is no number adds none.
    QString trackOffset;
};

// One publish of the prediction line: the log's piece of the page, its window caption and
// the numbers in them.
using Publication = PredictionLine;

// At most two publishes, in order: the ET alone, then the full line. A fault means the
// user is told the prediction failed; whatever was published before it stands.
struct Outcome {
    QList<Publication> publications;
    bool fault = false;
};

Outcome compute(const Inputs& inputs);

// The ET part of a prediction: the reference run's time and adjusted altitude, the altitude
// it is taken to, the model's sensitivity for the factor, and the time the model gives there.
struct EtPrediction {
    double referenceEt;
    double referenceAltitude;
    double altitude;
    double sensitivity;
    double predictedEt;
};

// The ET the run in referenceRow would make at adjustedAltitude with the performance factor:
// nullopt when the run has no time or altitude, or either text is not a number. A value that
// does not compute throws ComputeFault.
std::optional<EtPrediction> predictEt(const RunCells& cells, int referenceRow,
                                      const QString& adjustedAltitude,
                                      const QString& performanceFactor);

// The box a faulty prediction shows.
Dialogs::Message faultMessage();

} // namespace PredictionModel
