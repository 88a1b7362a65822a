#include "feed/SimulatedInstrument.h"

#include "core/NumberText.h"

#include <QList>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double hPaPerInHg = 33.8638866667;
constexpr double standardPressure = 29.9213; // inches of mercury at sea level
constexpr double standardDensity = 1.225;    // kg/m3: dry air at sea level and 59 F
constexpr double dryAirGasConstant = 287.058;
constexpr double vaporGasConstant = 461.495;

double celsius(double fahrenheit) {
    return (fahrenheit - 32.0) * 5.0 / 9.0;
}

double fahrenheit(double celsius) {
    return celsius * 9.0 / 5.0 + 32.0;
}

// Saturation vapor pressure over water, hPa, by the Magnus form with the Alduchov and
// Eskridge constants: within a few tenths of a percent from -40 C to 50 C, and simple to
// invert for the dew point.
double saturationPressure(double tempC) {
    return 6.1094 * std::exp(17.625 * tempC / (tempC + 243.04));
}

// The temperature, C, at which the given vapor pressure, hPa, saturates the air.
double dewPointOf(double vaporHPa) {
    const double g = std::log(vaporHPa / 6.1094);
    return 243.04 * g / (17.625 - g);
}

// The height in the standard atmosphere where the air has this fraction of sea-level density.
double densityAltitude(double densityRatio) {
    return 145442.16 * (1.0 - std::pow(densityRatio, 0.234969));
}

// The height in the standard atmosphere where the pressure is this many inches of mercury.
double pressureAltitude(double pressureInHg) {
    return 145366.45 * (1.0 - std::pow(pressureInHg / standardPressure, 0.190284));
}

double rounded(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::round(value * scale) / scale;
}

int whole(double value) {
    return NumberText::roundToInt32(value).value_or(0);
}

constexpr double secondsPerHour = 3600.0;

// The temperature follows the sun: coolest before dawn, warmest at three in the afternoon.
double dailyTemperature(double climate, double hourOfDay) {
    return climate + 10.0 * std::cos(2.0 * std::numbers::pi * (hourOfDay - 15.0) / 24.0);
}

// Ambient light: nothing at night, a sine arch from 06:30 to 19:30, dimmed by cloud.
int ambientLight(double hourOfDay, double cloud) {
    const double sunrise = 6.5, sunset = 19.5;
    if (hourOfDay <= sunrise || hourOfDay >= sunset)
        return 0;
    const double sun = std::sin(std::numbers::pi * (hourOfDay - sunrise) / (sunset - sunrise));
    return whole(1000.0 * sun * (1.0 - 0.7 * cloud));
}

double compassBearing(double degrees) {
    const double bearing = std::fmod(degrees, 360.0);
    return bearing < 0 ? bearing + 360.0 : bearing;
}

double hourOf(const QDateTime& moment) {
    return moment.time().msecsSinceStartOfDay() / (secondsPerHour * 1000.0);
}

QByteArray number(double value, int decimals) {
    return QByteArray::number(value, 'f', decimals);
}

} // namespace

SimulatedInstrument::SimulatedInstrument(Options options) : options(options), rng(options.seed) {}

QByteArray SimulatedInstrument::nextLine(const QDateTime& now) {
    if (!last.isValid())
        begin(now);
    advance(now);
    derive(now);
    const QByteArray line = write(now);
    return options.faults ? spoil(line) : line;
}

// Each seed is another place on another day: its own mean pressure, climate, air mass and
// breeze, all inside what a drag strip sees.
void SimulatedInstrument::begin(const QDateTime& now) {
    pressure = 28.9 + 0.9 * uniform();
    climate = 60.0 + 25.0 * uniform();
    temperatureSwing = 0;
    moisture = climate - 10.0 - 25.0 * uniform();
    windDirection = 360.0 * uniform();
    windSpeed = 2.0 + 8.0 * uniform();
    gustExcess = 3.0;
    cloud = uniform();
    last = now;
}

// Every quantity drifts back towards its usual value, with a spread and a memory of its own:
// pressure over hours, the air mass over an hour or two, wind over minutes, gusts over
// seconds. Advancing by no time changes nothing.
void SimulatedInstrument::advance(const QDateTime& now) {
    const double dt = std::clamp(last.msecsTo(now) / 1000.0, 0.0, 24.0 * secondsPerHour);
    last = now;
    pressure = std::clamp(drift(pressure, 29.35, 0.25, 6 * secondsPerHour, dt), 28.5, 30.2);
    temperatureSwing = drift(temperatureSwing, 0.0, 3.0, 1200.0, dt);
    moisture = drift(moisture, climate - 22.0, 6.0, 2 * secondsPerHour, dt);
    windDirection = compassBearing(windDirection + 15.0 * std::sqrt(dt / 60.0) * gaussian());
    windSpeed = std::abs(drift(windSpeed, 6.0, 3.0, 300.0, dt));
    gustExcess = std::abs(drift(gustExcess, 3.0, 2.0, 30.0, dt));
    cloud = std::clamp(drift(cloud, 0.3, 0.25, 1800.0, dt), 0.0, 1.0);
}

// The relative humidity is what the air mass's moisture makes of the present temperature,
// so it falls as the day warms and rises towards dawn, as at a real track.
void SimulatedInstrument::derive(const QDateTime& now) {
    const double hour = hourOf(now);
    const double temperature = dailyTemperature(climate, hour) + temperatureSwing;
    const double saturation = saturationPressure(celsius(temperature));
    const double humidity =
        std::clamp(100.0 * saturationPressure(celsius(moisture)) / saturation, 5.0, 100.0);
    reading = stillAir(pressure, temperature, humidity);
    reading.wd = whole(windDirection) % 360;
    reading.ws = whole(windSpeed);
    reading.wg = std::max(reading.ws, whole(windSpeed + gustExcess));
    reading.al = ambientLight(hour, cloud);
}

SimulatedInstrument::Reading SimulatedInstrument::stillAir(double abp, double temp, double rh) {
    const double tempC = celsius(temp);
    const double kelvin = tempC + 273.15;
    const double vaporHPa = saturationPressure(tempC) * std::max(rh, 0.1) / 100.0;
    const double vapor = vaporHPa / hPaPerInHg;
    const double dryHPa = abp * hPaPerInHg - vaporHPa;
    const double dryDensity = dryHPa * 100.0 / (dryAirGasConstant * kelvin);
    const double density = dryDensity + vaporHPa * 100.0 / (vaporGasConstant * kelvin);

    Reading air{};
    air.abp = rounded(abp, 2);
    air.temp = rounded(temp, 2);
    air.rh = rounded(rh, 2);
    air.vp = rounded(vapor, 3);
    // Absolute humidity as grams of water in a cubic metre of air.
    air.ah = rounded(216.7 * vaporHPa / kelvin, 2);
    air.adr = rounded(100.0 * density / standardDensity, 2);
    // Adjusted altitude: the height of standard air as dense as the dry part of this air.
    // Water vapor makes air lighter, which density altitude counts as help; but it also
    // takes the place of oxygen, so an engine only feels the dry part. This reads a little
    // above density altitude on a humid day and equals it in dry air.
    air.aa = whole(densityAltitude(dryDensity / standardDensity));
    air.gr = whole(7000.0 * 0.62198 * vapor / (abp - vapor));
    air.dp = whole(fahrenheit(dewPointOf(vaporHPa)));
    air.da = whole(densityAltitude(density / standardDensity));
    air.pa = whole(pressureAltitude(abp));
    return air;
}

// " MM/DD/YYYY hh:mm:ss ABP Temp RH AA AH GR VP DP ADR DA PA WD WS WG AL" and a CR.
QByteArray SimulatedInstrument::write(const QDateTime& now) const {
    const Reading& r = reading;
    const QList<QByteArray> tokens = {
        now.toString(QStringLiteral("MM/dd/yyyy")).toLatin1(),
        now.toString(QStringLiteral("HH:mm:ss")).toLatin1(),
        number(r.abp, 2),
        number(r.temp, 2),
        number(r.rh, 2),
        QByteArray::number(r.aa),
        number(r.ah, 2),
        QByteArray::number(r.gr),
        number(r.vp, 3),
        QByteArray::number(r.dp),
        number(r.adr, 2),
        QByteArray::number(r.da),
        QByteArray::number(r.pa),
        QByteArray::number(r.wd),
        QByteArray::number(r.ws),
        QByteArray::number(r.wg),
        QByteArray::number(r.al),
    };
    return ' ' + tokens.join(' ') + '\r';
}

// About one line in five goes wrong the way a real serial line does: noise before the line,
// a line cut short, or a token the instrument garbled.
QByteArray SimulatedInstrument::spoil(const QByteArray& line) {
    if (uniform() >= 0.2)
        return line;
    QList<QByteArray> tokens = line.trimmed().split(' ');
    switch (int(uniform() * 3)) {
    case 0: {
        static const QByteArray noise = QByteArrayLiteral("\n\x7f#~*?\x01\xff@!");
        QByteArray garbage;
        for (int n = 1 + int(uniform() * 6); n > 0; --n)
            garbage += noise.at(int(uniform() * noise.size()));
        return garbage + line;
    }
    case 1:
        return ' ' + tokens.mid(0, 3 + int(uniform() * 6)).join(' ') + '\r';
    default: {
        static const QList<QByteArray> garbled = {"--", "ERR", "1.2.3", "n/a", "#"};
        tokens[2 + int(uniform() * 15)] = garbled.at(int(uniform() * garbled.size()));
        return ' ' + tokens.join(' ') + '\r';
    }
    }
}

// One Ornstein-Uhlenbeck step: the value relaxes towards its mean with the given memory, in
// seconds, while random pushes keep its long-run spread at the given size.
double SimulatedInstrument::drift(double value, double mean, double spread, double seconds,
                                  double dt) {
    const double keep = std::exp(-dt / seconds);
    return mean + (value - mean) * keep + spread * std::sqrt(1.0 - keep * keep) * gaussian();
}

// splitmix64: small, fast, and any seed (zero included) gives a good stream.
double SimulatedInstrument::uniform() {
    quint64 z = (rng += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    z ^= z >> 31;
    return double(z >> 11) / double(1ULL << 53);
}

// Box-Muller; the 1 - u keeps the logarithm away from zero.
double SimulatedInstrument::gaussian() {
    const double u = 1.0 - uniform();
    const double v = uniform();
    return std::sqrt(-2.0 * std::log(u)) * std::cos(2.0 * std::numbers::pi * v);
}
