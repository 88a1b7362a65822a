#include "prediction/LogPrediction.h"

#include "prediction/ComputeFault.h"
#include "prediction/LikelyMiss.h"
#include "prediction/PredictionCheck.h"
#include "prediction/TrackDrift.h"
#include "racelog/RaceLog.h"

namespace LogPrediction {

RunCells runCells(const RaceLog& log) {
    const RunTable& table = log.runs();
    return [&table](int row, int column) { return table.cell(row, column); };
}

PredictionModel::Outcome predict(const RaceLog& log, int slot, bool deltaVP) {
    const RaceLogData& content = log.content();
    return PredictionModel::compute({
        runCells(log),
        content.refRunIndex + 1,
        content.aa,
        content.vp,
        content.pf,
        content.tsr,
        content.targetET,
        content.pageIdentifier,
        slot,
        deltaVP,
        content.trackOffset,
    });
}

void publish(RaceLog& log, bool deltaVP) {
    const PredictionModel::Outcome outcome = predict(log, log.slot(), deltaVP);
    if (!outcome.publications.isEmpty())
        log.prediction().publish(outcome.publications.last());
    if (outcome.fault)
        log.prediction().fail();
}

void takeReading(RaceLog& log, const QString& adjustedAltitude, const QString& vaporPressure,
                 const PredictionSettings& settings) {
    if (settings.automaticUpdates)
        log.takeLiveWeather(adjustedAltitude, vaporPressure);
    publish(log, settings.deltaVP);
}

void weigh(RaceLog& log, const QDate& today) {
    const RaceLogData& content = log.content();
    const PredictionCheck::Report onTheDay =
        PredictionCheck::check(log, PredictionCheck::Mode::OnTheDay);
    const auto drift = TrackDrift::of(
        {runCells(log), log.runs().tableRows(), content.refRunIndex + 1, content.pf, today});
    log.trust().setMeasures(LikelyMiss::of(onTheDay.predictions), drift);
}

QString outlookLine(const RaceLog& log, const std::optional<AirOutlook::Forecast>& forecast) {
    AirOutlook::Ets ets;
    if (forecast) {
        const RaceLogData& content = log.content();
        for (std::size_t i = 0; i < ets.size(); ++i) {
            try {
                const auto et = PredictionModel::predictEt(
                    runCells(log), content.refRunIndex + 1,
                    QString::number(AirOutlook::shownFeet(forecast->aa[i])), content.pf);
                if (et)
                    ets[i] = et->predictedEt + log.trackOffset();
            } catch (const ComputeFault&) {
                // Air the model cannot work an ET out for shows without one.
            }
        }
    }
    return AirOutlook::line(forecast, ets);
}

RunCompletion::Outcome completeRun(const RaceLog& log, int row) {
    const RaceLogData& content = log.content();
    return RunCompletion::compute({
        runCells(log),
        content.refRunIndex,
        row,
        content.pf,
        content.notes,
    });
}

} // namespace LogPrediction
