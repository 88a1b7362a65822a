#pragma once

#include "pages/Drawing.h"

#include <QColor>
#include <QList>
#include <QMap>
#include <QRectF>
#include <QSizeF>
#include <QString>

// A paged document as the program's printed pages are built: boxes of text, frames and
// pictures placed one after another in tenths of a millimetre, top left of the page at 0, 0.
// The layouts place each object by its edges; the edges may name the object placed last
// (LastTop, LastRight, LastBottom) or leave a size to the text (Free), and a right or bottom
// edge below zero is a size rather than an edge (-170 is 17 mm). An object that would cross
// the bottom of the output rectangle goes to the top of the output rectangle of a new page.
// The document holds what was placed, page by page; drawPage paints it and writePdf writes it.
class PageDocument {
public:
    static constexpr double Free = -2147483549;
    static constexpr double LastTop = -2147483551;
    static constexpr double LastRight = -2147483554;
    static constexpr double LastBottom = -2147483555;

    // What the next objects are drawn with. A layout changes it piece by piece, and can keep
    // a whole style under a number and take it back later.
    struct Style {
        QString fontFamily = QStringLiteral("Tahoma");
        double fontSize = 10; // points
        Qt::Alignment alignment = Qt::AlignLeft;
        QColor background = Qt::white;
        bool backgroundShown = false; // boxes are filled with the background colour
        QColor pen = Qt::black;
        double penSize = 3;                    // tenths of a millimetre
        Qt::PenStyle penStyle = Qt::SolidLine; // of frames and lines
        // A text too wide for its box goes on over further lines; without wrapping it stays
        // on its line and may reach past the box's edges.
        bool wrap = true;
    };

    struct Item {
        enum class Kind { Text, Frame, Picture };
        Kind kind = Kind::Text;
        QRectF rect;         // tenths of a millimetre on its page
        bool framed = false; // a text drawn in a box
        QString text;
        Drawing picture;
        Style style;
    };
    using Page = QList<Item>;

    // Title, author, creator, subject and keywords of the document.
    struct Metadata {
        QString title;
        QString author;
        QString creator;
        QString subject;
        QString keywords;
    };

    // A page of the given size with objects kept inside the output rectangle; both in tenths
    // of a millimetre.
    PageDocument(const QSizeF& pageSize, const QRectF& outputRect);

    Metadata metadata;

    QSizeF pageSize() const { return size; }
    QRectF outputRect() const { return output; }

    Style& style() { return current; }
    void storeStyle(int number) { stored[number] = current; }
    // A number never stored leaves the style as it is.
    void restoreStyle(int number);

    // Each places one object and returns where it went, on the page that now is the last. A
    // box is a text with a frame around it.
    QRectF writeText(double left, double top, double right, double bottom, const QString& text);
    QRectF writeBox(double left, double top, double right, double bottom, const QString& text);
    QRectF drawFrame(double left, double top, double right, double bottom);
    // A picture whose right or bottom edge is free takes the size of its surface on a screen
    // of 96 dots an inch.
    QRectF drawPicture(double left, double top, double right, double bottom,
                       const Drawing& picture);

    // Whether a text placed here, in the current style and without a frame, would stay on the
    // page it starts on: false when writing it would begin a new page.
    bool fits(double left, double top, double right, double bottom, const QString& text) const;
    // Starts a new page; the next object measures from the top left of its output rectangle.
    void breakPage();
    // The objects placed next go on this page, until a page break or the next call. Used to
    // add to pages already laid out, such as their numbers once the count is known.
    void setPage(int index);

    int pageCount() const { return int(pages.size()); }
    const Page& page(int index) const { return pages.at(index); }
    // The edges of the object placed last; the top left of the output rectangle before any.
    QRectF lastRect() const { return last; }

    // A text's size in tenths of a millimetre in the given style, without the inset that a
    // box adds around it.
    static QSizeF textSize(const QString& text, const Style& style);
    // How far a box's text stands from its edges.
    static constexpr double TextInset = 7.5;

private:
    QRectF resolve(double left, double top, double right, double bottom,
                   const QSizeF& natural) const;
    bool breaks(const QRectF& rect) const;
    QRectF place(QRectF rect);
    double edge(double value) const;
    QRectF textRect(double left, double top, double right, double bottom,
                    const QString& text) const;
    QRectF text(double left, double top, double right, double bottom, const QString& text,
                bool framed);
    QRectF add(Item item);

    QSizeF size;
    QRectF output;
    QList<Page> pages;
    int currentPage = 0;
    QRectF last;
    Style current;
    QMap<int, Style> stored;
};
