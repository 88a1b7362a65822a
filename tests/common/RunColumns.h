#pragma once

// The run grid's columns by number, as a race log lays them out, for tests that fill in runs;
// and a run as the tests of prediction make it up: its time at 1,320 ft and its adjusted
// altitude.
namespace RunColumns {

constexpr int Time = 1;
constexpr int Date = 2;
constexpr int Ft1320 = 12;
constexpr int AA = 19;

struct Run {
    double et;
    double aa;
};

} // namespace RunColumns
