#pragma once

#include <QString>

// The crew view's settings as the server starts from them.
namespace CrewSettings {

// True only for a stored "1".
bool enabled();
QString address();
// The stored port when it is a whole number from 1 to 65535, or the default.
quint16 port();
// The six digits a phone needs; made at random and stored the first time it is asked for, so
// the crew types the same code every race day.
QString code();

} // namespace CrewSettings
