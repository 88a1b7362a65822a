#pragma once

#include <QString>

// The crew view's settings: what the server starts from, and what the Crew View dialog keeps.
namespace CrewSettings {

// True only for a stored "1".
bool enabled();
QString address();
// The stored port when it is a whole number from 1 to 65535, or the default.
quint16 port();
// The six digits a phone needs; made at random and stored the first time it is asked for, so
// the crew types the same code every race day.
QString code();

void setEnabled(bool on);
void setAddress(const QString& address);
void setPort(quint16 port);
// Makes, stores and gives a new code; phones need it from now on.
QString newCode();

} // namespace CrewSettings
