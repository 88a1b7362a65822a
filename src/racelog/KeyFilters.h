#pragma once

#include <QChar>
#include <QString>

// What each text field of a race log lets through as it is typed. A filter returns the
// character to let pass (a small letter may come back as a capital), or a null QChar to
// swallow the key. Backspace always passes.
namespace KeyFilters {

QChar CarNumber(QChar key);      // digits and letters, letters as capitals
QChar Letters(QChar key);        // A to Z, a to z
QChar Date(QChar key);           // digits and "/"
QChar Time(QChar key);           // digits, ":", and the letters of "am" and "pm"
QChar UnsignedNumber(QChar key); // digits and "."
QChar SignedNumber(QChar key);   // digits, "." and "-"

// The configuration dialog's type names also take blanks.
QChar TypeName(QChar key);

} // namespace KeyFilters
