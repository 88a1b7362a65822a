#pragma once

#include "core/WeatherRecord.h"

// One row of a weather log read back: the fifteen quantities, and in Time the clock time at
// which the row was written ("10:42:07am"). Date stays empty: a row's date is the name of its
// file. A record with every field empty or zero means that nothing was found.
struct LoggedWeather : WeatherRecord {};
