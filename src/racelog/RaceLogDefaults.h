#pragma once

#include "core/SettingKeys.h"

#include <QString>
#include <QStringList>
#include <QStringView>
#include <array>
#include <optional>

// What a new race log starts from, as the settings tree keeps it: the general defaults and
// the named race log types with their four default values, the pager frequency, the race
// tracks the user visits, and the Excel template.
namespace RaceLogDefaults {

// The value a track is stored with; only its name counts.
inline const QString TrackData = QStringLiteral("0");

// The key of a race log type's defaults: the general defaults for an empty name, else the
// subkey of that name.
QString typeKey(const QString& name);

// The named race log types and the race tracks, in the order the settings give them.
QStringList raceLogTypes();
QStringList raceTracks();

// The default values of a race log type, in the order they are read and written: PF, TSR,
// CarNumber, TargetET. The numbers are kept only when they are numbers, so a new log never
// starts from text it cannot predict with; the car number is any text.
inline constexpr std::array<const SettingKey*, 4> DefaultValues{
    &SettingKeys::DefaultPF, &SettingKeys::DefaultTSR, &SettingKeys::DefaultCarNumber,
    &SettingKeys::DefaultTargetET};

// The text a field takes from a stored value; nullopt leaves the field as it stands. A number
// that is missing or no number leaves its field alone; a missing car number empties it.
std::optional<QString> shownText(const SettingKey& value, const QString& stored);
// Whether a field's text is written as the default.
bool isStored(const SettingKey& value, const QString& text);

// The template shipped with the program: beside it, or in the shared data folder once installed.
QString systemTemplatePath();
// The template path to store: the shipped one for the system default, else the chosen path
// when such a file exists; nullopt stores nothing.
std::optional<QString> templateToStore(bool systemDefault, const QString& chosenPath);

// How many send timer ticks go by between two pages. Nine choices of whole minutes, 15 ticks
// a minute; 75, "5min", when nothing usable is stored.
constexpr int PagerFrequencyChoices = 9;
constexpr qint32 TicksPerMinute = 15;
// The choice (0 for "1min") that shows a frequency: whole minutes, rounded down; -1, no
// choice, below one minute.
int pagerFrequencyChoice(qint32 frequency);

} // namespace RaceLogDefaults
