#include "racelog/RaceLogSlots.h"

namespace RaceLogSlots {

int takeFreeSlot(QList<RaceLogDocument*>& logs) {
    const qsizetype empty = logs.indexOf(nullptr);
    if (empty >= 0)
        return int(empty);
    logs.append(nullptr);
    return int(logs.size() - 1);
}

QString numberedCaption(int slot) {
    return QStringLiteral("Race Log# ") + QString::number(slot + 1);
}

} // namespace RaceLogSlots
