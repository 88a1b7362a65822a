#pragma once

#include <QPicture>
#include <QSizeF>
#include <functional>

class QPainter;
class QRectF;

// A picture kept as the painting commands that made it rather than as pixels. Painted again on
// a printer or a PDF page it takes the full resolution of that device: its lines stay lines and
// its text stays text. The charts and the wind rose reach paper this way, each drawn by the
// same routine that draws it on the screen.
class Drawing {
public:
    Drawing() = default;
    // The commands painted on a surface of the given size, in the screen's pixels.
    Drawing(const QPicture& commands, const QSizeF& surface);

    // What `draw` paints on a surface of the given size.
    static Drawing record(const QSize& surface, const std::function<void(QPainter&)>& draw);

    QSizeF size() const { return surface; }

    // Paints the commands again so that the surface they were painted on fills `target`, in
    // the painter's units, on a device of any resolution.
    void paint(QPainter& painter, const QRectF& target) const;

private:
    QPicture commands;
    QSizeF surface;
};
