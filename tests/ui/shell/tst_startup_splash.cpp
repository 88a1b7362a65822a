#include "ui/shell/SplashScreen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

class TestSplash : public QObject {
    Q_OBJECT
private slots:
    void everyRunOfAnotherColourBelongsToTheShape() {
        // Key colour at (0,0); the rows hold runs of other colours, touching or apart.
        const QStringList rows = {
            "..##..#", "#.....#", ".......", "#######", ".#rr#..",
        };
        QImage picture(7, 5, QImage::Format_RGB32);
        for (int y = 0; y < rows.size(); ++y) {
            for (int x = 0; x < 7; ++x) {
                const QChar c = rows[y][x];
                picture.setPixel(x, y,
                                 c == u'.'   ? qRgb(255, 0, 255)
                                 : c == u'r' ? qRgb(200, 0, 0)
                                             : qRgb(0, 0, 0));
            }
        }
        const QRegion shape = SplashScreen::shapeOf(picture);
        const QList<QRect> expected = {QRect(2, 0, 2, 1), QRect(6, 0, 1, 1), QRect(0, 1, 1, 1),
                                       QRect(6, 1, 1, 1), QRect(0, 3, 7, 1), QRect(1, 4, 4, 1)};
        QRegion wanted;
        for (const QRect& r : expected)
            wanted += r;
        QCOMPARE(shape, wanted);
        for (int y = 0; y < rows.size(); ++y) {
            for (int x = 0; x < 7; ++x)
                QCOMPARE(shape.contains(QPoint(x, y)), rows[y][x] != u'.');
        }
    }

    void theKeyIsWhateverColourTheCornerHas() {
        QImage picture(3, 1, QImage::Format_RGB32);
        picture.setPixel(0, 0, qRgb(10, 20, 30));
        picture.setPixel(1, 0, qRgb(255, 0, 255));
        picture.setPixel(2, 0, qRgb(10, 20, 30));
        QCOMPARE(SplashScreen::shapeOf(picture), QRegion(1, 0, 1, 1));
    }

    void theSplashIsShapedByItsPicture() {
        SplashScreen splash;
        QCOMPARE(splash.objectName(), QString("frmSplash"));
        const QImage& skin = splash.skinImage();
        QVERIFY(!skin.isNull());
        QCOMPARE(splash.size(), skin.size());
        QCOMPARE(splash.mask(), SplashScreen::shapeOf(skin));
        QVERIFY(!splash.mask().contains(QPoint(0, 0)));
        QVERIFY(splash.mask().contains(skin.rect().center()));
        QVERIFY(splash.mask() != QRegion(skin.rect()));
        QVERIFY(splash.windowFlags() & Qt::FramelessWindowHint);
    }

    void theSplashIsCentredOnTheScreen() {
        SplashScreen splash;
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QCOMPARE(splash.geometry().center(), screen.center());
    }

    void thePointerIsAnHourglassWhileTheSplashLives() {
        QVERIFY(!QGuiApplication::overrideCursor());
        {
            SplashScreen splash;
            splash.show();
            QVERIFY(QGuiApplication::overrideCursor());
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        }
        QVERIFY(!QGuiApplication::overrideCursor());
    }
};

QTEST_MAIN(TestSplash)
#include "tst_startup_splash.moc"
