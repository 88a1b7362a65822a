#include "racelog/RaceLogSlots.h"

namespace RaceLogSlots {

QString numberedCaption(int slot) {
    return QStringLiteral("Race Log# ") + QString::number(slot + 1);
}

} // namespace RaceLogSlots
