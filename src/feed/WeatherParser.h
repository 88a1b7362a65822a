#pragma once

#include "core/WeatherRecord.h"

#include <QString>

// Reads one instrument line into the weather record. The line is a space, seventeen tokens
// separated by spaces and a CR: the date, a token the program does not use, and the fifteen
// quantities in the order of WeatherQuantities.
//
// Each token that passes its test is stored; one that fails leaves its field as it was and
// the next token is still read, so a line can update some fields and not others. A number
// too large for a 32-bit float, or for the integer of its field, ends the reading at once
// and keeps what was stored before it.
//
// Tokens are cut at the first space after trimming spaces (a CR is no space). When no space
// is left the token is empty and the rest stays for the next one, so the last token of a
// short line is read as AL: a line of six tokens puts its sixth into AL, not AA.
//
// True when the line was a whole record: every one of the fifteen quantities was read and
// stored. Only such a line tells that the instrument is still sending weather.
bool parseWeatherLine(const QString& line, WeatherRecord& record);
