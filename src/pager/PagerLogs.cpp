#include "pager/PagerLogs.h"

#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"

namespace PagerLogs {

PagerComposer::PagerSlots pagerSlots(const QList<RaceLog*>& raceLogs) {
    PagerComposer::PagerSlots entries;
    entries.reserve(raceLogs.size());
    for (const RaceLog* log : raceLogs) {
        if (log)
            entries.append(PagerComposer::PagerEntry{log->pagerPredictions(),
                                                     log->prediction().line().pagerMessage});
        else
            entries.append(std::nullopt);
    }
    return entries;
}

QString pageText(const WeatherStation& station, const QTime& now) {
    const PagerComposer::Weather weather =
        station.watchdog().isStale() ? PagerComposer::Weather::Old : PagerComposer::Weather::Live;
    return PagerComposer::pageText(now, pagerSlots(station.raceLogs().bySlot()),
                                   station.statusLine(), weather);
}

} // namespace PagerLogs
