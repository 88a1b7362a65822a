#pragma once

#include "core/ReadingText.h"
#include "core/WeatherRecord.h"

#include <QString>
#include <array>
#include <string_view>

// The fifteen quantities of a weather reading in the instrument's order. The same order and
// names run through the feed line, the status line, the weather log's columns and the race
// log's weather columns, so every one of them walks this one table.
struct WeatherQuantity {
    const char* name;  // value name under LogColumns and column name in the race log file
    const char* label; // how the status line introduces the number
    // Exactly one of the two is set: the field is a 32-bit float or a 32-bit integer.
    float WeatherRecord::*real;
    qint32 WeatherRecord::*whole;
};

inline constexpr std::array<WeatherQuantity, 15> WeatherQuantities{{
    {"ABP", "ABP=", &WeatherRecord::ABP, nullptr},
    {"Temp", "Temp=", &WeatherRecord::Temp, nullptr},
    {"RH", "RH=", &WeatherRecord::RH, nullptr},
    {"AA", "AA=", nullptr, &WeatherRecord::AA},
    {"AH", "AH=", &WeatherRecord::AH, nullptr},
    {"GR", "GR=", nullptr, &WeatherRecord::GR},
    {"VP", "VP=", &WeatherRecord::VP, nullptr},
    {"DP", "DP=", nullptr, &WeatherRecord::DP},
    {"ADR", "ADR=", &WeatherRecord::ADR, nullptr},
    {"DA", "DA=", nullptr, &WeatherRecord::DA},
    {"PA", "PA=", nullptr, &WeatherRecord::PA},
    {"WD", "WD=", nullptr, &WeatherRecord::WD},
    {"WS", "WS=", nullptr, &WeatherRecord::WS},
    {"WG", "WG=", nullptr, &WeatherRecord::WG},
    {"AL", "AL=", nullptr, &WeatherRecord::AL},
}};

// The place of a quantity in the table, by its name; a name that is not there does not compile.
consteval size_t quantityIndex(std::string_view name) {
    size_t i = 0;
    while (WeatherQuantities[i].name != name)
        ++i;
    return i;
}

// The quantity of the reading, written as valueText writes it.
QString quantityText(const WeatherQuantity& quantity, const WeatherRecord& record);

// The texts of all fifteen quantities of a reading, in the table's order. The status line and
// the weather log write the same texts, so a feed line makes them once for both.
using ReadingTexts = std::array<QString, WeatherQuantities.size()>;
ReadingTexts readingTexts(const WeatherRecord& record);

// Stores a value that came through a 32-bit float: as it is into a float field, rounded to
// the nearest integer (a tie to the even one) into an integer field. False, and the field
// untouched, when the value does not fit the integer.
bool storeQuantity(const WeatherQuantity& quantity, WeatherRecord& record, float value);
