#include "pages/PagePainter.h"

#include "pages/PageFonts.h"

#include <QPaintDevice>
#include <QPainter>

namespace {

// A font as large on the page as its points say, though the painter draws in tenths of a
// millimetre: the device turns points into its own dots before the page's scale applies.
QFont scaledFont(const PageDocument::Style& style, const QPaintDevice& device) {
    QFont font = PageFonts::font(style);
    font.setPointSizeF(style.fontSize * 254.0 / device.logicalDpiY());
    return font;
}

QPen pen(const PageDocument::Style& style) {
    QPen pen(style.pen, style.penSize, style.penStyle);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

void drawItem(QPainter& painter, const PageDocument::Item& item) {
    const PageDocument::Style& style = item.style;
    switch (item.kind) {
    case PageDocument::Item::Kind::Text:
        if (style.backgroundShown)
            painter.fillRect(item.rect, style.background);
        if (item.framed) {
            painter.setPen(pen(style));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(item.rect);
        }
        painter.setPen(style.pen);
        painter.setFont(scaledFont(style, *painter.device()));
        painter.drawText(item.rect.adjusted(PageDocument::TextInset, PageDocument::TextInset,
                                            -PageDocument::TextInset, -PageDocument::TextInset),
                         int(style.alignment | Qt::AlignTop |
                             (style.wrap ? Qt::TextWordWrap : Qt::TextDontClip)),
                         item.text);
        break;
    case PageDocument::Item::Kind::Frame:
        painter.setPen(pen(style));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(item.rect);
        break;
    case PageDocument::Item::Kind::Picture:
        item.picture.paint(painter, item.rect);
        break;
    }
}

} // namespace

void drawPage(QPainter& painter, const PageDocument& document, int page, const QRectF& target) {
    const QSizeF size = document.pageSize();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.translate(target.topLeft());
    painter.scale(target.width() / size.width(), target.height() / size.height());
    painter.fillRect(QRectF(QPointF(), size), Qt::white);
    for (const PageDocument::Item& item : document.page(page))
        drawItem(painter, item);
    painter.restore();
}
