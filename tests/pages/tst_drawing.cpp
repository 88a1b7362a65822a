// A drawing painted again on devices of any resolution, and a dial drawn by the wind gauge's
// own routine written on a chart's page: lines and text in the PDF, not an image.
#include "charts/WindGauge.h"
#include "common/PdfReading.h"
#include "pages/ChartPage.h"
#include "pages/Drawing.h"
#include "pages/PdfFile.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QColor Cyan(27, 250, 239);
const QColor Pointer(200, 0, 0);

// A white picture of the given resolution.
QImage sheet(int dotsPerInch) {
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(Qt::white);
    const int dotsPerMetre = qRound(dotsPerInch / 0.0254);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    return image;
}

} // namespace

class TestDrawing : public QObject {
    Q_OBJECT

private slots:
    // The surface fills the target however many dots an inch the device has: a picture that
    // kept its size in inches would spread past it on a fine device.
    void theSurfaceFillsItsTargetOnAnyDevice_data() {
        QTest::addColumn<int>("dotsPerInch");
        QTest::newRow("96") << 96;
        QTest::newRow("300") << 300;
        QTest::newRow("1200") << 1200;
    }
    void theSurfaceFillsItsTargetOnAnyDevice() {
        QFETCH(int, dotsPerInch);
        const Drawing drawing = Drawing::record(QSize(300, 200), [](QPainter& painter) {
            painter.fillRect(QRect(0, 0, 300, 200), Cyan);
        });
        QCOMPARE(drawing.size(), QSizeF(300, 200));
        QImage image = sheet(dotsPerInch);
        QCOMPARE(image.logicalDpiX(), dotsPerInch);
        QPainter painter(&image);
        drawing.paint(painter, QRectF(50, 40, 200, 100));
        painter.end();
        QCOMPARE(PdfReading::inkedBounds(image, image.rect()), QRect(50, 40, 200, 100));
        QCOMPARE(PdfReading::pixelsNear(image, image.rect(), Cyan, 0), 200 * 100);
    }

    void anEmptyDrawingPaintsNothing() {
        QImage image = sheet(96);
        QPainter painter(&image);
        Drawing().paint(painter, QRectF(50, 40, 200, 100));
        painter.end();
        QVERIFY(PdfReading::inkedBounds(image, image.rect()).isNull());
    }

    // The dial with its pointer on 90, to the right, on the page of a chart.
    void theGaugeGoesOnAPageAsLinesAndText() {
        const QSize surface(320, 320);
        const Drawing dial = Drawing::record(
            surface, [surface](QPainter& painter) { WindGauge::draw(painter, 5, surface); });
        const PageDocument page =
            ChartPage::layout(QStringLiteral("Wind Direction"), dial, {480, 480},
                              QDateTime(QDate(2026, 11, 25), QTime(14, 5, 9)));
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("dial.pdf"));
        QVERIFY(writePdf(page, path));

        QCOMPARE(PdfReading::imageSizes(path), QList<QSize>());
        const QString text = PdfReading::text(path);
        for (const char* label : {"Head Wind", "Tail Wind", "45", "90", "135", "225", "270", "315"})
            QVERIFY2(text.contains(QLatin1String(label)), qPrintable(text));

        // The page's pixels are its units; the dial fills the 48 mm square of the layout.
        const QImage pixels = PdfReading::firstPage(path);
        const QRect square = page.page(0).last().rect.toRect();
        QCOMPARE(square.size(), QSize(480, 480));
        const QRect below(0, square.top(), pixels.width(), pixels.height() - square.top());
        QVERIFY(square.adjusted(-2, -2, 2, 2).contains(PdfReading::inkedBounds(pixels, below)));
        const QPoint centre = square.center();
        const QRect rightOfCentre(centre + QPoint(30, -10), QSize(100, 20));
        const QRect leftOfCentre(centre + QPoint(-130, -10), QSize(100, 20));
        QVERIFY(PdfReading::pixelsNear(pixels, rightOfCentre, Pointer, 30) > 500);
        QCOMPARE(PdfReading::pixelsNear(pixels, leftOfCentre, Pointer, 30), 0);
    }
};

QTEST_MAIN(TestDrawing)
#include "tst_drawing.moc"
