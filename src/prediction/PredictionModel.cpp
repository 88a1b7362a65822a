#include "prediction/PredictionModel.h"

#include "core/NumberText.h"
#include "prediction/ComputeFault.h"
#include "prediction/EtModel.h"

#include <cmath>

namespace PredictionModel {

namespace {

using ComputeCheck::checked;
using ComputeCheck::converted;
using NumberText::format;
using NumberText::isNumeric;

// The page piece and the caption name the log by its identifier, or else by its slot; the
// two texts differ in spelling and spacing, and both are kept so.
Publication publication(const Inputs& in, const QString& sPredictionText) {
    if (in.pageIdentifier.isEmpty()) {
        const QString slot = QString::number(in.slot + 1);
        return {QStringLiteral("RaceLog# ") + slot + QStringLiteral("> ") + sPredictionText,
                QStringLiteral("Race Log# ") + slot + QStringLiteral("  ") + sPredictionText};
    }
    return {in.pageIdentifier + QStringLiteral("> ") + sPredictionText,
            in.pageIdentifier + QStringLiteral("  ") + sPredictionText};
}

Publication publication(const Inputs& in, const QString& sPredictionText, double predictedEt) {
    Publication line = publication(in, sPredictionText);
    line.predictedEt = predictedEt;
    return line;
}

// The throttle stop timer that makes the target: both times are taken to the model's zero
// altitude (the reference at its own AA, the target at today's), and the timer makes up
// the difference at the ratio's seconds per hundredth.
double throttleStop(double referenceET, double aaRef, double aaNow, double targetET,
                    double timerRef, double tsr, double sensitivity) {
    const double refAtZero = checked(EtModel::etAtAltitude(referenceET, aaRef, 0.0, sensitivity));
    const double targetAtZero = checked(EtModel::etAtAltitude(targetET, aaNow, 0.0, sensitivity));
    const double ratio = checked(tsr * 100.0);
    return checked(timerRef - (refAtZero - targetAtZero) * ratio);
}

// The change of vapor pressure since the reference run, when it is worth showing.
QString vaporPressurePiece(const Inputs& in) {
    const QString vpRefText = in.cells(in.referenceRow, RunColumn::VP);
    if (!in.deltaVP || !isNumeric(in.vaporPressure) || !isNumeric(vpRefText))
        return {};
    const double delta = checked(converted(vpRefText) - converted(in.vaporPressure));
    if (!(std::fabs(delta) > 0.01))
        return {};
    // A negative delta takes its minus from the pattern.
    return (delta > 0 ? QStringLiteral(" VP+") : QStringLiteral(" VP")) + format(delta, "#0.000");
}

// The steps in their order; a missing number ends the call with what it has published.
void predict(const Inputs& in, Outcome& out) {
    const auto et = predictEt(in.cells, in.referenceRow, in.adjustedAltitude, in.performanceFactor);
    if (!et)
        return;
    QString sPredictionText = QStringLiteral("ET: ") + format(et->predictedEt, "##.0000");
    out.publications.append(publication(in, sPredictionText, et->predictedEt));

    const QString timerRefText = in.cells(in.referenceRow, RunColumn::Timer2);
    if (!isNumeric(in.targetEt) || !isNumeric(timerRefText) || !isNumeric(in.throttleStopRatio))
        return;
    const double targetET = converted(in.targetEt);
    const double TS =
        throttleStop(et->referenceEt, et->referenceAltitude, et->altitude, targetET,
                     converted(timerRefText), converted(in.throttleStopRatio), et->sensitivity);
    const bool showsSetting = TS > 0 && targetET > 0;
    if (showsSetting)
        sPredictionText += QStringLiteral("  TS @ ") + format(targetET, "#0.00##") +
                           QStringLiteral(": ") + format(TS, "##.0000");
    sPredictionText += vaporPressurePiece(in);
    Publication line = publication(in, sPredictionText, et->predictedEt);
    if (showsSetting) {
        line.targetEt = targetET;
        line.throttleStop = TS;
    }
    out.publications.append(line);
}

} // namespace

std::optional<EtPrediction> predictEt(const RunCells& cells, int referenceRow,
                                      const QString& adjustedAltitude,
                                      const QString& performanceFactor) {
    const auto referenceText = referenceEtText(cells, referenceRow);
    if (!referenceText)
        return std::nullopt;
    const QString aaRefText = cells(referenceRow, RunColumn::AA);
    if (!isNumeric(aaRefText) || !isNumeric(adjustedAltitude) || !isNumeric(performanceFactor))
        return std::nullopt;

    EtPrediction et;
    et.referenceEt = converted(*referenceText);
    et.referenceAltitude = converted(aaRefText);
    et.altitude = converted(adjustedAltitude);
    et.sensitivity = checked(EtModel::sensitivity(converted(performanceFactor)));
    et.predictedEt = checked(
        EtModel::etAtAltitude(et.referenceEt, et.referenceAltitude, et.altitude, et.sensitivity));
    return et;
}

Outcome compute(const Inputs& inputs) {
    Outcome out;
    try {
        predict(inputs, out);
    } catch (const ComputeFault&) {
        out.fault = true;
    }
    return out;
}

Dialogs::Message faultMessage() {
    return {QStringLiteral("Failed to make a valid prediction!"), QStringLiteral("Predict"),
            Dialogs::Icon::Information, Dialogs::Buttons::Ok, Dialogs::Answer::Ok};
}

} // namespace PredictionModel
