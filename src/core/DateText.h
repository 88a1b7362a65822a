#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>
#include <optional>

// Dates and times as the program writes and reads them: run times "hh:mmam/pm", run dates
// "MM/DD/YY", log dates "MM/DD/YYYY", file stems "YYYY-MM-DD", weather rows "hh:mm:ssam/pm".
namespace DateText {

// What a text names: a date, a time of day, or both. A text that is neither is not a date.
struct DateTimeValue {
    std::optional<QDate> date;
    std::optional<QTime> time;
};

// Reads a date ("11/22/26", "11/22/2026", "2026-11-22", "11/22"), a time ("2:35pm",
// "02:35 pm", "14:35", "14:35:07", "2:35:07am", "2pm") or a date followed by a time.
// Two-digit years 00 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999.
std::optional<DateTimeValue> parse(const QString& text);

// True when Parse reads the text.
bool isDate(const QString& text);

QString timeText(const QTime& time);            // "02:35pm"
QString timeWithSecondsText(const QTime& time); // "02:35:07pm"
QString runDateText(const QDate& date);         // "11/22/26"
QString logDateText(const QDate& date);         // "11/22/2026"
QString fileStamp(const QDate& date);           // "2026-11-22"

} // namespace DateText
