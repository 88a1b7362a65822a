#pragma once

#include <QChar>
#include <QString>

// What each text field of a race log lets through as it is typed. A filter returns the
// character to let pass (a small letter may come back as a capital), or a null QChar to
// swallow the key. Backspace always passes.
namespace KeyFilters {

QChar carNumber(QChar key);      // digits and letters, letters as capitals
QChar letters(QChar key);        // A to Z, a to z
QChar date(QChar key);           // digits and "/"
QChar time(QChar key);           // digits, ":", and the letters of "am" and "pm"
QChar unsignedNumber(QChar key); // digits and "."
QChar signedNumber(QChar key);   // digits, "." and "-"

// The configuration dialog's type names also take blanks.
QChar typeName(QChar key);

} // namespace KeyFilters
