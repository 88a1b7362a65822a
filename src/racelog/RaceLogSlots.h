#pragma once

#include <QList>
#include <QString>

class RaceLogDocument;

// The slots of the open race logs. A window keeps its slot while it is open, and its slot
// number names it: slot 0 is "Race Log# 1".
namespace RaceLogSlots {

// The slot a new or opened log takes: the first empty one from 0 upward, or a new slot at the
// end when all are taken. The list grows by that slot; the caller fills it.
int takeFreeSlot(QList<RaceLogDocument*>& logs);

// The caption of a log that has no page identifier: "Race Log# " and the slot plus 1.
QString numberedCaption(int slot);

} // namespace RaceLogSlots
