#include "core/DateText.h"

#include <QRegularExpression>

namespace DateText {

namespace {

int fullYear(int year, int digits) {
    if (digits > 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<QDate> parseDate(const QString& text) {
    static const QRegularExpression slashed(
        QStringLiteral(R"(^(\d{1,2})[/-](\d{1,2})(?:[/-](\d{1,4}))?$)"));
    static const QRegularExpression iso(QStringLiteral(R"(^(\d{4})-(\d{1,2})-(\d{1,2})$)"));
    if (auto m = iso.match(text); m.hasMatch()) {
        QDate date(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
        return date.isValid() ? std::optional(date) : std::nullopt;
    }
    if (auto m = slashed.match(text); m.hasMatch()) {
        const int year = m.captured(3).isEmpty()
                             ? QDate::currentDate().year()
                             : fullYear(m.captured(3).toInt(), int(m.captured(3).size()));
        QDate date(year, m.captured(1).toInt(), m.captured(2).toInt());
        return date.isValid() ? std::optional(date) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<QTime> parseTime(const QString& text) {
    static const QRegularExpression clock(
        QStringLiteral(R"(^(\d{1,2})(?::(\d{1,2}))?(?::(\d{1,2}))?\s*([AaPp])?(?:[Mm])?$)"));
    auto m = clock.match(text);
    if (!m.hasMatch())
        return std::nullopt;
    const bool hasMinutes = !m.captured(2).isEmpty();
    const QString meridiem = m.captured(4).toLower();
    const bool hasMeridiem = !meridiem.isEmpty();
    // A bare number is not a time; "2pm" is.
    if (!hasMinutes && !hasMeridiem)
        return std::nullopt;
    // "12:30m" has an "m" with no a or p: not a time.
    if (!hasMeridiem && text.endsWith(u'm', Qt::CaseInsensitive))
        return std::nullopt;
    int hour = m.captured(1).toInt();
    const int minute = hasMinutes ? m.captured(2).toInt() : 0;
    const int second = m.captured(3).isEmpty() ? 0 : m.captured(3).toInt();
    if (hasMeridiem) {
        if (hour < 1 || hour > 12)
            return std::nullopt;
        hour = hour % 12 + (meridiem == u"p" ? 12 : 0);
    }
    QTime time(hour, minute, second);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

// Written digit by digit: the weather log stamps every feed line with it.
QString twelveHour(const QTime& time, bool withSeconds) {
    const auto twoDigits = [](QString& text, int value) {
        text.append(QChar(u'0' + value / 10)).append(QChar(u'0' + value % 10));
    };
    QString text;
    text.reserve(10);
    twoDigits(text, time.hour() % 12 == 0 ? 12 : time.hour() % 12);
    twoDigits(text.append(u':'), time.minute());
    if (withSeconds)
        twoDigits(text.append(u':'), time.second());
    return text.append(time.hour() < 12 ? u"am" : u"pm");
}

} // namespace

std::optional<DateTimeValue> parse(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    if (auto date = parseDate(trimmed))
        return DateTimeValue{date, std::nullopt};
    if (auto time = parseTime(trimmed))
        return DateTimeValue{std::nullopt, time};
    // A date and a time separated by blanks.
    const qsizetype blank = trimmed.indexOf(u' ');
    if (blank > 0) {
        auto date = parseDate(trimmed.left(blank));
        auto time = parseTime(trimmed.mid(blank + 1).trimmed());
        if (date && time)
            return DateTimeValue{date, time};
    }
    return std::nullopt;
}

bool isDate(const QString& text) {
    return parse(text).has_value();
}

QString timeText(const QTime& time) {
    return twelveHour(time, false);
}

QString timeWithSecondsText(const QTime& time) {
    return twelveHour(time, true);
}

QString runDateText(const QDate& date) {
    return date.toString(QStringLiteral("MM/dd/yy"));
}

QString logDateText(const QDate& date) {
    return date.toString(QStringLiteral("MM/dd/yyyy"));
}

QString fileStamp(const QDate& date) {
    return date.toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace DateText
