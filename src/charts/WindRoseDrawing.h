#pragma once

#include <QColor>
#include <QSize>

class QPainter;
class WindRose;

// The picture of the wind rose, drawn alike on the screen, the printer and a PDF page: ten
// rings and a cross, each sector a fan of spokes a degree apart as long as its sum against
// the largest one, and a red needle on the latest direction. The plot is round and fills the
// shorter side of the surface.
namespace WindRoseDrawing {

// The spokes that point up and down the track, within 14 degrees of it, and all others.
inline const QColor HeadOrTailWind{10, 200, 10};
inline const QColor Crosswind{10, 10, 200};
// The rings and the cross.
inline const QColor Grid{228, 114, 114};
inline const QColor Needle{255, 0, 0};
inline const QColor Background{Qt::white};

// Whether a whole degree of the plot is drawn as head or tail wind.
bool isHeadOrTail(int degree);

// Clears the surface of the given size and draws the rose on it.
void draw(QPainter& painter, const WindRose& rose, QSize size);

} // namespace WindRoseDrawing
