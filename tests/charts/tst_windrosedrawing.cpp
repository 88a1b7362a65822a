// The picture of the wind rose, read back pixel by pixel: the rings and the cross, the fans of
// spokes in the colour of their direction, the needle, and a plot that stays round.
#include "charts/WindRose.h"
#include "charts/WindRoseDrawing.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <cmath>

namespace {

const QColor White(255, 255, 255);
const QColor Green(10, 200, 10);
const QColor Blue(10, 10, 200);
const QColor Rings(228, 114, 114);
const QColor Red(255, 0, 0);

QImage picture(const WindRose& rose, QSize size = QSize(301, 301)) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    WindRoseDrawing::draw(painter, rose, size);
    return image;
}

// The point at a distance from (cx, cy) along a plot angle: anticlockwise from the right,
// with y growing down the image.
QPoint along(QPoint centre, double distance, double degrees) {
    const double radians = degrees * M_PI / 180;
    return QPoint(int(std::lround(centre.x() + distance * std::cos(radians))),
                  int(std::lround(centre.y() - distance * std::sin(radians))));
}

// The colours found within one pixel of a point.
QList<QColor> around(const QImage& image, QPoint at) {
    QList<QColor> colours;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            colours << image.pixelColor(at + QPoint(dx, dy));
    return colours;
}

QRect drawnArea(const QImage& image) {
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != White)
                area |= QRect(x, y, 1, 1);
    return area;
}

} // namespace

class TestWindRoseDrawing : public QObject {
    Q_OBJECT

    // 301 pixels: the centre is (150, 150) after rounding 150.5 to even, the radius 150.
    const QPoint centre{150, 150};
    const int radius = 150;

private slots:
    void degreesUpAndDownTheTrackAreHeadOrTailWind() {
        QVERIFY(!WindRoseDrawing::isHeadOrTail(75));
        QVERIFY(WindRoseDrawing::isHeadOrTail(76));
        QVERIFY(WindRoseDrawing::isHeadOrTail(90));
        QVERIFY(WindRoseDrawing::isHeadOrTail(104));
        QVERIFY(!WindRoseDrawing::isHeadOrTail(105));
        QVERIFY(!WindRoseDrawing::isHeadOrTail(255));
        QVERIFY(WindRoseDrawing::isHeadOrTail(256));
        QVERIFY(WindRoseDrawing::isHeadOrTail(284));
        QVERIFY(!WindRoseDrawing::isHeadOrTail(285));
        QVERIFY(!WindRoseDrawing::isHeadOrTail(0));
        QVERIFY(!WindRoseDrawing::isHeadOrTail(180));
        QVERIFY(!WindRoseDrawing::isHeadOrTail(360));
    }

    void withNothingSummedOnlyRingsCrossAndNeedleAreDrawn() {
        const QImage image = picture(WindRose());
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                QVERIFY2(
                    colour == White || colour == Rings || colour == Red,
                    qPrintable(QStringLiteral("%1,%2 is %3").arg(x).arg(y).arg(colour.name())));
            }
        // Ten rings, every fifteen pixels, seen at 45 degrees; nothing half way between them.
        for (int ring = 1; ring <= 10; ++ring) {
            QVERIFY(around(image, along(centre, radius * ring / 10.0, 45)).contains(Rings));
            QCOMPARE(image.pixelColor(along(centre, radius * (ring - 0.5) / 10.0, 45)), White);
        }
        // The cross, its arms as long as the radius.
        QCOMPARE(image.pixelColor(centre.x() - 100, centre.y()), Rings);
        QCOMPARE(image.pixelColor(centre.x(), centre.y() - 100), Rings);
        QCOMPARE(image.pixelColor(centre.x(), centre.y() + 140), Rings);
        // The needle starts on plot angle 0: to the right.
        QCOMPARE(image.pixelColor(centre.x() + 100, centre.y()), Red);
    }

    void aHeadWindDrawsUpInGreenATailWindDownInGreen() {
        WindRose rose;
        rose.addWind(10, 0);  // plot angle 90, sector 7: degrees 85 to 96
        rose.addWind(5, 180); // plot angle 270, sector 22: degrees 265 to 276
        rose.addWind(0, 45);  // the needle at plot angle 45, nothing added
        const QImage image = picture(rose);
        // The largest sum reaches the outer ring.
        QVERIFY(around(image, QPoint(centre.x(), centre.y() - 100)).contains(Green));
        QVERIFY(around(image, QPoint(centre.x(), centre.y() - 147)).contains(Green));
        QVERIFY(around(image, along(centre, 120, 88)).contains(Green));
        QVERIFY(!around(image, along(centre, 120, 88)).contains(Blue));
        // Half the sum, half the length.
        QVERIFY(around(image, QPoint(centre.x(), centre.y() + 60)).contains(Green));
        QVERIFY(!around(image, QPoint(centre.x(), centre.y() + 90)).contains(Green));
        QCOMPARE(image.pixelColor(centre.x(), centre.y() + 100), Rings);
    }

    void aCrosswindDrawsInBlue() {
        WindRose rose;
        rose.addWind(8, 270); // plot angle 180, sector 15: degrees 181 to 192
        rose.addWind(0, 0);
        const QImage image = picture(rose);
        const QList<QColor> fan = around(image, along(centre, 60, 186));
        QVERIFY(fan.contains(Blue));
        QVERIFY(!fan.contains(Green));
        // The opposite side has no spokes.
        QVERIFY(!around(image, along(centre, 60, 6)).contains(Blue));
    }

    void eachSectorDrawsTheDegreesAfterItsStart() {
        // Plot angle 359 is in the last sector, which draws 349 to 360: its last spoke lies
        // along the positive x axis.
        WindRose last;
        last.addWind(10, 91);
        last.addWind(0, 0);
        QVERIFY(around(picture(last), QPoint(centre.x() + 140, centre.y())).contains(Blue));
        // Plot angle 0 is in the first sector, which draws 1 to 12: none of it on the axis.
        WindRose first;
        first.addWind(10, 90);
        first.addWind(0, 0);
        const QImage image = picture(first);
        QVERIFY(!around(image, QPoint(centre.x() + 140, centre.y())).contains(Blue));
        QVERIFY(around(image, along(centre, 140, 6.5)).contains(Blue));
        // Plot angle 72 starts sector 6, drawn from 73 to 84: three blue degrees, then green.
        WindRose edge;
        edge.addWind(10, 18);
        edge.addWind(0, 270);
        const QImage fans = picture(edge);
        QVERIFY(around(fans, along(centre, 120, 74)).contains(Blue));
        QVERIFY(around(fans, along(centre, 120, 81)).contains(Green));
        QVERIFY(!around(fans, along(centre, 120, 81)).contains(Blue));
        QVERIFY(!around(fans, along(centre, 120, 70)).contains(Blue));
    }

    void theNeedleIsRedTwoPixelsWideAndFullLength() {
        WindRose rose;
        rose.addWind(0, 0); // plot angle 90: straight up
        const QImage image = picture(rose);
        int red = 0;
        for (int x = centre.x() - 5; x <= centre.x() + 5; ++x)
            red += image.pixelColor(x, centre.y() - 80) == Red;
        QCOMPARE(red, 2);
        QCOMPARE(image.pixelColor(centre.x(), centre.y() - 147), Red);
        QCOMPARE(image.pixelColor(centre.x() + 80, centre.y()), Rings);
    }

    void theNeedleLiesOverTheSpokes() {
        WindRose rose;
        rose.addWind(6, 0);
        const QImage image = picture(rose);
        QCOMPARE(image.pixelColor(centre.x(), centre.y() - 80), Red);
        QVERIFY(around(image, along(centre, 80, 86)).contains(Green));
    }

    void thePlotStaysRoundOnAFlatSurface() {
        WindRose rose;
        rose.addWind(10, 45);
        rose.addWind(3, 200);
        // 600 by 200: centre (300, 100), radius 100, from the shorter side.
        const QRect area = drawnArea(picture(rose, QSize(600, 200)));
        QVERIFY2(qAbs(area.width() - area.height()) <= 1,
                 qPrintable(QStringLiteral("%1 by %2").arg(area.width()).arg(area.height())));
        QVERIFY(qAbs(area.center().x() - 300) <= 1);
        QVERIFY(area.width() >= 199 && area.width() <= 202);
        // And on a tall one.
        const QRect tall = drawnArea(picture(rose, QSize(160, 500)));
        QVERIFY(qAbs(tall.width() - tall.height()) <= 1);
        QVERIFY(qAbs(tall.center().y() - 250) <= 1);
    }
};

QTEST_MAIN(TestWindRoseDrawing)
#include "tst_windrosedrawing.moc"
