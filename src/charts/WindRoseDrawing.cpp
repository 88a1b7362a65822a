#include "charts/WindRoseDrawing.h"

#include "charts/WindRose.h"
#include "core/NumberText.h"

#include <QPainter>
#include <cmath>

namespace WindRoseDrawing {

namespace {

constexpr double RadiansPerDegree = 0.017453292519943334;

// Half a side, as a whole pixel: an odd side rounds its half to even.
int half(int side) {
    return NumberText::roundToInt32(side / 2.0).value_or(0);
}

} // namespace

bool isHeadOrTail(int degree) {
    return (degree >= 76 && degree <= 104) || (degree >= 256 && degree <= 284);
}

void draw(QPainter& painter, const WindRose& rose, QSize size) {
    const qint32 maximum = rose.maximum();

    painter.save();
    // Spokes a degree apart are the picture: plain pixels keep each spoke its own colour.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRect(QPoint(0, 0), size), Background);

    const int cx = half(size.width());
    const int cy = half(size.height());
    const int radius = std::min(cx, cy);
    const QPointF centre(cx, cy);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Grid, 1));
    for (int ring = 1; ring <= 10; ++ring) {
        const double r = radius * ring / 10.0;
        painter.drawEllipse(centre, r, r);
    }
    painter.drawLine(QPointF(cx - radius, cy), QPointF(cx + radius, cy));
    painter.drawLine(QPointF(cx, cy - radius), QPointF(cx, cy + radius));

    // Each sector draws the degrees after its start: the sector of an angle of 12 draws 13
    // to 24. With no sums at all there are no spokes.
    int start = 0;
    for (int sector = 0; maximum > 0 && sector < WindRose::SectorCount; ++sector) {
        const int width = rose.width(sector);
        const double length = double(radius) * rose.sum(sector) / maximum;
        for (int degree = start + 1; degree <= start + width; ++degree) {
            painter.setPen(QPen(isHeadOrTail(degree) ? HeadOrTailWind : Crosswind, 1));
            const double dx = length * std::cos(degree * RadiansPerDegree);
            const double dy = length * std::sin(degree * RadiansPerDegree);
            painter.drawLine(centre, QPointF(cx + dx, cy - dy));
        }
        start += width;
    }

    const double needle = rose.lastAngle() * RadiansPerDegree;
    painter.setPen(QPen(Needle, 2));
    painter.drawLine(centre,
                     QPointF(cx + radius * std::cos(needle), cy - radius * std::sin(needle)));
    painter.restore();
}

} // namespace WindRoseDrawing
