#include "crew/CrewSnapshot.h"

#include "core/NumberText.h"
#include "feed/WeatherQuantities.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"
#include "racelog/RaceLogSlots.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace CrewSnapshot {

namespace {

QJsonObject status(const WeatherStation& station) {
    const FeedWatchdog& watchdog = station.watchdog();
    const QString text =
        watchdog.isStale() ? QStringLiteral("No weather for %1 s").arg(watchdog.secondsSinceLast())
                           : station.statusLine();
    return {{QStringLiteral("live"), !watchdog.isStale()}, {QStringLiteral("text"), text}};
}

QJsonArray quantities(const WeatherStation& station) {
    const ReadingTexts texts = readingTexts(station.reading());
    QJsonArray list;
    for (size_t i = 0; i < WeatherQuantities.size(); ++i)
        list.append(QJsonObject{{QStringLiteral("name"), WeatherQuantities[i].name},
                                {QStringLiteral("label"), WeatherQuantities[i].label},
                                {QStringLiteral("value"), texts[i]}});
    return list;
}

// A number of the line as the caption writes it; empty when the line has none.
QString numberText(const std::optional<double>& value, const QString& pattern) {
    return value ? NumberText::format(*value, pattern) : QString();
}

QString isoTime(const QDateTime& time) {
    return time.isValid() ? time.toString(Qt::ISODateWithMs) : QString();
}

QJsonObject log(const RaceLog& raceLog, const PublishTimes& published) {
    const RaceLogData& content = raceLog.content();
    const PublishedPrediction& prediction = raceLog.prediction();
    const PredictionLine& line = prediction.line();
    const QString name = content.pageIdentifier.isEmpty()
                             ? RaceLogSlots::numberedCaption(raceLog.slot())
                             : content.pageIdentifier;
    return {
        {QStringLiteral("slot"), raceLog.slot()},
        {QStringLiteral("name"), name},
        {QStringLiteral("predictedEt"), numberText(line.predictedEt, QStringLiteral("##.0000"))},
        {QStringLiteral("throttleStop"), numberText(line.throttleStop, QStringLiteral("##.0000"))},
        {QStringLiteral("targetEt"), content.targetET},
        {QStringLiteral("referenceRun"), content.refRunIndex},
        {QStringLiteral("aa"), content.aa},
        {QStringLiteral("vp"), content.vp},
        {QStringLiteral("line"), line.pagerMessage},
        {QStringLiteral("updated"), isoTime(published.value(&prediction))},
        {QStringLiteral("stale"), prediction.isStale()},
    };
}

QJsonArray logs(const WeatherStation& station, const PublishTimes& published) {
    QJsonArray list;
    for (const RaceLog* raceLog : station.raceLogs().bySlot()) {
        if (raceLog)
            list.append(log(*raceLog, published));
    }
    return list;
}

} // namespace

QByteArray json(const WeatherStation& station, const PublishTimes& published,
                const QDateTime& now) {
    const QJsonObject message{
        {QStringLiteral("status"), status(station)},
        {QStringLiteral("quantities"), quantities(station)},
        {QStringLiteral("logs"), logs(station, published)},
        {QStringLiteral("time"), isoTime(now)},
    };
    return QJsonDocument(message).toJson(QJsonDocument::Compact);
}

} // namespace CrewSnapshot
