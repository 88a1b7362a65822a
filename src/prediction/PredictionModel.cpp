#include "prediction/PredictionModel.h"

#include "core/NumberText.h"
#include "prediction/ComputeFault.h"
#include "prediction/EtModel.h"
#include "prediction/TrustTexts.h"

#include <cmath>

namespace PredictionModel {

namespace {

using ComputeCheck::checked;
using ComputeCheck::converted;
using NumberText::format;
using NumberText::toDouble;

// The page piece and the caption name the log by its identifier, or else by its slot; the
// two texts differ in spelling and spacing, and both are kept so. Both are made for every open
// log on every feed line, so each is written in one piece.
Publication publication(const Inputs& in, const QString& sPredictionText) {
    const auto line = [&sPredictionText](QStringView name, QStringView number,
                                         QStringView separator) {
        QString text;
        text.reserve(name.size() + number.size() + separator.size() + sPredictionText.size());
        return text.append(name).append(number).append(separator).append(sPredictionText);
    };
    if (!in.pageIdentifier.isEmpty())
        return {line(in.pageIdentifier, {}, u"> "), line(in.pageIdentifier, {}, u"  ")};
    const QString slot = QString::number(in.slot + 1);
    return {line(u"RaceLog# ", slot, u"> "), line(u"Race Log# ", slot, u"  ")};
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

// The track offset after the ET it moved, so the crew sees the ET is not the air's alone:
// " (+0.012 trk)"; nothing while the offset is 0.
QString trackOffsetPiece(double offset) {
    if (offset == 0)
        return {};
    return QStringLiteral(" (") + TrustTexts::signedThousandths(offset) + QStringLiteral(" trk)");
}

// The change of vapor pressure since the reference run, when it is worth showing.
QString vaporPressurePiece(const Inputs& in) {
    if (!in.deltaVP)
        return {};
    const auto vpRef = toDouble(in.cells(in.referenceRow, RunColumn::VP));
    const auto vpNow = toDouble(in.vaporPressure);
    if (!vpNow || !vpRef)
        return {};
    const double delta = checked(*vpRef - *vpNow);
    if (!(std::fabs(delta) > 0.01))
        return {};
    // A negative delta takes its minus from the pattern.
    return (delta > 0 ? QStringLiteral(" VP+") : QStringLiteral(" VP")) +
           format(delta, QStringLiteral("#0.000"));
}

// The steps in their order; a missing number ends the call with what it has published.
void predict(const Inputs& in, Outcome& out) {
    const auto et = predictEt(in.cells, in.referenceRow, in.adjustedAltitude, in.performanceFactor);
    if (!et)
        return;
    const double offset = toDouble(in.trackOffset).value_or(0.0);
    const double predictedEt = checked(et->predictedEt + offset);
    QString sPredictionText = QStringLiteral("ET: ") +
                              format(predictedEt, QStringLiteral("##.0000")) +
                              trackOffsetPiece(offset);
    out.publications.append(publication(in, sPredictionText, predictedEt));

    const auto target = toDouble(in.targetEt);
    const auto timerRef = toDouble(in.cells(in.referenceRow, RunColumn::Timer2));
    const auto tsr = toDouble(in.throttleStopRatio);
    if (!target || !timerRef || !tsr)
        return;
    const double targetET = *target;
    // The track takes the offset from whatever the timer makes, so the timer aims that much
    // quicker than the target.
    const double TS = throttleStop(et->referenceEt, et->referenceAltitude, et->altitude,
                                   targetET - offset, *timerRef, *tsr, et->sensitivity);
    const bool showsSetting = TS > 0 && targetET > 0;
    if (showsSetting)
        sPredictionText += QStringLiteral("  TS @ ") + format(targetET, QStringLiteral("#0.00##")) +
                           QStringLiteral(": ") + format(TS, QStringLiteral("##.0000"));
    sPredictionText += vaporPressurePiece(in);
    Publication line = publication(in, sPredictionText, predictedEt);
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
    const auto aaRef = toDouble(cells(referenceRow, RunColumn::AA));
    const auto aaNow = toDouble(adjustedAltitude);
    const auto pf = toDouble(performanceFactor);
    if (!aaRef || !aaNow || !pf)
        return std::nullopt;

    EtPrediction et;
    et.referenceEt = converted(*referenceText);
    et.referenceAltitude = *aaRef;
    et.altitude = *aaNow;
    et.sensitivity = checked(EtModel::sensitivity(*pf));
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
