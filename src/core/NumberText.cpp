#include "core/NumberText.h"

#include <QVarLengthArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string_view>

// Every feed line and every open race log's prediction come through here many times, so the
// functions below work on views of the texts and on stack buffers, and make one QString at
// the end; a plain number never touches the heap on its way in.

namespace NumberText {

namespace {

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool isSign(char16_t c) {
    return c == u'+' || c == u'-';
}

QStringView trimmedOfBlanks(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.sliced(begin, end - begin);
}

// The text between the surrounding blanks, checked against sign, digits, point, exponent.
// A view into the text: the test itself copies nothing.
std::optional<QStringView> numericCore(QStringView text) {
    const QStringView core = trimmedOfBlanks(text);
    if (core.isEmpty())
        return std::nullopt;

    const qsizetype end = core.size();
    // Past the end reads as a character that fits no part of a number.
    auto at = [&](qsizetype k) { return k < end ? core[k].unicode() : char16_t(0); };
    qsizetype i = 0;
    if (isSign(at(i)))
        ++i;
    int digits = 0;
    for (; isDigit(at(i)); ++i)
        ++digits;
    if (at(i) == u'.') {
        for (++i; isDigit(at(i)); ++i)
            ++digits;
    }
    if (digits == 0)
        return std::nullopt;
    if (at(i) == u'e' || at(i) == u'E') {
        qsizetype k = i + 1;
        if (isSign(at(k)))
            ++k;
        int exponentDigits = 0;
        for (; isDigit(at(k)); ++k)
            ++exponentDigits;
        if (exponentDigits == 0)
            return std::nullopt;
        i = k;
    }
    if (i != end)
        return std::nullopt;
    return core;
}

// Reads a core that numericCore accepted. from_chars wants 8-bit characters and no leading
// "+"; the copy goes to the stack, and only a text of more than 64 characters (a long run of
// zeros, say) needs the heap.
std::optional<double> parse(QStringView core) {
    if (core.front() == u'+')
        core = core.sliced(1);
    QVarLengthArray<char, 64> chars(core.size());
    for (qsizetype i = 0; i < core.size(); ++i) {
        const char c = char(core[i].unicode()); // the core holds only ASCII characters
        chars[i] = c == 'E' ? 'e' : c;
    }
    const std::string_view text(chars.data(), size_t(chars.size()));
    double value = 0;
    auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec == std::errc::result_out_of_range) {
        // Underflow reads as zero; overflow is infinite, which callers reject.
        const bool tiny = text.find("e-") != std::string_view::npos;
        return tiny ? 0.0 : std::numeric_limits<double>::infinity();
    }
    if (ec != std::errc() || ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}

// std::to_chars's shortest text taken apart: its digits, where the point falls among them,
// and the power of ten the text was written with ("1.5e+20" is 15, 1, 20).
struct ShortestDigits {
    bool negative = false;
    char digits[40]; // to_chars writes at most 17 significant digits, and a few zeros beside
    int count = 0;
    int pointPos = 0;
    int exponent = 0;
};

// The exponent after the "e" of to_chars's text: a sign and at least two digits.
int readExponent(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return negative ? -value : value;
}

ShortestDigits splitShortest(std::string_view text) {
    ShortestDigits s;
    if (!text.empty() && text.front() == '-') {
        s.negative = true;
        text.remove_prefix(1);
    }
    if (const auto e = text.find('e'); e != std::string_view::npos) {
        s.exponent = readExponent(text.substr(e + 1));
        text = text.substr(0, e);
    }
    s.pointPos = -1;
    for (char c : text) {
        if (c == '.')
            s.pointPos = s.count;
        else
            s.digits[s.count++] = c;
    }
    if (s.pointPos < 0)
        s.pointPos = s.count;
    return s;
}

// A short text written left to right. The general form of a double takes at most about 30
// characters ("-1.234567890123456000E+18" is one of the longest), so 64 always suffice.
struct ShortText {
    char chars[64];
    int size = 0;
    void append(char c) { chars[size++] = c; }
    void append(const char* text, int length) {
        std::copy_n(text, length, chars + size);
        size += length;
    }
    void appendZeros(int count) {
        std::fill_n(chars + size, count, '0');
        size += count;
    }
    QString toString() const { return QString::fromLatin1(chars, size); }
};

// Writes digits and exponent in the general form: plain notation for exponents from -4 to
// 14, otherwise mantissa and a signed two-digit exponent, as "1E-05" or "1.5E+20".
QString generalFromShortest(const char* text, size_t length) {
    const ShortestDigits s = splitShortest(std::string_view(text, length));
    // Normalise: strip leading zeros, keep track of the point; strip the zeros that end a
    // fraction. The zeros that end a whole number stay: they are digits to_chars chose to write.
    const char* digits = s.digits;
    int count = s.count;
    int pointPos = s.pointPos;
    while (count > 1 && digits[0] == '0') {
        ++digits;
        --count;
        --pointPos;
    }
    while (count > 1 && digits[count - 1] == '0' && count > pointPos)
        --count;
    if (count == 1 && digits[0] == '0')
        return QStringLiteral("0"); // negative zero too

    const int decimalExponent = pointPos + s.exponent - 1; // exponent of the first digit
    ShortText out;
    if (s.negative)
        out.append('-');
    if (decimalExponent >= -4 && decimalExponent < 15) {
        const int intDigits = decimalExponent + 1;
        if (intDigits <= 0) {
            out.append("0.", 2);
            out.appendZeros(-intDigits);
            out.append(digits, count);
        } else if (intDigits >= count) {
            out.append(digits, count);
            out.appendZeros(intDigits - count);
        } else {
            out.append(digits, intDigits);
            out.append('.');
            out.append(digits + intDigits, count - intDigits);
        }
    } else {
        out.append(digits[0]);
        if (count > 1) {
            out.append('.');
            out.append(digits + 1, count - 1);
        }
        out.append('E');
        out.append(decimalExponent < 0 ? '-' : '+');
        const int magnitude = std::abs(decimalExponent);
        if (magnitude < 10)
            out.append('0');
        char exponent[8];
        const auto [end, ec] = std::to_chars(exponent, exponent + sizeof exponent, magnitude);
        out.append(exponent, int(end - exponent));
    }
    return out.toString();
}

// What a digit pattern asks for: the digits before the point, the decimals always written
// and the decimals written at most (every character after the point is one place).
struct PatternShape {
    bool hasPoint = false;
    int minIntDigits = 0;
    int requiredDecimals = 0;
    int maxDecimals = 0;
};

PatternShape shapeOf(QStringView pattern) {
    PatternShape shape;
    const qsizetype point = pattern.indexOf(u'.');
    shape.hasPoint = point >= 0;
    const QStringView intPattern = shape.hasPoint ? pattern.first(point) : pattern;
    const QStringView fracPattern = shape.hasPoint ? pattern.sliced(point + 1) : QStringView();
    shape.minIntDigits = int(intPattern.count(u'0'));
    shape.requiredDecimals = int(fracPattern.count(u'0'));
    shape.maxDecimals = int(fracPattern.size());
    return shape;
}

bool hasNonZeroDigit(std::string_view digits) {
    return digits.find_first_not_of('0') != std::string_view::npos;
}

} // namespace

bool isNumeric(const QString& text) {
    auto core = numericCore(text);
    if (!core)
        return false;
    auto value = parse(*core);
    return value && std::isfinite(*value);
}

std::optional<double> toDouble(const QString& text) {
    auto core = numericCore(text);
    if (!core)
        return std::nullopt;
    auto value = parse(*core);
    if (!value || !std::isfinite(*value))
        return std::nullopt;
    return value;
}

std::optional<float> toSingle(const QString& text) {
    auto value = toDouble(text);
    if (!value)
        return std::nullopt;
    if (std::fabs(*value) > double(std::numeric_limits<float>::max()))
        return std::nullopt;
    return float(*value);
}

std::optional<qint32> roundToInt32(double value) {
    if (!std::isfinite(value))
        return std::nullopt;
    const double rounded = std::nearbyint(value); // the default mode rounds ties to even
    if (rounded < double(std::numeric_limits<qint32>::min()) ||
        rounded > double(std::numeric_limits<qint32>::max()))
        return std::nullopt;
    return qint32(rounded);
}

QString general(float value) {
    if (!std::isfinite(value))
        return QString::number(double(value));
    char buffer[64];
    auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return generalFromShortest(buffer, size_t(ptr - buffer));
}

QString generalDouble(double value) {
    if (!std::isfinite(value))
        return QString::number(value);
    char buffer[64];
    auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return generalFromShortest(buffer, size_t(ptr - buffer));
}

QString format(double value, const QString& pattern) {
    const PatternShape shape = shapeOf(pattern);

    // to_chars rounds the exact value of the double to the decimals asked for, a tie going to
    // the even digit, and always writes a point whatever the locale: the program's files and
    // pages need "9.5041" in Germany too. A double has at most 309 digits before the point and
    // 1074 after it, so more decimals than that are only zeros, and the buffer holds every text.
    // A pattern asking for more than about 500 characters gets them cut short, as it always has.
    constexpr int exactDecimals = 1074;
    constexpr size_t longestText = 511;
    char buffer[309 + 1 + exactDecimals];
    const char* const end =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::fixed,
                      std::min(shape.maxDecimals, exactDecimals))
            .ptr;
    const std::string_view fixed(buffer, std::min(size_t(end - buffer), longestText));
    std::string_view intPart = fixed;
    std::string_view fracPart;
    if (const auto dot = fixed.find('.'); dot != std::string_view::npos) {
        intPart = fixed.substr(0, dot);
        fracPart = fixed.substr(dot + 1);
    }
    while (!intPart.empty() && intPart.front() == '0')
        intPart.remove_prefix(1);
    const int padding = std::max(0, shape.minIntDigits - int(intPart.size()));
    while (int(fracPart.size()) > shape.requiredDecimals && !fracPart.empty() &&
           fracPart.back() == '0')
        fracPart.remove_suffix(1);

    // Only a pattern that asks for hundreds of leading zeros outgrows the stack.
    QVarLengthArray<char, 128> out;
    if (value < 0 && (hasNonZeroDigit(intPart) || hasNonZeroDigit(fracPart)))
        out.append('-');
    out.resize(out.size() + padding, '0');
    out.append(intPart.data(), qsizetype(intPart.size()));
    if (shape.hasPoint && (!fracPart.empty() || shape.maxDecimals == 0)) {
        out.append('.');
        out.append(fracPart.data(), qsizetype(fracPart.size()));
    } else if (shape.hasPoint && fracPart.empty() && shape.requiredDecimals == 0) {
        // "#.##" with nothing after the point still writes the point, as the pattern has one.
        out.append('.');
    }
    return QString::fromLatin1(out.data(), out.size());
}

} // namespace NumberText
