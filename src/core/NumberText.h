#pragma once

#include <QString>
#include <optional>

// Numbers as the program writes and reads them. Every run value, setting and feed token is
// text; these are the one set of rules for testing, converting and formatting that text.
namespace NumberText {

// True for a plain decimal number with an optional sign, optional fraction and optional
// exponent ("12", "-0.5", ".25", "3.", "1e-5"), with white space (CR included) around it.
// Independent of the locale: the decimal sign is always a point.
bool isNumeric(const QString& text);

// The value of numeric text as a double; nullopt when isNumeric fails.
std::optional<double> toDouble(const QString& text);

// The value of numeric text taken through a 32-bit float, as the instrument's fields and
// the race log file keep it. nullopt when not numeric or too large for a float.
std::optional<float> toSingle(const QString& text);

// Rounds to the nearest integer, a tie going to the even neighbour (2.5 -> 2, 3.5 -> 4).
// nullopt when the value does not fit a 32-bit signed integer.
std::optional<qint32> roundToInt32(double value);

// The general number form: the shortest text that reads back to the same 32-bit float
// (29.92, 0.33, 1250). Very large or very small magnitudes use an exponent ("1E-05").
QString general(float value);
// The same for a double, shortest round trip of the double.
QString generalDouble(double value);

// Formats with a digit pattern: "0" is a required digit, "#" an optional one. Left of the
// point the count of "0" is the minimum number of digits ("##.0000" writes 0.5 as ".5000");
// right of the point "0" places are always written and "#" places only when not zero
// ("#0.00##" gives two to four decimals). A negative number gets a leading "-".
QString format(double value, const QString& pattern);

} // namespace NumberText
