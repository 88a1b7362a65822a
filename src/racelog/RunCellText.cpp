#include "racelog/RunCellText.h"

#include "core/DateText.h"
#include "core/NumberText.h"

namespace RunCellText {

namespace {

// Day zero of the program's calendar: a time of day with no date is a moment of this day.
const QDate DayZero(1899, 12, 30);

} // namespace

std::optional<QDateTime> Moment(const QString& text) {
    const std::optional<DateText::DateTimeValue> value = DateText::Parse(text);
    if (!value)
        return std::nullopt;
    return QDateTime(value->date.value_or(DayZero), value->time.value_or(QTime(0, 0)));
}

QString SettledTime(const QString& text, const QDateTime& now) {
    return DateText::TimeText(Moment(text).value_or(now).time());
}

QString SettledDate(const QString& text, const QDateTime& now) {
    return DateText::RunDateText(Moment(text).value_or(now).date());
}

QString SettledNumber(const QString& text) {
    return NumberText::IsNumeric(text) ? text : QString();
}

} // namespace RunCellText
