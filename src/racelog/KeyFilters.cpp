#include "racelog/KeyFilters.h"

namespace KeyFilters {

namespace {

constexpr char16_t backspace = 8;

bool isDigit(QChar key) {
    return key >= u'0' && key <= u'9';
}
bool isAsciiLetter(QChar key) {
    return (key >= u'A' && key <= u'Z') || (key >= u'a' && key <= u'z');
}
QChar passIf(QChar key, bool pass) {
    return pass || key == QChar(backspace) ? key : QChar();
}

} // namespace

QChar carNumber(QChar key) {
    if (key >= u'a' && key <= u'z')
        return key.toUpper();
    return passIf(key, isDigit(key) || isAsciiLetter(key));
}

QChar letters(QChar key) {
    return passIf(key, isAsciiLetter(key));
}

QChar date(QChar key) {
    return passIf(key, isDigit(key) || key == u'/');
}

QChar time(QChar key) {
    static const QString meridiemLetters = QStringLiteral("PpAaMm");
    return passIf(key, isDigit(key) || key == u':' || meridiemLetters.contains(key));
}

QChar unsignedNumber(QChar key) {
    return passIf(key, isDigit(key) || key == u'.');
}

QChar signedNumber(QChar key) {
    return passIf(key, isDigit(key) || key == u'.' || key == u'-');
}

QChar typeName(QChar key) {
    return passIf(key, isDigit(key) || isAsciiLetter(key) || key == u' ');
}

} // namespace KeyFilters
