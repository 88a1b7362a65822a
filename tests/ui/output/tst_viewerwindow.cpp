#include "../PredictionWindows.h"
#include "../PrintingDialogs.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "pages/PageDocument.h"
#include "ui/output/PagePreview.h"
#include "ui/output/ViewerWindow.h"

#include <QLabel>
#include <QMenu>
#include <QPrinter>
#include <QProcess>
#include <QScrollArea>
#include <QTest>

namespace {

const QString ViewKey = QStringLiteral("SOFTWARE\\Zorvane\\View\\ScreenSettings");
const QString ScreenKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\ScreenSettings");

QString pdfText(const QString& path) {
    QProcess process;
    process.start("pdftotext", {"-layout", path, "-"});
    process.waitForFinished(30000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

// How far apart two pictures of a page are, seen at a quarter of their size, beside how far
// the second is from blank paper: near 0 for the same page, near 1 or more for another.
double difference(const QImage& drawn, const QImage& printed) {
    const auto quarter = [](const QImage& image, const QSize& size) {
        return image.convertToFormat(QImage::Format_RGB32)
            .scaled(size / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage a = quarter(drawn, printed.size());
    const QImage b = quarter(printed, printed.size());
    QImage blank(b.size(), QImage::Format_RGB32);
    blank.fill(Qt::white);
    const auto distance = [](const QImage& one, const QImage& other) {
        double sum = 0;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x) {
                const QColor p = one.pixelColor(x, y);
                const QColor q = other.pixelColor(x, y);
                sum += qAbs(p.red() - q.red()) + qAbs(p.green() - q.green()) +
                       qAbs(p.blue() - q.blue());
            }
        return sum;
    };
    return distance(a, b) / distance(blank, b);
}

QList<ViewerWindow*> viewers(MainWindow& main) {
    QList<ViewerWindow*> list;
    for (QMdiSubWindow* child : main.mdiArea()->subWindowList())
        if (auto* viewer = qobject_cast<ViewerWindow*>(child->widget()))
            list << viewer;
    return list;
}

void addRuns(RaceLogWindow* log, int count) {
    for (int run = 1; run <= count; ++run) {
        if (run > 1)
            log->grid->newRun();
        setCells(log, run,
                 {{1, "02:35pm"}, {2, "11/22/26"}, {12, QString::number(9 + run / 1000.0)}});
    }
}

// Runs with every figure of a time slip, each written with the decimals its column shows,
// so that the page gives each back as it was typed. Returns the line each run makes in the
// times table, cells in their order.
QStringList addTimeSlips(RaceLogWindow* log, int count) {
    QStringList lines;
    for (int run = 1; run <= count; ++run) {
        if (run > 1)
            log->grid->newRun();
        const auto fixed = [run](double base, double step, int decimals) {
            return QString::number(base + run * step, 'f', decimals);
        };
        const QString lane = run % 2 ? QStringLiteral("L") : QStringLiteral("R");
        const QStringList figures{
            fixed(0.4, 0.001, 4),  fixed(0.5, 0.001, 3),  fixed(1.2, 0.0001, 4),
            fixed(3.5, 0.0001, 4), fixed(5.6, 0.0001, 4), fixed(120, 0.01, 2),
            fixed(7.4, 0.0001, 4), fixed(140, 0.01, 2),   fixed(9.0, 0.0001, 4),
            fixed(150, 0.01, 2),   fixed(1.5, 0.001, 3),  fixed(9.1, 0.01, 2)};
        const QList<int> columns{4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 17};
        setCells(log, run, {{1, "02:35pm"}, {2, "11/22/26"}, {3, lane}});
        for (int i = 0; i < columns.size(); ++i)
            log->grid->table().setCell(run, columns[i], figures[i]);
        // The reaction time is shown without its leading zero.
        lines << QStringLiteral("%1) 11-22 02:35p %2 %3 %4")
                     .arg(run)
                     .arg(lane, figures[0].mid(1), figures.mid(1).join(' '));
    }
    return lines;
}

void rowCommand(RaceLogWindow* log, const char* name) {
    log->grid->rowMenu()->findChild<QAction*>(QLatin1String(name))->trigger();
}

} // namespace

class TestViewerWindow : public QObject {
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

    void theRaceLogCommandShowsTheTimesTable() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 2);
        log->sidePanel->pageIdentifierField->setText(QStringLiteral("Red"));
        const QString date = log->sidePanel->dateField->text();
        rowCommand(log, "miRaceLog");
        const QList<ViewerWindow*> shown = viewers(windows.main);
        QCOMPARE(shown.size(), 1);
        ViewerWindow* viewer = shown.first();
        QCOMPARE(viewer->objectName(), QStringLiteral("frmVPE"));
        QCOMPARE(viewer->windowTitle(), QStringLiteral("Red ") + date);
        QVERIFY(viewer->findChild<PagePreview*>(QStringLiteral("VPE")));
        const PageDocument::Page& page = viewer->document().page(0);
        QCOMPARE(page[15].text, QStringLiteral("RUN"));
        QCOMPARE(page[30].text, QStringLiteral("1)  11-22"));
        QCOMPARE(viewer->findChild<QLabel*>(QStringLiteral("lblPage"))->text(),
                 QStringLiteral("Page 1 of 1"));
    }

    void theIncrementalTimesCommandShowsTheirTable() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        setCells(log, 1, {{6, "1.3"}, {7, "3.8"}, {8, "6"}, {10, "7.9"}, {12, "9.5"}});
        rowCommand(log, "miIncrementalTimes");
        ViewerWindow* viewer = viewers(windows.main).value(0);
        QVERIFY(viewer);
        QCOMPARE(viewer->document().page(0)[6].text, QStringLiteral("RUN"));
        QCOMPARE(viewer->document().page(0)[17].text, QStringLiteral("5.7000"));
    }

    // A second display replaces the viewer: the page shown before is gone.
    void aSecondDisplayReplacesTheViewer() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 150);
        rowCommand(log, "miRaceLog");
        ViewerWindow* first = viewers(windows.main).value(0);
        first->lastPage();
        QVERIFY(first->currentPage() > 1);
        rowCommand(log, "miRaceLog");
        const QList<ViewerWindow*> shown = viewers(windows.main);
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.first()->currentPage(), 1);
    }

    void thePageCommandsStayWithinThePages() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 150);
        rowCommand(log, "miRaceLog");
        ViewerWindow* viewer = viewers(windows.main).value(0);
        const int count = viewer->pageCount();
        QVERIFY(count >= 3);
        viewer->previousPage();
        QCOMPARE(viewer->currentPage(), 1);
        viewer->nextPage();
        QCOMPARE(viewer->currentPage(), 2);
        viewer->lastPage();
        QCOMPARE(viewer->currentPage(), count);
        viewer->nextPage();
        QCOMPARE(viewer->currentPage(), count);
        QCOMPARE(viewer->findChild<QLabel*>(QStringLiteral("lblPage"))->text(),
                 QStringLiteral("Page %1 of %1").arg(count));
        viewer->findChild<QAction*>(QStringLiteral("FirstPage"))->trigger();
        QCOMPARE(viewer->currentPage(), 1);
    }

    // The keys of the page and zoom tools act on the viewer that holds the focus.
    void theKeysPageAndZoomTheViewerInFocus() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 150);
        rowCommand(log, "miRaceLog");
        ViewerWindow* viewer = viewers(windows.main).value(0);
        windows.main.show();
        QVERIFY(QTest::qWaitForWindowActive(&windows.main));
        auto* area = viewer->findChild<QScrollArea*>();
        area->setFocus();
        QTRY_VERIFY(area->hasFocus());
        QTest::keyClick(area, Qt::Key_PageDown);
        QCOMPARE(viewer->currentPage(), 2);
        QTest::keyClick(area, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(viewer->currentPage(), viewer->pageCount());
        QTest::keyClick(area, Qt::Key_PageUp);
        QCOMPARE(viewer->currentPage(), viewer->pageCount() - 1);
        QTest::keyClick(area, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(viewer->currentPage(), 1);
        const double scale = viewer->scale();
        QTest::keyClick(area, Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(viewer->scale(), scale - 0.25);
        // Outside the viewer the keys are the log's own.
        log->grid->setFocus();
        QTRY_VERIFY(log->grid->hasFocus());
        QTest::keyClick(log->grid, Qt::Key_PageDown);
        QCOMPARE(viewer->currentPage(), 1);
    }

    void theZoomIsReadKeptWithinItsLimitsAndStored() {
        const QList<QPair<QString, double>> cases{{"abc", 1.0}, {"7", 4.0}, {"0.1", 0.25}};
        for (const auto& [stored, scale] : cases) {
            Registry::set(ScreenKey, QStringLiteral("Scale"), stored);
            ViewerWindow viewer(Viewers::Kind::Pages, Viewers::newDocument(Viewers::Kind::Pages));
            QCOMPARE(viewer.scale(), scale);
        }
        Registry::set(ScreenKey, QStringLiteral("Scale"), QStringLiteral("4"));
        {
            ViewerWindow viewer(Viewers::Kind::Pages, Viewers::newDocument(Viewers::Kind::Pages));
            viewer.zoomIn();
            QCOMPARE(viewer.scale(), 4.0);
        }
        Registry::set(ScreenKey, QStringLiteral("Scale"), QStringLiteral("0.25"));
        {
            ViewerWindow viewer(Viewers::Kind::Pages, Viewers::newDocument(Viewers::Kind::Pages));
            viewer.zoomOut();
            QCOMPARE(viewer.scale(), 0.25);
        }
        // Only the test holds the limit: 3.9 zooms in to 4.15, and that is what is kept.
        Registry::set(ScreenKey, QStringLiteral("Scale"), QStringLiteral("3.9"));
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        rowCommand(log, "miRaceLog");
        ViewerWindow* viewer = viewers(windows.main).value(0);
        const QSize before = viewer->findChild<PagePreview*>()->size();
        viewer->findChild<QAction*>(QStringLiteral("ZoomIn"))->trigger();
        QCOMPARE(viewer->scale(), 4.15);
        QVERIFY(viewer->findChild<PagePreview*>()->width() > before.width());
        viewer->parentWidget()->close();
        QCOMPARE(Registry::get(ScreenKey, QStringLiteral("Scale")), QStringLiteral("4.15"));
        QVERIFY(Registry::get(ViewKey, QStringLiteral("WindowState")) != Registry::NoKeyValue);
    }

    // The preview on the screen and the PDF come from the same draw routine: at the same
    // resolution the two pictures of a page are alike.
    void thePreviewShowsThePageAsThePdfHasIt() {
        Registry::set(ScreenKey, QStringLiteral("Scale"), QStringLiteral("1"));
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 40);
        rowCommand(log, "miRaceLog");
        ViewerWindow* viewer = viewers(windows.main).value(0);
        const QString path = home->root() + QStringLiteral("/times.pdf");
        dialogs->queueFile(path);
        viewer->saveAsPdf();
        auto* preview = viewer->findChild<PagePreview*>();
        const QImage shown = preview->grab().toImage();
        QProcess render;
        render.start("pdftoppm", {"-r", QString::number(preview->logicalDpiX()), "-f", "1", "-l",
                                  "1", "-png", "-singlefile", path, home->root() + "/page"});
        QVERIFY(render.waitForFinished(30000));
        const QImage printed(home->root() + "/page.png");
        QVERIFY(!printed.isNull());
        QVERIFY2(qAbs(shown.width() - printed.width()) <= 2,
                 qPrintable(QStringLiteral("%1 %2").arg(shown.width()).arg(printed.width())));
        const double apart = difference(shown, printed);
        QVERIFY2(apart < 0.25, qPrintable(QString::number(apart)));
        // Another page is not alike: the measure can tell them apart.
        QCOMPARE(viewer->pageCount(), 2);
        viewer->nextPage();
        QVERIFY(difference(preview->grab().toImage(), printed) > 0.5);
    }

    void saveAsPdfWritesOnlyANameEndingInPdf() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        const QStringList lines = addTimeSlips(log, 30);
        rowCommand(log, "miRaceLog");
        ViewerWindow* viewer = viewers(windows.main).value(0);
        const QString written = home->root() + QStringLiteral("/times.pdf");
        const QString refused = home->root() + QStringLiteral("/times.PDF");
        dialogs->queueFile(written);
        dialogs->queueFile(refused);
        dialogs->queueFile(QString());
        viewer->findChild<QAction*>(QStringLiteral("SaveAsPDF"))->trigger();
        viewer->saveAsPdf();
        viewer->saveAsPdf();
        QCOMPARE(dialogs->fileRequests.size(), 3);
        const Dialogs::FileRequest& request = dialogs->fileRequests.first();
        QCOMPARE(request.title, QStringLiteral("Save As PDF"));
        QCOMPARE(request.fileName, QDate::currentDate().toString("yyyy-MM-dd") + ".pdf");
        QCOMPARE(request.filter, QStringLiteral("Adobe Acrobat PDF Files (*.pdf) |*.pdf|All "
                                                "Files (*.*) |*.*|"));
        QVERIFY(request.save);
        QVERIFY(QFile::exists(written));
        QVERIFY(!QFile::exists(refused));
        QVERIFY(dialogs->messages.isEmpty());
        if (qEnvironmentVariableIsSet("TARNWICK_KEEP_PICTURES"))
            QFile::copy(written, qEnvironmentVariable("TARNWICK_KEEP_PICTURES") + "/times.pdf");
        // Every run on its line, every cell in its column's order.
        QStringList read;
        for (const QString& line : pdfText(written).split('\n'))
            if (line.simplified().contains(QStringLiteral(") 11-22")))
                read << line.simplified();
        QCOMPARE(read, lines);
    }

    // With a race log in front, Print and PDF Export give its times table.
    void printAndPdfExportOfARaceLogGiveItsTimesTable() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 4);
        windows.main.mdiArea()->setActiveSubWindow(
            qobject_cast<QMdiSubWindow*>(log->parentWidget()));
        const QString exported = home->root() + QStringLiteral("/export.pdf");
        const QString printed = home->root() + QStringLiteral("/printed.pdf");
        dialogs->queueFile(exported);
        windows.run("miPDFExport");
        dialogs->printTo = printed;
        windows.run("miPrint");
        QCOMPARE(dialogs->printRequests, 1);
        QVERIFY(dialogs->messages.isEmpty());
        const QString fromExport = pdfText(exported);
        QVERIFY2(fromExport.simplified().contains("4) 11-22"), qPrintable(fromExport));
        QCOMPARE(pdfText(printed).simplified(), fromExport.simplified());
        // A cancelled print dialog prints nothing.
        QFile::remove(printed);
        dialogs->printTo.clear();
        windows.run("miPrint");
        QCOMPARE(dialogs->printRequests, 2);
        QVERIFY(!QFile::exists(printed));
    }
};

QTEST_MAIN(TestViewerWindow)
#include "tst_viewerwindow.moc"
