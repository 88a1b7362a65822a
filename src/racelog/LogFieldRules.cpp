#include "racelog/LogFieldRules.h"

#include "core/DateText.h"
#include "core/NumberText.h"

#include <cmath>
#include <limits>

namespace LogFieldRules {

namespace {

// A text read as a moment: a time alone falls on the zero day of the calendar the file
// format grew up with, 12/30/1899, and a date alone is at midnight. Kept as date and time
// apart, as the run table's cells are: no time zone takes part.
struct Moment {
    QDate date;
    QTime time;
};

std::optional<Moment> momentOf(const QString& text) {
    const auto value = DateText::parse(text);
    if (!value)
        return std::nullopt;
    return Moment{value->date.value_or(QDate(1899, 12, 30)), value->time.value_or(QTime(0, 0))};
}

Moment momentOf(const QString& text, const QDateTime& now) {
    return momentOf(text).value_or(Moment{now.date(), now.time()});
}

QString isoDate(const QDate& date) {
    return date.toString(Qt::ISODate);
}

} // namespace

std::optional<double> singleValue(const QString& text) {
    if (!NumberText::isNumeric(text))
        return 0.0;
    const auto value = NumberText::toSingle(text);
    if (!value)
        return std::nullopt;
    return double(*value);
}

QString timeValue(const QString& cell, const QDateTime& now) {
    const QTime time = momentOf(cell, now).time;
    // The file takes the time as the run table writes it, "hh:mmam/pm": seconds are dropped.
    return QTime(time.hour(), time.minute()).toString(QStringLiteral("HH:mm:ss"));
}

QString runDateValue(const QString& cell, const QDateTime& now) {
    const QDate date = momentOf(cell, now).date;
    // The file takes the date as the run table writes it, "MM/DD/YY", so a year outside
    // 1930 to 2029 comes back in that century.
    const QString shown = DateText::runDateText(date);
    return isoDate(DateText::parse(shown)->date.value_or(date));
}

QString logDateValue(const QString& text, const QDateTime& now) {
    return isoDate(momentOf(text, now).date);
}

QString storedText(const QString& text, int size) {
    const QString kept = size > 0 ? text.left(size) : text;
    return kept.isNull() ? QStringLiteral("") : kept;
}

std::optional<float> singleOf(const QVariant& value) {
    if (value.isNull())
        return std::nullopt;
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::LongLong:
    case QMetaType::Int: {
        const double number = value.toDouble();
        if (!std::isfinite(number) || std::fabs(number) > std::numeric_limits<float>::max())
            return std::nullopt;
        return float(number);
    }
    default:
        return NumberText::toSingle(value.toString());
    }
}

std::optional<QString> textOf(const QVariant& value) {
    if (value.isNull())
        return std::nullopt;
    return value.toString();
}

std::optional<QDate> storedDate(const QVariant& value) {
    const auto read = DateText::parse(value.toString().trimmed());
    return read ? read->date : std::nullopt;
}

std::optional<QTime> storedTime(const QVariant& value) {
    const auto read = DateText::parse(value.toString().trimmed());
    return read ? read->time : std::nullopt;
}

std::optional<QString> logDateOf(const QVariant& value) {
    const auto date = storedDate(value);
    return date ? std::optional(DateText::logDateText(*date)) : std::nullopt;
}

QString storedNotes(const QString& notes) {
    QString lines = notes;
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    lines.replace(u'\n', QStringLiteral("\r\n"));
    return storedText(lines);
}

QString notesOf(const QString& stored) {
    QString lines = stored;
    return lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

std::optional<QString> cellText(const ColumnTable::Column& column, const QVariant& value,
                                const QString& current) {
    using ColumnTable::LoadForm;
    switch (column.loadForm) {
    case LoadForm::TimeOfDay: {
        const auto time = storedTime(value);
        return time ? std::optional(DateText::timeText(*time)) : std::nullopt;
    }
    case LoadForm::RunDate: {
        const auto date = storedDate(value);
        return date ? std::optional(DateText::runDateText(*date)) : std::nullopt;
    }
    case LoadForm::AsStored:
        return textOf(value);
    case LoadForm::None:
        break;
    case LoadForm::Pattern:
    case LoadForm::PatternUnlessZero:
    case LoadForm::General: {
        const auto number = singleOf(value);
        if (!number)
            return std::nullopt;
        if (column.loadForm == LoadForm::General)
            return NumberText::general(*number);
        if (column.loadForm == LoadForm::PatternUnlessZero && *number == 0)
            return current;
        return NumberText::format(double(*number), column.pattern.toString());
    }
    }
    return std::nullopt;
}

} // namespace LogFieldRules
