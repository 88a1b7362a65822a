#include "racelog/RunCellText.h"

#include "core/DateText.h"
#include "core/NumberText.h"

namespace RunCellText {

namespace {

// Day zero of the program's calendar: a time of day with no date is a moment of this day.
const QDate DayZero(1899, 12, 30);

} // namespace

std::optional<QDateTime> Moment(const QString& text) {
    const std::optional<DateText::DateTimeValue> value = DateText::parse(text);
    if (!value)
        return std::nullopt;
    return QDateTime(value->date.value_or(DayZero), value->time.value_or(QTime(0, 0)));
}

QString settledTime(const QString& text, const QDateTime& now) {
    return DateText::timeText(Moment(text).value_or(now).time());
}

QString settledDate(const QString& text, const QDateTime& now) {
    return DateText::runDateText(Moment(text).value_or(now).date());
}

QString settledNumber(const QString& text) {
    return NumberText::isNumeric(text) ? text : QString();
}

} // namespace RunCellText
