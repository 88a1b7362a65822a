#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

// How the text typed into a run's time, date and number cells is put right when the cell
// editor is left, and how the time and date cells are read as a moment.
namespace RunCellText {

// The moment a text names. A date alone is at midnight; a time alone falls on the first day
// of the calendar the program counts from, 12/30/1899. nullopt when the text names neither.
std::optional<QDateTime> Moment(const QString& text);

// A text that names a moment, as the time of a run ("hh:mmam/pm"); anything else becomes the
// time of `now`.
QString settledTime(const QString& text, const QDateTime& now);
// The same as the date of a run ("MM/DD/YY"); anything else becomes the day of `now`.
QString settledDate(const QString& text, const QDateTime& now);
// A number stays as it was typed; anything else is emptied.
QString settledNumber(const QString& text);

} // namespace RunCellText
