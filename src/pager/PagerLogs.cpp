#include "pager/PagerLogs.h"

#include "core/RaceLogDocument.h"

namespace PagerLogs {

PagerComposer::PagerSlots pagerSlots(const QList<RaceLogDocument*>& raceLogs) {
    PagerComposer::PagerSlots entries;
    entries.reserve(raceLogs.size());
    for (const RaceLogDocument* log : raceLogs) {
        if (log)
            entries.append(PagerComposer::PagerEntry{log->pagerPredictions(), log->pagerMessage()});
        else
            entries.append(std::nullopt);
    }
    return entries;
}

} // namespace PagerLogs
