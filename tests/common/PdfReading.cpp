#include "common/PdfReading.h"

#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdlib>

namespace PdfReading {

namespace {

bool isNear(QRgb pixel, const QColor& colour, int tolerance) {
    return std::abs(qRed(pixel) - colour.red()) <= tolerance &&
           std::abs(qGreen(pixel) - colour.green()) <= tolerance &&
           std::abs(qBlue(pixel) - colour.blue()) <= tolerance;
}

const QRgb* row(const QImage& page, int y) {
    return reinterpret_cast<const QRgb*>(page.constScanLine(y));
}

// The first and last index whose count is at least half the largest; an empty range when
// there is no count at all.
std::pair<int, int> fullRange(const QList<int>& counts) {
    const int largest = counts.isEmpty() ? 0 : *std::max_element(counts.begin(), counts.end());
    int first = int(counts.size());
    int last = -1;
    for (int i = 0; largest > 0 && i < counts.size(); ++i) {
        if (counts[i] * 2 < largest)
            continue;
        first = std::min(first, i);
        last = i;
    }
    return {first, last};
}

} // namespace

QString toolOutput(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(30000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

// pdfimages -list prints two heading lines, then a line per image whose fourth and fifth
// fields are its width and height.
QList<QSize> imageSizes(const QString& path) {
    const QStringList lines = toolOutput(QStringLiteral("pdfimages"), {"-list", path}).split(u'\n');
    QList<QSize> sizes;
    for (const QString& line : lines.mid(2)) {
        const QStringList fields = line.simplified().split(u' ');
        if (fields.size() > 4)
            sizes << QSize(fields[3].toInt(), fields[4].toInt());
    }
    return sizes;
}

QString text(const QString& path) {
    return toolOutput(QStringLiteral("pdftotext"), {"-layout", path, "-"});
}

QImage firstPage(const QString& path) {
    QTemporaryDir folder;
    const QString stem = folder.filePath(QStringLiteral("page"));
    toolOutput(QStringLiteral("pdftoppm"),
               {"-r", "254", "-f", "1", "-l", "1", "-singlefile", "-png", path, stem});
    return QImage(stem + QStringLiteral(".png")).convertToFormat(QImage::Format_RGB32);
}

int pixelsNear(const QImage& page, const QRect& area, const QColor& colour, int tolerance) {
    const QRect inside = area & page.rect();
    int count = 0;
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            count += isNear(row(page, y)[x], colour, tolerance) ? 1 : 0;
    return count;
}

QRect inkedBounds(const QImage& page, const QRect& area) {
    const QRect inside = area & page.rect();
    QRect bounds;
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            if ((row(page, y)[x] & 0xffffff) != 0xffffff)
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}

QRect filledArea(const QImage& page, const QColor& colour) {
    QList<int> inRow(page.height(), 0);
    QList<int> inColumn(page.width(), 0);
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if (isNear(row(page, y)[x], colour, 16)) {
                ++inRow[y];
                ++inColumn[x];
            }
    const auto [top, bottom] = fullRange(inRow);
    const auto [left, right] = fullRange(inColumn);
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

} // namespace PdfReading
