#pragma once

#include <QString>
#include <QtGlobal>

// One weather reading of the instrument: fifteen quantities and the instrument's date text.
// The live record is written only by the feed parser; everyone else reads it.
struct WeatherRecord {
    QString Date;   // first token of the line, as received
    QString Time;   // no token ever lands here; it stays empty
    float ABP = 0;  // absolute barometric pressure, inches of mercury
    float Temp = 0; // temperature, degrees F
    float RH = 0;   // relative humidity, percent
    qint32 AA = 0;  // adjusted altitude, feet
    float AH = 0;   // absolute humidity
    qint32 GR = 0;  // grains per lb
    float VP = 0;   // vapor pressure, inches of mercury
    qint32 DP = 0;  // dew point, degrees F
    float ADR = 0;  // air density ratio
    qint32 DA = 0;  // density altitude, feet
    qint32 PA = 0;  // pressure altitude, feet
    qint32 WD = 0;  // wind direction, degrees
    qint32 WS = 0;  // wind speed, MPH
    qint32 WG = 0;  // wind gust, MPH
    qint32 AL = 0;  // ambient light

    bool operator==(const WeatherRecord&) const = default;
};
