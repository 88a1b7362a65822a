#pragma once

#include <QDate>
#include <QString>

// What the fields of a race log's side panel make of their text when the user leaves them.
namespace SidePanelRules {

// The date of the log: a date, or a time alone (which falls on 12/30/1899), as "MM/DD/YYYY";
// anything else becomes today.
QString settledLogDate(const QString& text, const QDate& today);

// The target ET: text that is not a number becomes 0, and the number is written with two to
// four decimals ("9.5" -> "9.50").
QString settledTargetET(const QString& text);

// The prediction's adjusted altitude and vapor pressure: text that is not a number becomes
// "0"; a number stays as typed.
QString settledPredictInput(const QString& text);

// The page identifier without blanks around it.
QString settledPageIdentifier(const QString& text);

} // namespace SidePanelRules
