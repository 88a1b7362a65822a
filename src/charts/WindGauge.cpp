#include "charts/WindGauge.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace WindGauge {

// clang-format off
const std::array<Mark, 17> Marks{{
    {u"", 0},      {u"", 22.5},  {u"45", 45},         {u"", 67.5},
    {u"90", 90},   {u"", 112.5}, {u"135", 135},       {u"", 157.5},
    {u"Tail Wind", 180},         {u"", 202.5},        {u"225", 225},
    {u"", 247.5},  {u"270", 270}, {u"", 292.5},       {u"315", 315},
    {u"", 337.5},  {u"Head Wind", 0},
}};
// clang-format on

int markOf(qint32 direction) {
    if (direction <= 22.5)
        return MarkCount;
    // The step is 22.5 taken as a whole number, ties to even.
    constexpr qint32 step = 22;
    return direction / step + 1;
}

namespace {

const QColor Face{245, 245, 245};
const QColor Rim{60, 60, 60};
const QColor Ticks{60, 60, 60};
const QColor Labels{20, 20, 20};

// The point at a distance from the centre in the direction of a value of the dial.
QPointF along(QPointF centre, double distance, double degrees) {
    const double radians = qDegreesToRadians(degrees);
    return centre + QPointF(distance * std::sin(radians), -distance * std::cos(radians));
}

} // namespace

void draw(QPainter& painter, int mark, QSize size) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);

    const QPointF centre(size.width() / 2.0, size.height() / 2.0);
    // The labels stand around the face; the face takes what is left of the shorter side.
    QFont font(QStringLiteral("Tahoma"));
    font.setPixelSize(std::max(8, std::min(size.width(), size.height()) / 18));
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    const double labelWidth = metrics.horizontalAdvance(QStringLiteral("Head Wind"));
    const double radius = std::max(4.0, std::min(size.width() / 2.0 - labelWidth * 0.6,
                                                 size.height() / 2.0 - metrics.height() * 1.6));

    painter.setPen(QPen(Rim, std::max(2.0, radius / 40)));
    painter.setBrush(Face);
    painter.drawEllipse(centre, radius, radius);

    for (const Mark& each : Marks) {
        const bool labelled = !each.label.isEmpty();
        painter.setPen(QPen(Ticks, labelled ? 3 : 1.5));
        painter.drawLine(along(centre, radius * (labelled ? 0.82 : 0.88), each.value),
                         along(centre, radius * 0.97, each.value));
        if (!labelled)
            continue;
        const QString text = each.label.toString();
        const QPointF at = along(centre, radius + metrics.height() * 0.9, each.value);
        QRectF box(QPointF(), QSizeF(metrics.horizontalAdvance(text) + 2, metrics.height()));
        box.moveCenter(at);
        painter.setPen(Labels);
        painter.drawText(box, Qt::AlignCenter, text);
    }

    // A pointer that rests only on a mark of the dial: a narrow blade with a hub.
    if (mark >= 1 && mark <= MarkCount) {
        const double value = Marks[std::size_t(mark - 1)].value;
        const double blade = std::max(3.0, radius / 16);
        QPainterPath pointer;
        pointer.moveTo(along(centre, radius * 0.8, value));
        pointer.lineTo(along(centre, blade, value + 90));
        pointer.lineTo(along(centre, radius * 0.15, value + 180));
        pointer.lineTo(along(centre, blade, value - 90));
        pointer.closeSubpath();
        painter.setPen(Qt::NoPen);
        painter.setBrush(Pointer);
        painter.drawPath(pointer);
        painter.setBrush(Rim);
        painter.drawEllipse(centre, blade * 0.8, blade * 0.8);
    }
    painter.restore();
}

} // namespace WindGauge
