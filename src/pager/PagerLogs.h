#pragma once

#include "pager/PagerComposer.h"

#include <QList>
#include <QTime>

class RaceLog;
class WeatherStation;

namespace PagerLogs {

// The open race logs as the pager sees them, slot by slot; an empty slot stays empty.
PagerComposer::PagerSlots pagerSlots(const QList<RaceLog*>& raceLogs);

// The periodic page as the station's open logs and weather make it at the time `now`: the
// published line of each log that takes part, the status line, and the mark of old weather
// while the feed is stale.
QString pageText(const WeatherStation& station, const QTime& now);

} // namespace PagerLogs
