#pragma once

#include <QtGlobal>
#include <array>

// Where the wind has come from since the rose was opened: thirty sectors of 12 degrees, each
// the sum of the wind speeds that came from its directions, and the direction of the latest
// reading, which the needle shows.
//
// Angles are plot angles: degrees anticlockwise from the right, so compass 0 (a head wind on
// a track laid up the plot) is 90 and compass 90 is 0.
class WindRose {
public:
    static constexpr int SectorCount = 30;

    WindRose();

    // Adds a wind speed to the sector of a compass direction and makes the direction the
    // latest. The sums stay whole numbers: each new sum is rounded, ties to even. False when
    // the arithmetic overflows or the direction lands outside the sectors; the rose then
    // needs no redraw.
    bool addWind(float value, qint16 direction);
    // The sum of the sector that holds a plot angle, taken as it is: no compass conversion.
    // 0 for an angle beyond the sectors.
    float sumAt(qint16 angle) const;
    // The sectors start again from nothing; the needle stays where it is.
    void clearSums();

    // The plot angle of a compass direction, as addWind works it out: one turn is added or
    // taken away at most, so 360 gives 90 and 91 gives 359.
    static int plotAngle(int direction);
    // The sector that holds a plot angle; the remainder is dropped.
    static int sectorOf(int angle);

    qint16 lastAngle() const { return last; }
    qint32 sum(int sector) const { return sums[std::size_t(sector)]; }
    int width(int sector) const { return widths[std::size_t(sector)]; }
    // The largest sum of the drawn sectors, never below 0: the full radius of the plot.
    qint32 maximum() const;

private:
    // One slot more than there are sectors: the plot angle 360 (compass -270) lands there.
    // It takes sums but is neither cleared nor drawn.
    std::array<qint32, SectorCount + 1> sums{};
    std::array<qint16, SectorCount + 1> widths{};
    qint16 last = 0;
};
