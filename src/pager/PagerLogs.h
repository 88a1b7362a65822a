#pragma once

#include "pager/PagerComposer.h"

#include <QList>

class RaceLogDocument;

namespace PagerLogs {

// The open race logs as the pager sees them, slot by slot; an empty slot stays empty.
PagerComposer::PagerSlots pagerSlots(const QList<RaceLogDocument*>& raceLogs);

} // namespace PagerLogs
