#include "pages/Drawing.h"

#include <QPainter>

Drawing::Drawing(const QPicture& commands, const QSizeF& surface)
    : commands(commands), surface(surface) {}

Drawing Drawing::record(const QSize& surface, const std::function<void(QPainter&)>& draw) {
    QPicture commands;
    QPainter painter(&commands);
    draw(painter);
    painter.end();
    return Drawing(commands, surface);
}

void Drawing::paint(QPainter& painter, const QRectF& target) const {
    if (surface.isEmpty())
        return;
    // A picture played on a device of finer resolution than the screen it was made for grows
    // by the ratio of the two, so that it keeps its size in inches: the page asks for its
    // size in the painter's units instead, and takes that growth back.
    const QPaintDevice& device = *painter.device();
    const double growthX = double(device.logicalDpiX()) / commands.logicalDpiX();
    const double growthY = double(device.logicalDpiY()) / commands.logicalDpiY();
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(target.width() / surface.width() / growthX,
                  target.height() / surface.height() / growthY);
    painter.drawPicture(QPointF(0, 0), commands);
    painter.restore();
}
