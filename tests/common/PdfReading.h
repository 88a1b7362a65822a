#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

// A written PDF read back with poppler's tools, the way a reader of the file sees it, and the
// pixels of its first page.
namespace PdfReading {

// What a tool prints to its standard output.
QString toolOutput(const QString& program, const QStringList& arguments);

// The sizes, in their own pixels, of the images the file holds, as pdfimages lists them.
QList<QSize> imageSizes(const QString& path);

// The text of the file laid out as on its pages.
QString text(const QString& path);

// The first page at 254 dots an inch: a pixel is a tenth of a millimetre, the unit the page
// layouts are made in. A null image when it cannot be drawn.
QImage firstPage(const QString& path);

// The pixels of an area whose channels each lie within `tolerance` of a colour.
int pixelsNear(const QImage& page, const QRect& area, const QColor& colour, int tolerance);

// The smallest rectangle that holds every pixel of an area that is not white.
QRect inkedBounds(const QImage& page, const QRect& area);

// The rectangle of the rows and columns that hold at least half as many pixels near a colour
// as the fullest row and column: the area of a chart filled with it, without the sparse text
// beside it.
QRect filledArea(const QImage& page, const QColor& colour);

} // namespace PdfReading
