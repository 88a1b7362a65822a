#pragma once

#include "feed/WeatherLog.h"
#include "feed/WeatherLogFormat.h"

#include <QFile>

// A whole day of the weather log, one row a second, with values that drift as the
// instrument's do: what the replay benchmarks read.
namespace WeatherDay {

inline const QDate Day(2001, 7, 4); // never today, so the live benchmarks write elsewhere
constexpr int Seconds = 86400;

// Writes the day's file into the weather log folder, once.
inline void write() {
    const QString path = weatherLogPath(Day);
    if (QFile::exists(path))
        return;
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    WeatherRecord record;
    for (int second = 0; second < Seconds; ++second) {
        record.ABP = 29.5f + float(second % 97) / 100.0f;
        record.Temp = 60.0f + float(second % 251) / 10.0f;
        record.RH = 30.0f + float(second % 401) / 10.0f;
        record.AA = 1000 + second % 500;
        record.AH = 5.0f + float(second % 13) / 10.0f;
        record.GR = 40 + second % 20;
        record.VP = 0.3f + float(second % 31) / 100.0f;
        record.DP = 45 + second % 10;
        record.ADR = 95.0f + float(second % 71) / 10.0f;
        record.DA = 1400 + second % 300;
        record.PA = 100 + second % 50;
        record.WD = second % 360;
        record.WS = second % 25;
        record.WG = second % 35;
        record.AL = second % 1000;
        file.write(
            weatherLogRow(QTime::fromMSecsSinceStartOfDay(second * 1000), readingTexts(record)));
    }
}

} // namespace WeatherDay
