#include "feed/WeatherLogFormat.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "feed/WeatherQuantities.h"

#include <QFile>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

// The fields of one row, taken from the front one at a time.
class Fields {
public:
    explicit Fields(std::string_view line) : rest(line) {}
    bool next(std::string_view& field) {
        if (done)
            return false;
        const auto comma = rest.find(',');
        field = trimBlanks(rest.substr(0, comma));
        done = comma == std::string_view::npos;
        if (!done)
            rest.remove_prefix(comma + 1);
        return true;
    }

private:
    std::string_view rest;
    bool done = false;
};

std::string_view unquote(std::string_view field) {
    if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
        return field.substr(1, field.size() - 2);
    return field;
}

int digit(char c) {
    return c >= '0' && c <= '9' ? c - '0' : -1;
}

// A plain decimal number with optional sign, fraction and exponent, as the log writes it.
std::optional<double> readNumber(std::string_view text) {
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    if (text.empty() || (digit(text.front()) < 0 && text.front() != '-' && text.front() != '.'))
        return std::nullopt; // from_chars would also take "inf" and "nan"
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

bool readQuantity(std::string_view text, const WeatherQuantity& quantity, WeatherRecord& row) {
    const auto value = readNumber(text);
    if (!value)
        return false;
    if (quantity.real) {
        if (std::fabs(*value) > double(std::numeric_limits<float>::max()))
            return false;
        row.*quantity.real = float(*value);
        return true;
    }
    const auto whole = NumberText::roundToInt32(*value);
    if (!whole)
        return false;
    row.*quantity.whole = *whole;
    return true;
}

// Sets text to the Latin-1 characters, reusing its storage from the row before.
void assignLatin1(QString& text, std::string_view characters) {
    text.resize(qsizetype(characters.size()));
    QChar* out = text.data();
    for (char c : characters)
        *out++ = QLatin1Char(c);
}

} // namespace

QByteArray weatherLogRow(const QTime& time, const ReadingTexts& texts) {
    // Piece by piece into one reserved text: a row is written for every feed line.
    QString text;
    text.reserve(160);
    text.append(u'"').append(DateText::timeWithSecondsText(time)).append(u'"');
    for (const QString& quantity : texts)
        text.append(u',').append(quantity);
    text.append(u"\r\n");
    return text.toLatin1();
}

WeatherLogLines::WeatherLogLines(const QString& path) {
    QFile file(path);
    open = file.open(QIODevice::ReadOnly);
    if (open)
        bytes = file.readAll();
}

double WeatherLogLines::fractionRead() const {
    return bytes.isEmpty() ? 1.0 : qMin(1.0, double(position) / double(bytes.size()));
}

bool WeatherLogLines::next(std::string_view& line) {
    const std::string_view all(bytes.constData(), size_t(bytes.size()));
    while (position < bytes.size()) {
        const size_t start = size_t(position);
        size_t end = all.find_first_of("\r\n", start);
        if (end == std::string_view::npos)
            end = all.size();
        position = qsizetype(end) + 1;
        if (end > start) {
            line = all.substr(start, end - start);
            return true;
        }
    }
    return false;
}

// The form the log writes, "hh:mm:ssam", read without help; other time texts go through the
// general date reader.
std::optional<int> readClockTime(std::string_view text) {
    if (text.size() == 10 && text[2] == ':' && text[5] == ':' &&
        (text[9] == 'm' || text[9] == 'M')) {
        const int d[6] = {digit(text[0]), digit(text[1]), digit(text[3]),
                          digit(text[4]), digit(text[6]), digit(text[7])};
        const char meridiem = char(text[8] | 0x20);
        const bool allDigits =
            std::all_of(std::begin(d), std::end(d), [](int v) { return v >= 0; });
        if (allDigits && (meridiem == 'a' || meridiem == 'p')) {
            const int hour = d[0] * 10 + d[1];
            const int minute = d[2] * 10 + d[3];
            const int second = d[4] * 10 + d[5];
            if (hour < 1 || hour > 12 || minute > 59 || second > 59)
                return std::nullopt;
            return ((hour % 12 + (meridiem == 'p' ? 12 : 0)) * 60 + minute) * 60 + second;
        }
    }
    const auto value = DateText::parse(QString::fromLatin1(text.data(), qsizetype(text.size())));
    if (!value || !value->time)
        return std::nullopt;
    return value->time->msecsSinceStartOfDay() / 1000;
}

std::optional<int> readClockTime(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return readClockTime(std::string_view(bytes.constData(), size_t(bytes.size())));
}

std::optional<int> readRowSecond(std::string_view line) {
    std::string_view time;
    Fields(line).next(time);
    return readClockTime(unquote(time));
}

bool readWeatherLogRow(std::string_view line, LoggedWeather& row, int& second) {
    Fields fields(line);
    std::string_view time;
    fields.next(time);
    time = unquote(time);
    const auto clock = readClockTime(time);
    if (!clock)
        return false;
    std::string_view field;
    for (const WeatherQuantity& quantity : WeatherQuantities) {
        if (!fields.next(field) || !readQuantity(field, quantity, row))
            return false;
    }
    if (fields.next(field))
        return false; // more than the time and the fifteen quantities
    assignLatin1(row.Time, time);
    second = *clock;
    return true;
}
