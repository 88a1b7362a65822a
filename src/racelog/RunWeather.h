#pragma once

struct WeatherRecord;
class RunTable;

// Writes a weather reading, live or from the weather log, into the weather cells of a run:
// ABP, Temp, RH, AA, AH, GR, VP, DP, ADR, DA, PA, WD, WS, WG and AL, in that order, floats in
// their shortest general form and whole numbers as plain digits. The run's time and date are
// left as they are.
void writeRunWeather(RunTable& table, int row, const WeatherRecord& weather);
