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
    QByteArray nextLine(const QDateTime& now);

    // The quantities of the last line, for tests that check consistency.
    struct Reading {
        double abp, temp, rh, vp, ah, adr;
        int aa, gr, dp, da, pa, wd, ws, wg, al;
    };
    const Reading& lastReading() const { return reading; }

private:
    struct Impl;
    Options options;
    Reading reading{};
    quint64 rng;
    double pressure, temperature, humidity, windDirection, windSpeed;
    QDateTime last;

    double uniform(); // 0 to 1
    double gaussian();
    void advance(const QDateTime& now);
    void derive(const QDateTime& now);
};
