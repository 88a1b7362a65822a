#include "feed/WeatherParser.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "feed/WeatherQuantities.h"

namespace {

constexpr int DateToken = 1;
constexpr int UnusedToken = 2;
constexpr int FirstQuantityToken = 3;
constexpr int LastToken = FirstQuantityToken + int(WeatherQuantities.size()) - 1; // 17

// The instrument pads with spaces only; a CR at the end of the line stays in the text.
QStringView trimSpaces(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

// Takes the next token off the front of rest: everything up to and including the first
// space. With no space left the token is empty and rest is kept whole.
QStringView takeToken(QStringView& rest) {
    rest = trimSpaces(rest);
    const qsizetype space = rest.indexOf(u' ');
    if (space < 0)
        return {};
    const QStringView token = rest.left(space + 1);
    rest = rest.mid(space + 1);
    return token;
}

// Stores one quantity token when it is numeric. False when the number cannot be converted,
// which ends the line.
bool storeNumber(const WeatherQuantity& quantity, const QString& token, WeatherRecord& record) {
    if (!NumberText::IsNumeric(token))
        return true;
    const auto single = NumberText::ToSingle(token);
    if (!single)
        return false;
    return StoreQuantity(quantity, record, *single);
}

// Tests and stores token number `index`. False when reading must stop.
bool storeToken(int index, QStringView text, WeatherRecord& record) {
    const QString token = trimSpaces(text).toString();
    if (index == DateToken) {
        if (DateText::IsDate(token))
            record.Date = token;
        return true;
    }
    if (index == UnusedToken)
        return true;
    return storeNumber(WeatherQuantities[index - FirstQuantityToken], token, record);
}

} // namespace

void ParseWeatherLine(const QString& line, WeatherRecord& record) {
    QStringView rest = line;
    for (int index = 1; index < LastToken; ++index) {
        if (!storeToken(index, takeToken(rest), record))
            return;
    }
    storeToken(LastToken, rest, record);
}
