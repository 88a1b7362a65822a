#pragma once

#include <QColor>
#include <QSize>
#include <QStringView>
#include <QtGlobal>
#include <array>

class QPainter;

// The wind gauge: a dial whose pointer rests on one of 17 marks, each a direction relative to
// the track, "Head Wind" at the top and "Tail Wind" at the bottom. The pointer shows the
// sector of the wind, not its exact direction.
namespace WindGauge {

struct Mark {
    QStringView label; // empty for the marks between the labelled ones
    double value;      // degrees clockwise from the top of the dial
};

// The marks by number, 1 to 17 at indexes 0 to 16. The first and the last lie together at the
// top; the last carries the "Head Wind" label.
extern const std::array<Mark, 17> Marks;
constexpr int MarkCount = 17;

// The mark a wind direction puts the pointer on. Up to 22.5 degrees it is the head wind mark;
// above that the direction is divided by whole steps of 22, which run ahead of the marks'
// 22.5, so 352 already reaches the head wind again. A direction above 373 gives a number past
// the last mark, which the dial does not take.
int markOf(qint32 direction);

inline const QColor Pointer{200, 0, 0};

// Draws the dial with its pointer on a mark (1 to 17) over the whole surface.
void draw(QPainter& painter, int mark, QSize size);

} // namespace WindGauge
