#pragma once

#include <QString>
#include <QtGlobal>

// A value of a reading as the program writes it everywhere, in the status line, the weather
// log, the views and the race log: a float in general number form, an integer as plain digits.
QString valueText(float value);
QString valueText(qint32 value);
