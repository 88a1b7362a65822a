#pragma once

#include "core/WeatherRecord.h"
#include "feed/RecentAir.h"
#include "racelog/OpenRaceLogs.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <optional>

class RaceLog;

// Keeps every open race log's measures of trust current. A log is weighed again whenever its
// runs or fields change or a change is taken back, never on a feed line, which changes
// neither; once a minute the last half hour of live air gives each log its outlook, which a
// change of the log also works out again from that minute's air. The first minute of a new
// day weighs every log again, since the track's drift counts only the day's own runs.
class TrustKeeper : public QObject {
    Q_OBJECT
public:
    explicit TrustKeeper(OpenRaceLogs& logs, QObject* parent = nullptr);

    // A whole live record came at the moment given: its adjusted altitude joins the recent air.
    void takeRecord(const WeatherRecord& record, const QDateTime& at);
    // The outlook of the recent air at now, to every open log.
    void updateOutlook(const QDateTime& now);
    // What tmrOutlook does each minute: the outlook, and on a new day every log weighed again.
    void minutePassed(const QDateTime& now);

    // Every minute, tmrOutlook.
    QTimer& outlookTimer() { return minute; }
    const RecentAir& recentAir() const { return air; }

private:
    void watch(int slot);
    void weigh(RaceLog& log, const QDate& today);

    OpenRaceLogs& logs;
    RecentAir air;
    std::optional<AirOutlook::Forecast> forecast; // of the last minute
    QTimer minute;
    QDate day; // of the last minute
};
