#pragma once

#include "core/ViewTable.h"
#include "core/WeatherRecord.h"

#include <QString>

// The caption each live view takes from a reading: a readable line of the numbers it shows.
// The large display takes the status line as it stands; the correction factor's view takes
// the factor worked out for the reading.
namespace ViewCaptions {

QString caption(ViewTable::View view, const WeatherRecord& reading, float correctionFactor,
                const QString& statusLine);

} // namespace ViewCaptions
