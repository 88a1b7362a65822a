#include "ui/output/PagePreview.h"

#include "pages/PageDocument.h"
#include "pages/PagePainter.h"

#include <QPainter>

PagePreview::PagePreview(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("VPE"));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PagePreview::showPage(const PageDocument& shown, int index, double zoom) {
    document = &shown;
    page = index;
    scale = zoom;
    resize(sizeHint());
    update();
}

// The page's size on paper at the screen's resolution, times the zoom.
QSize PagePreview::sizeHint() const {
    if (!document)
        return {};
    const double dotsPerUnit = scale * logicalDpiX() / 254.0;
    return (document->pageSize() * dotsPerUnit).toSize();
}

void PagePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark));
    if (document && page < document->pageCount())
        drawPage(painter, *document, page, QRectF(QPointF(), QSizeF(sizeHint())));
}
