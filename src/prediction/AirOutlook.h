#pragma once

#include <QList>
#include <QString>
#include <array>
#include <optional>

// The air of the next rounds: a straight line of adjusted altitude against time through the
// last half hour of live weather, taken on to 30, 60 and 90 minutes from now, when the car
// may run again. The air of an afternoon moves steadily enough for a line to follow it.
namespace AirOutlook {

// One live reading: when it came, in milliseconds since the epoch, and its adjusted altitude.
struct Sample {
    qint64 at = 0;
    double aa = 0;
};

inline constexpr std::array<int, 3> HorizonMinutes{30, 60, 90};
// Less than this span of readings gives a line that a gust of the sensor can tip.
inline constexpr qint64 FewestMinutes = 10;
// A change faster than this is told, for the air will not wait for the next round.
inline constexpr double FastFeetPerHour = 200;

struct Forecast {
    std::array<double, HorizonMinutes.size()> aa{}; // at each horizon
    double feetPerHour = 0;                         // the slope of the line
};

// The least-squares line through the samples, read at each horizon after now; nullopt when the
// samples span less than 10 minutes.
std::optional<Forecast> forecast(const QList<Sample>& samples, qint64 now);

// The log's ET at each horizon's air, when it has one.
using Ets = std::array<std::optional<double>, HorizonMinutes.size()>;

// "In 30 min: AA 2,310 ft → 9.5132 · 60 min: 2,390 → 9.5164 · 90 min: 2,470 → 9.5196", with
// "(air changing fast: +260 ft/h)" after a fast change; "Outlook: not enough weather" without
// a forecast.
QString line(const std::optional<Forecast>& forecast, const Ets& ets);

// The altitude as the line shows it and as the ETs are worked out at: to the foot.
int shownFeet(double aa);

} // namespace AirOutlook
