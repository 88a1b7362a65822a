#pragma once

#include "feed/WeatherQuantities.h"

#include <QString>

// The status text of a reading: "ABP=29.92 Temp=71.5 ...", one entry for each quantity that
// the user's race log column selection shows. A quantity is left out only when its value
// under LogColumns is exactly "0", so a quantity never chosen either way is shown.
QString buildStatusLine(const ReadingTexts& texts);
