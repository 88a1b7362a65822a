#include "../PredictionWindows.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "output/PageDocument.h"
#include "ui/output/PagePreview.h"
#include "ui/output/ViewerWindow.h"

#include <QLabel>
#include <QMenu>
#include <QPrinter>
#include <QProcess>
#include <QTest>

namespace {

const QString ViewKey = QStringLiteral("SOFTWARE\\Zorvane\\View\\ScreenSettings");
const QString ScreenKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\ScreenSettings");

// The print dialog answered by a test: accepted, the printer writes a PDF file instead of
// paper.
class PrintingDialogs : public ScriptedDialogs {
public:
    bool choosePrinter(QPagedPaintDevice& device) override {
        ScriptedDialogs::choosePrinter(device);
        if (printTo.isEmpty())
            return false;
        auto* printer = dynamic_cast<QPrinter*>(&device);
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(printTo);
        return true;
    }
    QString printTo;
};

QString pdfText(const QString& path) {
    QProcess process;
    process.start("pdftotext", {"-layout", path, "-"});
    process.waitForFinished(30000);
    return QString::fromUtf8(process.readAllStandardOutput());
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
        log->sidePanel->txtPageIdentifier->setText(QStringLiteral("Red"));
        const QString date = log->sidePanel->txtDate->text();
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

    void theZoomIsReadKeptWithinItsLimitsAndStored() {
        const QList<QPair<QString, double>> cases{{"abc", 1.0}, {"7", 4.0}, {"0.1", 0.25}};
        for (const auto& [stored, scale] : cases) {
            Registry::Set(ScreenKey, QStringLiteral("Scale"), stored);
            ViewerWindow viewer(Viewers::Kind::Pages, Viewers::newDocument(Viewers::Kind::Pages));
            QCOMPARE(viewer.scale(), scale);
        }
        Registry::Set(ScreenKey, QStringLiteral("Scale"), QStringLiteral("4"));
        {
            ViewerWindow viewer(Viewers::Kind::Pages, Viewers::newDocument(Viewers::Kind::Pages));
            viewer.zoomIn();
            QCOMPARE(viewer.scale(), 4.0);
        }
        Registry::Set(ScreenKey, QStringLiteral("Scale"), QStringLiteral("0.25"));
        {
            ViewerWindow viewer(Viewers::Kind::Pages, Viewers::newDocument(Viewers::Kind::Pages));
            viewer.zoomOut();
            QCOMPARE(viewer.scale(), 0.25);
        }
        // Only the test holds the limit: 3.9 zooms in to 4.15, and that is what is kept.
        Registry::Set(ScreenKey, QStringLiteral("Scale"), QStringLiteral("3.9"));
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        rowCommand(log, "miRaceLog");
        ViewerWindow* viewer = viewers(windows.main).value(0);
        const QSize before = viewer->findChild<PagePreview*>()->size();
        viewer->findChild<QAction*>(QStringLiteral("ZoomIn"))->trigger();
        QCOMPARE(viewer->scale(), 4.15);
        QVERIFY(viewer->findChild<PagePreview*>()->width() > before.width());
        viewer->parentWidget()->close();
        QCOMPARE(Registry::Get(ScreenKey, QStringLiteral("Scale")), QStringLiteral("4.15"));
        QVERIFY(Registry::Get(ViewKey, QStringLiteral("WindowState")) != Registry::NoKeyValue);
    }

    void saveAsPdfWritesOnlyANameEndingInPdf() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 3);
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
        const QString text = pdfText(written);
        QVERIFY2(text.contains("RUN") && text.simplified().contains("3) 11-22"), qPrintable(text));
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
