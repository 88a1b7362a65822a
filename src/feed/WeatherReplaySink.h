#pragma once

#include <QtGlobal>

// Where a replay of a weather log sends its rows: one call for each view that takes part, with
// the time of day of the row as a fraction of a day (the same X the live charts use). The
// charts implement it; the replay only calls the views whose open flag is set. A view the
// program does not have takes nothing, so the base class alone still lets a replay read its
// whole file.
class WeatherReplaySink {
public:
    virtual ~WeatherReplaySink() = default;
    virtual void windSpeed(float /*t*/, qint32 /*ws*/) {}
    virtual void abp(float /*t*/, float /*abp*/) {}
    virtual void rh(float /*t*/, float /*rh*/, float /*temp*/) {}
    virtual void cf(float /*t*/, float /*correctionFactor*/) {}
    virtual void adr(float /*t*/, float /*adr*/) {}
    virtual void gr(float /*t*/, qint32 /*gr*/) {}
    virtual void vp(float /*t*/, float /*vp*/, float /*temp*/) {}
    virtual void aada(float /*t*/, qint32 /*aa*/, qint32 /*da*/) {}
    // The rose plot sums wind by direction and has no time axis.
    virtual void rosePlot(qint32 /*wd*/, qint32 /*ws*/) {}
};
