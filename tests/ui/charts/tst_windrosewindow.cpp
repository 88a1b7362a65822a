// The wind rose window as the main window shows it: its plot and labels, the readings and
// replayed rows it sums, its menu, Clear and Clear Views, print and PDF.
#include "../PredictionWindows.h"
#include "../PrintingDialogs.h"
#include "charts/WindRoseDrawing.h"
#include "common/PdfReading.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "ui/charts/ViewCommands.h"
#include "ui/charts/WindRoseWindow.h"

#include <QLabel>
#include <QMenu>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>

namespace {

using View = ViewTable::View;

const QColor White(255, 255, 255);
const QColor Green(10, 200, 10);
const QColor Blue(10, 10, 200);
const QColor Red(255, 0, 0);

struct RoseWindows : PredictionWindows {
    RoseWindows() {
        ViewCommands::add(main, station.views());
        main.resize(1200, 800);
        main.show();
    }
    WindRoseWindow* open() {
        run(QStringLiteral("miWindPlot"));
        return rose();
    }
    WindRoseWindow* rose() {
        return dynamic_cast<WindRoseWindow*>(station.views().at(View::RosePlot));
    }
    QMdiSubWindow* frame() { return qobject_cast<QMdiSubWindow*>(rose()->parentWidget()); }
};

WeatherRecord wind(qint32 direction, qint32 speed, qint32 gust = 0) {
    WeatherRecord w;
    w.ABP = 29.37f;
    w.Temp = 71.5f;
    w.VP = 0.329f;
    w.WD = direction;
    w.WS = speed;
    w.WG = gust;
    return w;
}

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

// The menu as "name:text", a separator as "-".
QStringList menuLines(QMenu* menu) {
    QStringList lines;
    for (QAction* action : menu->actions())
        lines << (action->isSeparator() ? QStringLiteral("-")
                                        : action->objectName() + u':' + action->text());
    return lines;
}

// Where the outer ring of the rose stands on a page that gives an inch of the screen so many
// tenths of a millimetre, from the plot's top left corner: the ring is round about the middle
// of the plot, its radius half the shorter side, and drawn a pixel wide.
QRectF ringOnPage(const WindRosePlot* plot, double unitsPerInch) {
    const int cx = qRound(plot->width() / 2.0);
    const int cy = qRound(plot->height() / 2.0);
    const int radius = std::min(cx, cy);
    const double scale = unitsPerInch / plot->logicalDpiX();
    return QRectF((cx - radius - 0.5) * scale, (cy - radius - 0.5) * scale,
                  (2 * radius + 1) * scale, (2 * radius + 1) * scale);
}

// The page of a PDF file holds the rose drawn in lines: no image, the outer ring at its size,
// the green spokes of the head wind and the red needle inside it. The page is looked at below
// `headingBottom`; with a `left`, the plot's left edge stands there.
void checkRose(const QString& path, const WindRosePlot* plot, double unitsPerInch,
               std::optional<int> left, int headingBottom) {
    QCOMPARE(PdfReading::imageSizes(path), QList<QSize>());
    const QImage page = PdfReading::firstPage(path);
    const QRect ink = PdfReading::inkedBounds(
        page, QRect(0, headingBottom, page.width(), page.height() - headingBottom));
    const QRectF ring = ringOnPage(plot, unitsPerInch);
    const QString found = QStringLiteral("%1, %2 %3 x %4")
                              .arg(ink.left())
                              .arg(ink.top())
                              .arg(ink.width())
                              .arg(ink.height());
    QVERIFY2(!left || std::abs(ink.left() - (*left + ring.left())) <= 3, qPrintable(found));
    QVERIFY2(std::abs(ink.width() - ring.width()) <= 4, qPrintable(found));
    QVERIFY2(std::abs(ink.height() - ring.height()) <= 4, qPrintable(found));
    QVERIFY(PdfReading::pixelsNear(page, ink, Green, 60) > 100);
    QVERIFY(PdfReading::pixelsNear(page, ink, Red, 60) > 50);
    QCOMPARE(PdfReading::pixelsNear(page, ink, Blue, 60), 0);
}

} // namespace

class TestWindRoseWindow : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home;
    std::unique_ptr<PrintingDialogs> dialogs;

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<PrintingDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void theWindPlotCommandShowsTheRose() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        QVERIFY(rose);
        QCOMPARE(rose->objectName(), QStringLiteral("frmRosePlot"));
        QCOMPARE(windows.frame()->windowTitle(), QStringLiteral("Rose Plot"));
        auto* plot = rose->findChild<WindRosePlot*>(QStringLiteral("plot"));
        QVERIFY(plot);
        QCOMPARE(plot->size(), rose->size());
        QCOMPARE(plot->picture().size(), plot->size());
        // A second command brings the same window to the front.
        windows.run(QStringLiteral("miWindPlot"));
        QCOMPARE(windows.rose(), rose);
        QCOMPARE(windows.main.mdiArea()->subWindowList().size(), 1);
    }

    void headWindAtTheTopTailWindAtTheFoot() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.frame()->resize(500, 420);
        QCoreApplication::processEvents();
        auto* head = rose->findChild<QLabel*>(QStringLiteral("lblHeadWind"));
        auto* tail = rose->findChild<QLabel*>(QStringLiteral("lblTailWind"));
        QVERIFY(head && tail);
        QCOMPARE(head->text(), QStringLiteral("Head Wind"));
        QCOMPARE(tail->text(), QStringLiteral("Tail Wind"));
        QCOMPARE(head->y(), 0);
        QCOMPARE(tail->geometry().bottom(), rose->plot()->geometry().bottom());
        QCOMPARE(head->width(), rose->plot()->width());
        QCOMPARE(tail->width(), rose->plot()->width());
        QVERIFY(head->isVisible() && tail->isVisible());
    }

    void aReadingSetsTheCaptionAndAddsTheSpeedToItsSector() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(185, 7, 12), QString());
        QCOMPARE(windows.frame()->windowTitle(),
                 QStringLiteral("Wind Direction: 185 deg  Wind Speed: 7 MPH  Gust: 12 MPH"));
        // 90 - 185 = -95, so 265: sector 22.
        QCOMPARE(rose->rose().sum(22), 7);
        QCOMPARE(rose->rose().lastAngle(), qint16(265));
        windows.station.views().showReading(wind(185, 4), QString());
        QCOMPARE(rose->rose().sum(22), 11);
        QCOMPARE(rose->sumAt(265), 11.0f);
    }

    void theSectorsOfTheCompass() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        rose->addWind(10, 90);
        QCOMPARE(rose->sumAt(0), 10.0f);
        rose->addWind(5, 91);
        QCOMPARE(rose->sumAt(359), 5.0f);
        QCOMPARE(rose->rose().sum(29), 5);
        rose->addWind(3, 0);
        rose->addWind(4, 360);
        QCOMPARE(rose->rose().sum(7), 7);
        // sumAt takes a plot angle: 90 is where compass 0 went.
        QCOMPARE(rose->sumAt(90), 7.0f);
    }

    void eachNewSumRedrawsAndARepaintDoesNot() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        QCoreApplication::processEvents();
        const int before = rose->plot()->drawCount();
        windows.station.views().showReading(wind(0, 10), QString());
        QCOMPARE(rose->plot()->drawCount(), before + 1);
        rose->plot()->repaint();
        windows.frame()->update();
        QCoreApplication::processEvents();
        QCOMPARE(rose->plot()->drawCount(), before + 1);
        rose->clearSums();
        QCOMPARE(rose->plot()->drawCount(), before + 2);
        windows.frame()->resize(windows.frame()->size() + QSize(30, 10));
        QCoreApplication::processEvents();
        QCOMPARE(rose->plot()->drawCount(), before + 3);
    }

    void theScreenShowsThePictureKept() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(0, 10), QString());
        windows.station.views().showReading(wind(90, 4), QString());
        QCoreApplication::processEvents();
        const QImage shown = rose->plot()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(shown, rose->plot()->picture().convertToFormat(QImage::Format_RGB32));
    }

    void headWindGreenCrosswindBlueNeedleRed() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.frame()->resize(500, 500);
        QCoreApplication::processEvents();
        windows.station.views().showReading(wind(0, 10), QString());   // up the plot
        windows.station.views().showReading(wind(270, 10), QString()); // to the left
        windows.station.views().showReading(wind(135, 0), QString());  // the needle, down right
        const QImage image = rose->plot()->picture();
        const QPoint centre(qRound(image.width() / 2.0), qRound(image.height() / 2.0));
        const int radius = std::min(centre.x(), centre.y());
        const int half = radius / 2;
        QVERIFY(around(image, centre - QPoint(0, half)).contains(Green));
        QVERIFY(!around(image, centre - QPoint(0, half)).contains(Blue));
        // Plot angle 180 is the last of sector 15, which draws 181 to 192: just below the axis.
        const QPoint crosswind = centre + QPoint(-qRound(half * 0.9945), qRound(half * 0.1045));
        QVERIFY(around(image, crosswind).contains(Blue));
        QVERIFY(!around(image, crosswind).contains(Green));
        // Plot angle -45, so 315: down and to the right.
        QVERIFY(around(image, centre + QPoint(half * 7 / 10, half * 7 / 10)).contains(Red));
        // A calm reading adds nothing: the lower right quarter has no spokes.
        QVERIFY(!around(image, centre + QPoint(half * 7 / 10, half * 7 / 10)).contains(Blue));
    }

    void withNothingSummedOnlyRingsCrossAndNeedle() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(45, 0), QString());
        const QImage image = rose->plot()->picture().convertToFormat(QImage::Format_RGB32);
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                colours << image.pixel(x, y);
        QCOMPARE(colours, QSet<QRgb>({White.rgb(), WindRoseDrawing::Grid.rgb(), Red.rgb()}));
    }

    void thePlotStaysRoundInAFlatWindow() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(200, 9), QString());
        windows.frame()->resize(760, 230);
        QCoreApplication::processEvents();
        const QImage image = rose->plot()->picture();
        QCOMPARE(image.size(), rose->plot()->size());
        QVERIFY(image.width() > 2 * image.height());
        const QRect area = drawnArea(image);
        QVERIFY2(qAbs(area.width() - area.height()) <= 1,
                 qPrintable(QStringLiteral("%1 by %2").arg(area.width()).arg(area.height())));
        QVERIFY(qAbs(area.height() - image.height()) <= 1);
    }

    void theOptionsMenuOpensOnTheRightButton() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        auto* menu = rose->findChild<QMenu*>(QStringLiteral("miOptions"));
        QVERIFY(menu);
        QCOMPARE(menu->title(), QStringLiteral("Options"));
        QCOMPARE(menuLines(menu), QStringList({"miPrint:Print", "mnuPDFExport:PDF Export...", "-",
                                               "miClear:Clear"}));
        QTest::mouseClick(rose->plot(), Qt::LeftButton, {}, QPoint(20, 20));
        QVERIFY(!menu->isVisible());
        QTest::mousePress(rose->plot(), Qt::RightButton, {}, QPoint(20, 20));
        QVERIFY(menu->isVisible());
        menu->close();
    }

    void clearEmptiesTheSectorsAndLeavesTheNeedle() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(0, 10), QString());
        windows.station.views().showReading(wind(90, 6), QString());
        rose->optionsMenu()->findChild<QAction*>(QStringLiteral("miClear"))->trigger();
        QCOMPARE(rose->sumAt(90), 0.0f);
        QCOMPARE(rose->sumAt(0), 0.0f);
        QCOMPARE(rose->rose().lastAngle(), qint16(0));
        const QImage image = rose->plot()->picture();
        const QPoint centre(qRound(image.width() / 2.0), qRound(image.height() / 2.0));
        QCOMPARE(image.pixelColor(centre + QPoint(std::min(centre.x(), centre.y()) / 2, 0)), Red);
        QVERIFY(!around(image, centre - QPoint(0, centre.y() / 2)).contains(Green));
    }

    void clearViewsClearsTheRose() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(10, 10), QString());
        windows.run(QStringLiteral("miClearViews"));
        QCOMPARE(rose->sumAt(80), 0.0f);
        QCOMPARE(rose->rose().lastAngle(), qint16(80));
    }

    void aReplayedRowAddsItsSpeedButLeavesTheCaption() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(0, 2), QString());
        const QString caption = windows.frame()->windowTitle();
        windows.station.views().addLoggedRow(wind(180, 9), 0.5f, 1.0f);
        QCOMPARE(rose->sumAt(270), 9.0f);
        QCOMPARE(rose->rose().lastAngle(), qint16(270));
        QCOMPARE(windows.frame()->windowTitle(), caption);
    }

    // A replayed day is drawn once, when the replay ends, not for each row.
    void aReplayIsDrawnOnceAtItsEnd() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        const int draws = rose->plot()->drawCount();
        for (int row = 0; row < 50; ++row)
            windows.station.views().addLoggedRow(wind(180, 2), row / 100.0f, 1.0f);
        QCOMPARE(rose->plot()->drawCount(), draws);
        windows.station.views().endOfReplay();
        QCOMPARE(rose->plot()->drawCount(), draws + 1);
        QCOMPARE(rose->sumAt(270), 100.0f);
    }

    void aDirectionBeyondSixteenBitsLeavesTheRoseAlone() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(0, 3), QString());
        const int draws = rose->plot()->drawCount();
        windows.station.views().showReading(wind(40000, 5), QString());
        QCOMPARE(windows.frame()->windowTitle(),
                 QStringLiteral("Wind Direction: 40000 deg  Wind Speed: 5 MPH  Gust: 0 MPH"));
        QCOMPARE(rose->rose().lastAngle(), qint16(90));
        QCOMPARE(rose->plot()->drawCount(), draws);
    }

    void anOverflowingSumIsNotRedrawn() {
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        rose->addWind(2e9f, 0);
        const int draws = rose->plot()->drawCount();
        rose->addWind(2e9f, 0);
        QCOMPARE(rose->sumAt(90), 2e9f);
        QCOMPARE(rose->plot()->drawCount(), draws);
    }

    void aReopenedRoseStartsAfresh() {
        RoseWindows windows;
        windows.open();
        windows.station.views().showReading(wind(0, 10), QString());
        windows.frame()->close();
        QCoreApplication::processEvents();
        QVERIFY(!windows.station.views().isOpen(View::RosePlot));
        windows.station.views().showReading(wind(0, 10), QString());
        WindRoseWindow* again = windows.open();
        QCOMPARE(again->sumAt(90), 0.0f);
        QCOMPARE(windows.frame()->windowTitle(), QStringLiteral("Rose Plot"));
    }

    void printPutsThePictureOnALandscapePage() {
        QTemporaryDir folder;
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(0, 10), QString());
        dialogs->printTo = folder.filePath(QStringLiteral("printed.pdf"));
        dialogs->queuePrinter(true);
        windows.run(QStringLiteral("miPrint"));
        QCOMPARE(dialogs->quietPrintRequests, 1);
        QCOMPARE(dialogs->printRequests, 0);
        QVERIFY(QFile::exists(dialogs->printTo));
        const QString info = PdfReading::toolOutput(QStringLiteral("pdfinfo"), {dialogs->printTo});
        const QRegularExpression size(QStringLiteral("Page size:\\s+([\\d.]+) x ([\\d.]+)"));
        const QRegularExpressionMatch match = size.match(info);
        QVERIFY(match.hasMatch());
        QVERIFY(match.captured(1).toDouble() > match.captured(2).toDouble());
        // The rose at its size on the screen.
        checkRose(dialogs->printTo, rose->plot(), 254, std::nullopt, 0);
    }

    void pdfExportWritesTheRoseOnAPageOfItsOwn() {
        QTemporaryDir folder;
        RoseWindows windows;
        WindRoseWindow* rose = windows.open();
        windows.station.views().showReading(wind(0, 10), QString());
        const QString chosen = folder.filePath(QStringLiteral("rose"));
        dialogs->queueFile(chosen);
        rose->optionsMenu()->findChild<QAction*>(QStringLiteral("mnuPDFExport"))->trigger();
        QCOMPARE(dialogs->fileRequests.size(), 1);
        const Dialogs::FileRequest& request = dialogs->fileRequests.first();
        QVERIFY(request.save);
        QCOMPARE(request.title, QStringLiteral("PDF Rose Plot Export"));
        QCOMPARE(request.fileName,
                 QStringLiteral("Rose Plot ") + QDate::currentDate().toString("yyyy-MM-dd"));
        const QString path = chosen + QStringLiteral(".pdf");
        QVERIFY(QFile::exists(path));
        const QString info = PdfReading::toolOutput(QStringLiteral("pdfinfo"), {path});
        QVERIFY2(
            info.contains(QRegularExpression(QStringLiteral("Title:\\s+Tarnwick - Rose Plot\\n"))),
            qPrintable(info));
        QVERIFY(info.contains(QRegularExpression(QStringLiteral("Subject:\\s+Rose Plot\\n"))));
        const QString text = PdfReading::text(path);
        QVERIFY2(
            text.contains(
                QLocale(QLocale::English).toString(QDate::currentDate(), QStringLiteral("MMMM"))),
            qPrintable(text));
        // 10 mm from the left edge under the heading, at a tenth of its size in twips.
        checkRose(path, rose->plot(), 144, 100, 180);
    }

    void pdfExportCancelledWritesNothing() {
        QTemporaryDir folder;
        RoseWindows windows;
        windows.open();
        dialogs->queueFile(QString());
        windows.run(QStringLiteral("miPDFExport"));
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QVERIFY(QDir(folder.path()).isEmpty());
    }
};

QTEST_MAIN(TestWindRoseWindow)
#include "tst_windrosewindow.moc"
