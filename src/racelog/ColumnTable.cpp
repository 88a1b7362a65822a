#include "racelog/ColumnTable.h"

namespace ColumnTable {

using enum LoadForm;
using enum Entry;

// clang-format off
const std::array<Column, Count> Columns{{
//   #   caption      meaning                          Log field    load form          pattern     visibility    menu item      menu text     check box      check box tool tip               entry
    {0,  u">>>",      u"run number",                   u"",         None,              u"",        u"",          u"",           u"",          u"",           u"",                             NotTyped},
    {1,  u"Time",     u"time of the run",              u"Time",     TimeOfDay,         u"",        u"",          u"",           u"",          u"",           u"",                             Time},
    {2,  u"Date",     u"date of the run",              u"Date",     RunDate,           u"",        u"",          u"",           u"",          u"",           u"",                             Date},
    {3,  u"Lane",     u"\"Left\" or \"Right\"",        u"Lane",     AsStored,          u"",        u"Lane",      u"miLane",     u"Lane",      u"chkLane",    u"",                             Lane},
    {4,  u"RT",       u"reaction time",                u"RT",       Pattern,           u"#.0000",  u"RT",        u"miRT",       u"RT",        u"chkRT",      u"",                             Number},
    {5,  u"Delay Box",u"delay box setting",            u"DelayBox", General,           u"",        u"Delay Box", u"miDelayBox", u"Delay Box", u"chkDelayBox",u"",                             Number},
    {6,  u"60 ft",    u"elapsed time at 60 ft",        u"ft60",     PatternUnlessZero, u"##.0000", u"60 ft",     u"mi60ft",     u"60 ft",     u"chk60ft",    u"",                             Number},
    {7,  u"330 ft",   u"elapsed time at 330 ft",       u"ft330",    PatternUnlessZero, u"##.0000", u"330 ft",    u"mi330ft",    u"330 ft",    u"chk330ft",   u"",                             Number},
    {8,  u"660 ft",   u"elapsed time at 660 ft",       u"ft660",    PatternUnlessZero, u"##.0000", u"660 ft",    u"mi660ft",    u"660 ft",    u"chk660ft",   u"",                             Number},
    {9,  u"660 MPH",  u"speed at 660 ft",              u"mph660",   PatternUnlessZero, u"###.00",  u"660 MPH",   u"mi660mph",   u"660 MPH",   u"chk660mph",  u"",                             Number},
    {10, u"1000 ft",  u"elapsed time at 1000 ft",      u"ft1000",   PatternUnlessZero, u"##.0000", u"1000 ft",   u"mi1000ft",   u"1000 ft",   u"chk1000ft",  u"",                             Number},
    {11, u"1000 MPH", u"speed at 1000 ft",             u"mph1000",  PatternUnlessZero, u"###.00",  u"1000 MPH",  u"mi1000mph",  u"1000 MPH",  u"chk1000mph", u"",                             Number},
    {12, u"1320 ft",  u"elapsed time at 1320 ft",      u"ft1320",   PatternUnlessZero, u"##.0000", u"1320 ft",   u"mi1320ft",   u"1320 ft",   u"chk1320ft",  u"",                             Number},
    {13, u"1320 MPH", u"speed at 1320 ft",             u"mph1320",  PatternUnlessZero, u"###.00",  u"1320 MPH",  u"mi1320mph",  u"1320 MPH",  u"chk1320mph", u"",                             Number},
    {14, u"Timer 2",  u"second car timer",             u"Timer2",   General,           u"",        u"Timer 2",   u"miTimer2",   u"Timer 2",   u"chkTimer2",  u"",                             Number},
    {15, u"Timer 1",  u"first car timer",              u"Timer1",   General,           u"",        u"Timer 1",   u"miTimer1",   u"Timer 1",   u"chkTimer1",  u"",                             Number},
    {16, u"Shift Time",u"shift time",                  u"ShiftTime",General,           u"",        u"Shift Time",u"miShiftTime",u"Shift Time",u"chkShiftTime",u"",                            Number},
    {17, u"Dial-In",  u"dial-in",                      u"DialIn",   PatternUnlessZero, u"##.00",   u"Dial-In",   u"miDialIn",   u"Dial-In",   u"chkDialIn",  u"",                             Number},
    {18, u"T. Temp",  u"track temperature",            u"TrackTemp",PatternUnlessZero, u"##0.0",   u"Track Temp",u"miTrackTemp",u"Track Temp",u"chkTrackTemp",u"Track Temperature",           Number},
    {19, u"AA",       u"adjusted altitude",            u"AA",       General,           u"",        u"AA",        u"miAA",       u"AA",        u"chkAA",      u"Adjusted Altitude",            Number},
    {20, u"DA",       u"density altitude",             u"DA",       General,           u"",        u"DA",        u"miDA",       u"DA",        u"chkDA",      u"Density Altitude",             Number},
    {21, u"VP",       u"vapor pressure",               u"VP",       General,           u"",        u"VP",        u"miVP",       u"VP",        u"chkVP",      u"Vapor Pressure",               Number},
    {22, u"ABP",      u"absolute barometric pressure", u"ABP",      General,           u"",        u"ABP",       u"miABP",      u"ABP",       u"chkABP",     u"Absolute Barometric Pressure", Number},
    {23, u"Temp",     u"air temperature",              u"TEMP",     General,           u"",        u"Temp",      u"miTemp",     u"Temp",      u"chkTemp",    u"Temperature in degrees F",     Number},
    {24, u"RH",       u"relative humidity",            u"RH",       General,           u"",        u"RH",        u"miRH",       u"RH",        u"chkRH",      u"Relative Humidity",            Number},
    {25, u"AH",       u"absolute humidity",            u"AH",       General,           u"",        u"AH",        u"miAH",       u"AH",        u"chkAH",      u"Absolute Humidity",            Number},
    {26, u"GR",       u"grains per lb",                u"GR",       General,           u"",        u"GR",        u"miGR",       u"GR",        u"chkGR",      u"Grains per Lb",                Number},
    {27, u"DP",       u"dew point",                    u"DP",       General,           u"",        u"DP",        u"miDP",       u"DP",        u"chkDP",      u"Dew Point",                    Number},
    {28, u"ADR",      u"air density ratio",            u"ADR",      General,           u"",        u"ADR",       u"miADR",      u"ADR",       u"chkADR",     u"Air Density Ratio",            Number},
    {29, u"PA",       u"pressure altitude",            u"PA",       General,           u"",        u"PA",        u"miPA",       u"PA",        u"chkPA",      u"Pressure Altitude",            Number},
    {30, u"WD",       u"wind direction",               u"WD",       General,           u"",        u"WD",        u"miWD",       u"WD",        u"chkWD",      u"Wind Direction",               Number},
    {31, u"WS",       u"wind speed",                   u"WS",       General,           u"",        u"WS",        u"miWS",       u"WS",        u"chkWS",      u"Wind Speed",                   Number},
    {32, u"WG",       u"wind gust",                    u"WG",       General,           u"",        u"WG",        u"miWG",       u"WG",        u"chkWG",      u"Wind Gust",                    Number},
    {33, u"AL",       u"ambient light",                u"AL",       General,           u"",        u"AL",        u"miAL",       u"AL",        u"chkAL",      u"Ambient Light",                Number},
}};
// clang-format on

const std::array<int, HideableCount> ShowColumnMenuOrder{3,  4,  5,  17, 18, 6,  7,  8,  9,  10, 11,
                                                         12, 13, 14, 15, 16, 19, 20, 21, 22, 23, 24,
                                                         25, 26, 27, 28, 29, 30, 31, 32, 33};

QList<int> everyColumn() {
    QList<int> numbers;
    for (const Column& column : Columns)
        numbers << column.number;
    return numbers;
}

int columnOfLogField(QStringView fieldName) {
    if (fieldName.isEmpty())
        return -1;
    for (const Column& column : Columns) {
        if (column.logField.compare(fieldName, Qt::CaseInsensitive) == 0)
            return column.number;
    }
    return -1;
}

} // namespace ColumnTable
