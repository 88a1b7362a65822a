#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QtGlobal>

// A weather instrument in software, for demos, tests and teams without the instrument at
// hand. It keeps a slowly drifting state of pressure, temperature, humidity and wind and
// writes it as the instrument's line: a space, the date, the time, fifteen values, a CR.
// Every derived quantity (vapor pressure, dew point, grains, air density ratio, density,
// pressure and adjusted altitude) is worked out from pressure, temperature and humidity.
class SimulatedInstrument {
public:
    struct Options {
        quint32 seed = 1;
        bool faults = false; // now and then garbage bytes, short lines, non-numeric tokens
    };

    explicit SimulatedInstrument(Options options);

    // Advances the weather to the given moment and returns the next line, CR included.
    // The same seed and the same moments give the same lines.
    QByteArray nextLine(const QDateTime& now);

    // The quantities of the last line, for tests that check consistency. They are the values
    // the instrument meant to send, rounded as the line writes them, even when a fault
    // spoiled the line itself.
    struct Reading {
        double abp, temp, rh, vp, ah, adr;
        int aa, gr, dp, da, pa, wd, ws, wg, al;
    };
    const Reading& lastReading() const { return reading; }

    // What still air of this pressure (inches of mercury), temperature (degrees F) and
    // relative humidity (percent, taken as at least 0.1) reads as, rounded as the line
    // writes it. Wind and light are zero.
    static Reading stillAir(double abp, double temp, double rh);

private:
    Options options;
    Reading reading{};
    quint64 rng;
    QDateTime last; // the moment the weather was last advanced to; invalid before the first

    // The weather's own state; everything else follows from it and the time of day.
    double pressure = 0;         // inches of mercury
    double climate = 0;          // degrees F, the day's mean temperature at this place
    double temperatureSwing = 0; // degrees F off the daily curve: passing clouds, breezes
    double moisture = 0;         // dew point of the air mass, degrees F
    double windDirection = 0;    // degrees
    double windSpeed = 0;        // MPH, the steady part
    double gustExcess = 0;       // MPH a gust adds on top of the steady wind
    double cloud = 0;            // 0 clear to 1 overcast

    double uniform(); // 0 to 1
    double gaussian();
    double drift(double value, double mean, double spread, double seconds, double dt);
    void begin(const QDateTime& now);
    void advance(const QDateTime& now);
    void derive(const QDateTime& now);
    QByteArray write(const QDateTime& now) const;
    QByteArray spoil(const QByteArray& line);
};
