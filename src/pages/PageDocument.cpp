#include "pages/PageDocument.h"

#include "pages/PageFonts.h"

#include <QFontMetricsF>

namespace {

bool isReserved(double value) {
    return value == PageDocument::Free || value == PageDocument::LastTop ||
           value == PageDocument::LastRight || value == PageDocument::LastBottom;
}

// Texts are measured on a device of 254 dots an inch, where a dot is a tenth of a millimetre.
const QImage& measuringDevice() {
    static const QImage device = [] {
        QImage image(1, 1, QImage::Format_RGB32);
        image.setDotsPerMeterX(10000);
        image.setDotsPerMeterY(10000);
        return image;
    }();
    return device;
}

} // namespace

PageDocument::PageDocument(const QSizeF& pageSize, const QRectF& outputRect)
    : size(pageSize), output(outputRect), pages{Page()}, last(outputRect.topLeft(), QSizeF()) {
    PageFonts::install();
}

void PageDocument::restoreStyle(int number) {
    if (const auto found = stored.constFind(number); found != stored.cend())
        current = *found;
}

QRectF PageDocument::writeText(double left, double top, double right, double bottom,
                               const QString& text) {
    return this->text(left, top, right, bottom, text, false);
}

QRectF PageDocument::writeBox(double left, double top, double right, double bottom,
                              const QString& text) {
    return this->text(left, top, right, bottom, text, true);
}

// Where a text would go before any page break: its box from the edges and the text's size.
// The text is measured only for the edges left free, since long reports place many thousand
// boxes of fixed size.
QRectF PageDocument::textRect(double left, double top, double right, double bottom,
                              const QString& text) const {
    QSizeF content;
    if (right == Free || (bottom == Free && !current.wrap))
        content = textSize(text, current);
    // A box of fixed width wraps its text to the width, and a free height follows the lines.
    else if (bottom == Free) {
        const double width = resolve(left, top, right, top, {}).width() - 2 * TextInset;
        const QFontMetricsF metrics(PageFonts::font(current), &measuringDevice());
        content.setHeight(metrics
                              .boundingRect(QRectF(0, 0, qMax(width, 1.0), 1e9),
                                            int(Qt::TextWordWrap | current.alignment), text)
                              .height());
    }
    const QSizeF box = content + QSizeF(2 * TextInset, 2 * TextInset);
    return resolve(left, top, right, bottom, box);
}

QRectF PageDocument::text(double left, double top, double right, double bottom, const QString& text,
                          bool framed) {
    Item item;
    item.rect = place(textRect(left, top, right, bottom, text));
    item.framed = framed;
    item.text = text;
    return add(std::move(item));
}

QRectF PageDocument::drawFrame(double left, double top, double right, double bottom) {
    Item item;
    item.kind = Item::Kind::Frame;
    item.rect = place(resolve(left, top, right, bottom, {}));
    return add(std::move(item));
}

QRectF PageDocument::drawPicture(double left, double top, double right, double bottom,
                                 const Drawing& picture) {
    const QSizeF natural = picture.size() * 254 / 96;
    Item item;
    item.kind = Item::Kind::Picture;
    item.rect = place(resolve(left, top, right, bottom, natural));
    item.picture = picture;
    return add(std::move(item));
}

bool PageDocument::fits(double left, double top, double right, double bottom,
                        const QString& text) const {
    return !breaks(textRect(left, top, right, bottom, text));
}

void PageDocument::breakPage() {
    pages.append(Page());
    currentPage = int(pages.size()) - 1;
    last = QRectF(output.topLeft(), QSizeF(0, 0));
}

void PageDocument::setPage(int index) {
    currentPage = qBound(0, index, int(pages.size()) - 1);
}

QSizeF PageDocument::textSize(const QString& text, const Style& style) {
    const QFontMetricsF metrics(PageFonts::font(style), &measuringDevice());
    return metrics.boundingRect(QRectF(0, 0, 1e9, 1e9), int(style.alignment), text).size();
}

double PageDocument::edge(double value) const {
    if (value == LastTop)
        return last.top();
    if (value == LastRight)
        return last.right();
    if (value == LastBottom)
        return last.bottom();
    return value;
}

// The object's rectangle from its four edges; a free edge leaves the object its natural size.
QRectF PageDocument::resolve(double left, double top, double right, double bottom,
                             const QSizeF& natural) const {
    const double x = left == Free ? output.left() : edge(left);
    const double y = top == Free ? output.top() : edge(top);
    const auto extent = [this](double far, double near, double size) {
        if (far == Free)
            return size;
        if (far < 0 && !isReserved(far))
            return -far;
        return edge(far) - near;
    };
    return {x, y, extent(right, x, natural.width()), extent(bottom, y, natural.height())};
}

// An object that would cross the bottom of the output rectangle goes to the top of a new
// page. One that starts at the top already stays however tall it is: no page could hold it.
bool PageDocument::breaks(const QRectF& rect) const {
    return rect.bottom() > output.bottom() && rect.top() > output.top();
}

QRectF PageDocument::place(QRectF rect) {
    if (breaks(rect)) {
        pages.append(Page());
        currentPage = int(pages.size()) - 1;
        rect.moveTop(output.top());
    }
    return rect;
}

QRectF PageDocument::add(Item item) {
    item.style = current;
    last = item.rect;
    pages[currentPage].append(std::move(item));
    return last;
}
