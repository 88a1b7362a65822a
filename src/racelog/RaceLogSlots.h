#pragma once

#include <QString>

// The name a race log takes from its slot among the open logs: slot 0 is "Race Log# 1".
namespace RaceLogSlots {

// The caption of a log that has no page identifier: "Race Log# " and the slot plus 1.
QString numberedCaption(int slot);

} // namespace RaceLogSlots
