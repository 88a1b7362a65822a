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

// What became of one token: stored, passed over (its field keeps its value), or the end of
// the line.
enum class TokenRead { Stored, PassedOver, LineEnds };

// Stores one quantity token when it is numeric. A number that cannot be converted ends the
// line.
TokenRead storeNumber(const WeatherQuantity& quantity, const QString& token,
                      WeatherRecord& record) {
    if (!NumberText::isNumeric(token))
        return TokenRead::PassedOver;
    const auto single = NumberText::toSingle(token);
    if (!single || !storeQuantity(quantity, record, *single))
        return TokenRead::LineEnds;
    return TokenRead::Stored;
}

// Tests and stores token number `index`. The date and the unused token never end the line
// nor make it less of a record.
TokenRead storeToken(int index, QStringView text, WeatherRecord& record) {
    const QString token = trimSpaces(text).toString();
    if (index == DateToken) {
        if (DateText::isDate(token))
            record.Date = token;
        return TokenRead::Stored;
    }
    if (index == UnusedToken)
        return TokenRead::Stored;
    return storeNumber(WeatherQuantities[index - FirstQuantityToken], token, record);
}

} // namespace

bool parseWeatherLine(const QString& line, WeatherRecord& record) {
    QStringView rest = line;
    bool everyQuantity = true;
    for (int index = 1; index < LastToken; ++index) {
        const TokenRead read = storeToken(index, takeToken(rest), record);
        if (read == TokenRead::LineEnds)
            return false;
        everyQuantity = everyQuantity && read == TokenRead::Stored;
    }
    return storeToken(LastToken, rest, record) == TokenRead::Stored && everyQuantity;
}
