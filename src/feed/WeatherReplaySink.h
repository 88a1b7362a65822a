#pragma once

#include <QtGlobal>

// Where a replay of a weather log sends its rows: one call for each view that takes part, with
// the time of day of the row as a fraction of a day (the same X the live charts use). The
// charts implement it; the replay only calls the views whose open flag is set.
class WeatherReplaySink {
public:
    virtual ~WeatherReplaySink() = default;
    virtual void windSpeed(float t, qint32 ws) = 0;
    virtual void abp(float t, float abp) = 0;
    virtual void rh(float t, float rh, float temp) = 0;
    virtual void cf(float t, float correctionFactor) = 0;
    virtual void adr(float t, float adr) = 0;
    virtual void gr(float t, qint32 gr) = 0;
    virtual void vp(float t, float vp, float temp) = 0;
    virtual void aada(float t, qint32 aa, qint32 da) = 0;
    // The rose plot sums wind by direction and has no time axis.
    virtual void rosePlot(qint32 wd, qint32 ws) = 0;
};
