#pragma once

#include "racelog/ColumnTable.h"

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <optional>

// How the texts of a race log become the values of its file, and how they come back.
namespace LogFieldRules {

// --- Writing ---

// A numeric text is stored as its 32-bit float value, anything else (a blank cell too) as 0.
// nullopt for a number too large for a float: such a log cannot be saved.
std::optional<double> singleValue(const QString& text);

// The time of a run as the file stores it, "HH:MM:SS": the cell's time of day in minutes,
// or the time of the save when the cell holds no date or time. The cell is not changed.
QString timeValue(const QString& cell, const QDateTime& now);
// The date of a run, "YYYY-MM-DD", as the run date "MM/DD/YY" reads back; today when the
// cell holds no date or time.
QString runDateValue(const QString& cell, const QDateTime& now);
// The date of the log, "YYYY-MM-DD", from "MM/DD/YYYY"; today when it is no date.
QString logDateValue(const QString& text, const QDateTime& now);

// A text as a text field stores it: the first `size` characters (all when size is 0), and
// an empty text as the empty string, never as a missing value.
QString storedText(const QString& text, int size = 0);

// The notes as the file keeps them: lines ended by CR LF, whatever the platform.
QString storedNotes(const QString& notes);

// --- Reading ---

// The date or the time a stored text holds: "2026-07-04", "14:35:00", and the date-time texts
// other tools write, "1899-12-30 14:35:00", for either.
std::optional<QDate> storedDate(const QVariant& value);
std::optional<QTime> storedTime(const QVariant& value);
// Stored notes with the line ends the window's text uses.
QString notesOf(const QString& stored);

// A stored number as the 32-bit float it holds; nullopt for a value that is missing or no
// number, which no race log holds.
std::optional<float> singleOf(const QVariant& value);
// A stored text; nullopt for a missing value.
std::optional<QString> textOf(const QVariant& value);
// A stored date as the log shows it, "MM/DD/YYYY"; nullopt when it is none.
std::optional<QString> logDateOf(const QVariant& value);

// The text a run cell gets from its stored value, by the column's load form; `current` is
// the cell's text now, which a 0 in a "shown only if not 0" column leaves in place. nullopt
// for a value that does not fit the column.
std::optional<QString> cellText(const ColumnTable::Column& column, const QVariant& value,
                                const QString& current);

} // namespace LogFieldRules
