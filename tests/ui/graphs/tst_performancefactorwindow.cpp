// The performance factor graph as the main window shows it: its controls, the runs of the
// chosen log as lines along their slopes, the trial factor, Set PF and its undo, the clicks on
// the graph, its place on the screen, print and PDF.
#include "../PredictionWindows.h"
#include "../PrintingDialogs.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "racelog/RaceLog.h"
#include "ui/graphs/GraphCommands.h"
#include "ui/graphs/PerformanceFactorWindow.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTest>
#include <qcustomplot.h>

namespace {

// The main window with the race log commands and the graph commands.
struct GraphWindows : PredictionWindows {
    GraphWindows() {
        GraphCommands::add(main, station.raceLogs());
        main.resize(1200, 800);
        main.show();
    }
    PerformanceFactorWindow* open() {
        run(QStringLiteral("miGraphET"));
        return window();
    }
    PerformanceFactorWindow* window() {
        return main.findChild<PerformanceFactorWindow*>(QStringLiteral("frmGraphET"));
    }
};

struct Run {
    QString et;
    QString aa;
};

// The runs of a log from row 1 on, each with its 1320 ft time and its AA.
void fillRuns(RaceLogWindow* log, const QList<Run>& runs) {
    RunTable& table = log->grid->table();
    for (int row = 1; row <= runs.size(); ++row) {
        if (row >= table.tableRows())
            table.addRun();
        setCells(log, row, {{12, runs[row - 1].et}, {19, runs[row - 1].aa}});
    }
}

// The slope through a run, worked out from the model: the model moves a time made at AA a by
// sensitivity x (1 - a) x ET when taken to sea level, a fall of a feet.
double slopeOf(double et, double aa, double pf) {
    const double sensitivity = 8.5e-6 - pf * 8.5e-7;
    return -aa / (sensitivity * (1.0 - aa) * et);
}

QCPCurve* plot(PerformanceFactorWindow* window, int index) {
    return qobject_cast<QCPCurve*>(window->graph->plottable(index));
}

// The line drawn through the run at (et, aa) for the factor pf: 250 ft of AA either way.
void checkLine(PerformanceFactorWindow* window, int index, double et, double aa, double pf) {
    QCPCurve* line = plot(window, index);
    QVERIFY(line);
    QCOMPARE(line->dataCount(), 2);
    const double slope = slopeOf(et, aa, pf);
    QCOMPARE(line->data()->at(0)->key, et + 250.0 / slope);
    QCOMPARE(line->data()->at(0)->value, aa + 250.0);
    QCOMPARE(line->data()->at(1)->key, et - 250.0 / slope);
    QCOMPARE(line->data()->at(1)->value, aa - 250.0);
}

// A pick of an entry of the run list, as the user makes it.
void pickRun(PerformanceFactorWindow* window, int entry) {
    window->runList->setCurrentIndex(entry);
    emit window->runList->activated(entry);
}

QStringList entries(const QComboBox* list) {
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts << list->itemText(row);
    return texts;
}

void closeLog(RaceLogWindow* log, ScriptedDialogs& dialogs) {
    dialogs.queueAnswer(Dialogs::Answer::No);
    qobject_cast<QMdiSubWindow*>(log->parentWidget())->close();
}

const QList<Run> ThreeRuns{{"9.5", "2000"}, {"10.2", "-350"}, {"7.85", "1200"}};

} // namespace

class TestPerformanceFactorWindow : public QObject {
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

    void theWindowAndItsControls() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        QVERIFY(window);
        QCOMPARE(window->windowTitle(), QStringLiteral(" Performance Factor"));
        QCOMPARE(window->raceLogList->objectName(), QStringLiteral("cboRaceLogs"));
        QCOMPARE(window->runList->objectName(), QStringLiteral("cboRun"));
        QCOMPARE(window->pfField->objectName(), QStringLiteral("txtPF"));
        QCOMPARE(window->graphButton->objectName(), QStringLiteral("cmdGraph"));
        QCOMPARE(window->graphButton->text(), QStringLiteral("&Graph"));
        QCOMPARE(window->setButton->objectName(), QStringLiteral("cmdSet"));
        QCOMPARE(window->setButton->text(), QStringLiteral("Set &PF"));
        QCOMPARE(window->graph->objectName(), QStringLiteral("etGraph"));
        // The first log is chosen: its runs are listed, nothing is drawn yet.
        QCOMPARE(entries(window->raceLogList), QStringList({"Race Log# 1"}));
        QCOMPARE(entries(window->runList), QStringList({"All", "1", "2", "3"}));
        QCOMPARE(window->runList->currentIndex(), -1);
        QCOMPARE(window->graph->plottableCount(), 0);
        QCOMPARE(window->runs().size(), 3);
        // The command brings the one window to the front.
        windows.run(QStringLiteral("miGraphET"));
        QCOMPARE(windows.main.findChildren<PerformanceFactorWindow*>().size(), 1);
    }

    // The trial factor takes the keys of the log's own factor and selects all on entry.
    void theTrialFactorFiltersKeys() {
        GraphWindows windows;
        windows.newLog();
        PerformanceFactorWindow* window = windows.open();
        window->pfField->clear();
        QTest::keyClicks(window->pfField, QStringLiteral("a5.x-2 "));
        QCOMPARE(window->pfField->text(), QStringLiteral("5.-2"));
        // Focus moves only within the active window.
        windows.main.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&windows.main));
        window->setButton->setFocus();
        QTRY_VERIFY(window->setButton->hasFocus());
        window->pfField->setFocus();
        QTRY_VERIFY(window->pfField->hasFocus());
        QTRY_COMPARE(window->pfField->selectedText(), QStringLiteral("5.-2"));
    }

    // The log's factor comes into the window; a factor that is no number comes as "0.00".
    void theLogsFactorIsTheFirstTrial() {
        GraphWindows windows;
        RaceLogWindow* first = windows.newLog();
        first->document().setField(RaceLog::Field::PF, "5");
        RaceLogWindow* second = windows.newLog();
        second->document().setField(RaceLog::Field::PF, "-");
        PerformanceFactorWindow* window = windows.open();
        QCOMPARE(window->pfField->text(), QStringLiteral("5"));
        window->raceLogList->setCurrentIndex(1);
        QCOMPARE(window->pfField->text(), QStringLiteral("0.00"));
    }

    // "All" draws every run as a line 250 ft of AA either way along its slope, coloured white,
    // green, red and so on.
    void allDrawsEveryRunAlongItsSlope() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "5");
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        pickRun(window, 0);
        QCOMPARE(window->graph->plottableCount(), 3);
        checkLine(window, 0, 9.5, 2000, 5);
        checkLine(window, 1, 10.2, -350, 5);
        checkLine(window, 2, 7.85, 1200, 5);
        // Drawn again, it replaces the lines.
        pickRun(window, 0);
        QCOMPARE(window->graph->plottableCount(), 3);
    }

    // White, green, red, yellow, blue, cyan, magenta, and the eighth white again.
    void theEighthPlotHasTheColourOfTheFirst() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        QList<Run> runs;
        for (int run = 0; run < 8; ++run)
            runs.append({QString::number(9.5 + run * 0.01), QString::number(2000 + run * 50)});
        fillRuns(log, runs);
        PerformanceFactorWindow* window = windows.open();
        pickRun(window, 0);
        const QList<QColor> colours{Qt::white, Qt::green, Qt::red,     Qt::yellow,
                                    Qt::blue,  Qt::cyan,  Qt::magenta, Qt::white};
        QCOMPARE(window->graph->plottableCount(), 8);
        for (int index = 0; index < 8; ++index)
            QCOMPARE(plot(window, index)->pen().color(), colours[index]);
    }

    // A single run is added to what is drawn; "All" starts again.
    void singleRunsAddUp() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "5");
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        pickRun(window, 2);
        pickRun(window, 3);
        pickRun(window, 2);
        QCOMPARE(window->graph->plottableCount(), 3);
        checkLine(window, 0, 10.2, -350, 5);
        checkLine(window, 1, 7.85, 1200, 5);
        checkLine(window, 2, 10.2, -350, 5);
        QCOMPARE(plot(window, 1)->pen().color(), QColor(Qt::green));
        pickRun(window, 0);
        QCOMPARE(window->graph->plottableCount(), 3);
        checkLine(window, 0, 9.5, 2000, 5);
    }

    // The lists stop at the first run without a time or an AA; the run list names every row.
    void theRunsStopAtTheFirstUnusableRow() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillRuns(log, {{"9.5", "2000"}, {"9.6", ""}, {"9.7", "2200"}});
        PerformanceFactorWindow* window = windows.open();
        QCOMPARE(entries(window->runList), QStringList({"All", "1", "2", "3"}));
        QCOMPARE(window->runs().size(), 1);
        pickRun(window, 0);
        QCOMPARE(window->graph->plottableCount(), 1);
        // A run beyond the lists draws nothing.
        pickRun(window, 3);
        QCOMPARE(window->graph->plottableCount(), 1);
    }

    // A run at AA 0 has slope 0: its line cannot be drawn and the drawing ends there.
    void aRunAtZeroAltitudeEndsTheDrawing() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "5");
        fillRuns(log, {{"9.5", "2000"}, {"9.6", "0"}, {"9.7", "2200"}});
        PerformanceFactorWindow* window = windows.open();
        QCOMPARE(window->runs().size(), 3);
        QCOMPARE(window->runs()[1].slope, 0.0);
        pickRun(window, 0);
        QCOMPARE(window->graph->plottableCount(), 1);
        checkLine(window, 0, 9.5, 2000, 5);
        QVERIFY(dialogs->messages.isEmpty());
    }

    // Graph recomputes the slopes and takes the pick off the run list; the old lines stay
    // until a run is picked.
    void graphRecomputesTheSlopes() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "5");
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        pickRun(window, 0);
        window->pfField->setText(QStringLiteral("2.5"));
        QTest::mouseClick(window->graphButton, Qt::LeftButton);
        QCOMPARE(window->runList->currentIndex(), -1);
        QVERIFY(window->graphButton->isEnabled());
        QCOMPARE(window->runs()[0].slope, slopeOf(9.5, 2000, 2.5));
        checkLine(window, 0, 9.5, 2000, 5);
        pickRun(window, 0);
        checkLine(window, 0, 9.5, 2000, 2.5);
        checkLine(window, 2, 7.85, 1200, 2.5);
        QVERIFY(dialogs->messages.isEmpty());
        // The log keeps its own factor.
        QCOMPARE(log->document().field(RaceLog::Field::PF), QStringLiteral("5"));
    }

    // A trial value that is no number is replaced by "0.00" and plotted.
    void aTrialThatIsNoNumberIsZero() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "5");
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        window->pfField->setText(QStringLiteral("-"));
        QTest::mouseClick(window->graphButton, Qt::LeftButton);
        QCOMPARE(window->pfField->text(), QStringLiteral("0.00"));
        pickRun(window, 0);
        checkLine(window, 1, 10.2, -350, 0);
    }

    // PF 10 leaves no sensitivity: the slope divides by zero and Graph says so.
    void pf10FaultsTheGraph() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "5");
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        pickRun(window, 0);
        window->pfField->setText(QStringLiteral("10"));
        QTest::mouseClick(window->graphButton, Qt::LeftButton);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text, QStringLiteral("Error detected in graph option!"));
        QCOMPARE(dialogs->messages[0].icon, Dialogs::Icon::Critical);
        QVERIFY(window->graphButton->isEnabled());
        // The slopes of the factor before stay; the lines drawn too.
        QCOMPARE(window->runs()[0].slope, slopeOf(9.5, 2000, 5));
        QCOMPARE(window->graph->plottableCount(), 3);
    }

    // A log chosen with PF 10 has no slopes at all: nothing to draw, no message.
    void aLogAtPf10HasNoRuns() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "10");
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        QCOMPARE(window->runs().size(), 0);
        pickRun(window, 0);
        QCOMPARE(window->graph->plottableCount(), 0);
        QVERIFY(dialogs->messages.isEmpty());
    }

    // Set PF writes the factor as typed, as one step that undo takes back, and predicts
    // nothing.
    void setPfIsOneStepThatUndoTakesBack() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fill(log);
        log->document().setField(RaceLog::Field::PF, "4.25");
        PerformanceFactorWindow* window = windows.open();
        const QString caption = frameCaption(log);
        const int steps = log->document().undoStack().count();
        window->pfField->setText(QStringLiteral("5"));
        QTest::mouseClick(window->setButton, Qt::LeftButton);
        QCOMPARE(log->document().field(RaceLog::Field::PF), QStringLiteral("5"));
        QCOMPARE(log->sidePanel->pfField->text(), QStringLiteral("5"));
        QCOMPARE(log->document().undoStack().count(), steps + 1);
        QCOMPARE(log->document().undoStack().undoText(), QStringLiteral("Set PF"));
        QCOMPARE(frameCaption(log), caption);
        log->document().undoStack().undo();
        QCOMPARE(log->document().field(RaceLog::Field::PF), QStringLiteral("4.25"));
        QCOMPARE(log->sidePanel->pfField->text(), QStringLiteral("4.25"));
        // A trial that is no number is not set.
        window->pfField->setText(QStringLiteral("-"));
        QTest::mouseClick(window->setButton, Qt::LeftButton);
        QCOMPARE(log->document().field(RaceLog::Field::PF), QStringLiteral("4.25"));
    }

    // A log closed meanwhile leaves the list when chosen; one opened meanwhile joins it and
    // the graph of the log shown stays.
    void theListFollowsTheOpenLogs() {
        GraphWindows windows;
        RaceLogWindow* first = windows.newLog();
        fillRuns(first, ThreeRuns);
        RaceLogWindow* second = windows.newLog();
        fillRuns(second, {{"8.1", "900"}});
        PerformanceFactorWindow* window = windows.open();
        window->raceLogList->setCurrentIndex(1);
        QCOMPARE(window->runs().size(), 1);
        pickRun(window, 0);
        closeLog(first, *dialogs);
        QVERIFY(!windows.slot(0));
        RaceLogWindow* third = windows.newLog();
        QVERIFY(windows.slot(0) == third);
        QCOMPARE(entries(window->raceLogList), QStringList({"Race Log# 1", "Race Log# 2"}));
        QCOMPARE(window->raceLogList->currentIndex(), 1);
        QCOMPARE(window->graph->plottableCount(), 1);
        windows.newLog();
        QCOMPARE(entries(window->raceLogList),
                 QStringList({"Race Log# 1", "Race Log# 2", "Race Log# 3"}));
        QCOMPARE(window->graph->plottableCount(), 1);

        closeLog(second, *dialogs);
        window->raceLogList->setCurrentIndex(0);
        window->raceLogList->setCurrentIndex(1);
        QCOMPARE(entries(window->raceLogList), QStringList({"Race Log# 1", "Race Log# 3"}));
        QCOMPARE(window->raceLogList->currentIndex(), 0);
        // Set PF with the first log chosen goes to it.
        window->pfField->setText(QStringLiteral("3"));
        QTest::mouseClick(window->setButton, Qt::LeftButton);
        QCOMPARE(third->document().field(RaceLog::Field::PF), QStringLiteral("3"));
    }

    // A left click fits the axes to the lines and lets the mouse zoom; a right click widens
    // both axes by 0.2 either way.
    void clicksOnTheGraph() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        pickRun(window, 0);
        QCustomPlot* graph = window->graph;
        graph->xAxis->setRange(0, 1);
        graph->yAxis->setRange(0, 1);
        const QPoint middle = graph->axisRect()->rect().center();
        QTest::mouseClick(graph, Qt::LeftButton, {}, middle);
        QCOMPARE(window->trackingMode(), 6);
        QCOMPARE(graph->selectionRectMode(), QCP::srmZoom);
        // Every line end lies inside the axes.
        for (int index = 0; index < graph->plottableCount(); ++index) {
            for (const QCPCurveData& end : *plot(window, index)->data()) {
                QVERIFY(graph->xAxis->range().contains(end.key));
                QVERIFY(graph->yAxis->range().contains(end.value));
            }
        }
        QVERIFY(graph->yAxis->range().lower <= -600);
        QVERIFY(graph->yAxis->range().upper >= 2250);
        // In zoom already, a left click leaves the axes alone.
        graph->xAxis->setRange(9, 10);
        QTest::mouseClick(graph, Qt::LeftButton, {}, middle);
        QCOMPARE(graph->xAxis->range(), QCPRange(9, 10));

        graph->yAxis->setRange(1000, 2000);
        QTest::mouseClick(graph, Qt::RightButton, {}, middle);
        QCOMPARE(window->trackingMode(), 1);
        QCOMPARE(graph->xAxis->range().lower, 8.8);
        QCOMPARE(graph->xAxis->range().upper, 10.2);
        QCOMPARE(graph->yAxis->range().lower, 999.8);
        QCOMPARE(graph->yAxis->range().upper, 2000.2);
        QCOMPARE(graph->selectionRectMode(), QCP::srmNone);
        QVERIFY(dialogs->messages.isEmpty());
    }

    // The window keeps its place under the throttle stop graph's key, which the two share.
    void itsPlaceIsSharedWithTheThrottleStopGraph() {
        const QString branch = QStringLiteral("SOFTWARE\\Zorvane\\GraphTS\\ScreenSettings");
        QRect place;
        {
            GraphWindows windows;
            PerformanceFactorWindow* window = windows.open();
            auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
            // A first open takes the window's own size.
            QVERIFY(frame->width() >= window->sizeHint().width());
            place = QRect(30, 20, 700, 500);
            frame->setGeometry(place);
            frame->close();
            QTRY_VERIFY(!windows.window());
            QCOMPARE(Registry::get(branch, QStringLiteral("Left")), QString::number(place.x()));
            QCOMPARE(Registry::get(branch, QStringLiteral("Top")), QString::number(place.y()));
            QCOMPARE(Registry::get(branch, QStringLiteral("Width")),
                     QString::number(place.width()));
            QCOMPARE(Registry::get(branch, QStringLiteral("Height")),
                     QString::number(place.height()));
        }
        GraphWindows windows;
        PerformanceFactorWindow* window = windows.open();
        QCOMPARE(window->parentWidget()->geometry(), place);
    }

    void printAndPdfThroughTheMainWindow() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillRuns(log, ThreeRuns);
        PerformanceFactorWindow* window = windows.open();
        pickRun(window, 0);
        windows.main.mdiArea()->setActiveSubWindow(
            qobject_cast<QMdiSubWindow*>(window->parentWidget()));

        dialogs->printTo = home->root() + QStringLiteral("/printed.pdf");
        dialogs->queuePrinter(true);
        windows.run(QStringLiteral("miPrint"));
        QCOMPARE(dialogs->quietPrintRequests, 1);
        QVERIFY(QFileInfo(dialogs->printTo).size() > 0);

        const QString chosen = home->root() + QStringLiteral("/factor");
        dialogs->queueFile(chosen);
        windows.run(QStringLiteral("miPDFExport"));
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].title, QStringLiteral("PDF Performance Factor Export"));
        QVERIFY(QFileInfo(chosen + QStringLiteral(".pdf")).size() > 0);
        QVERIFY(dialogs->messages.isEmpty());
    }

    // The picture of the manual: a 40-run log with every run drawn.
    void pictureOfFortyRuns() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PF, "5");
        QList<Run> runs;
        for (int run = 0; run < 40; ++run) {
            // Runs of a weekend: the car slows as the air thins, with a little scatter.
            const double aa = 1200 + run * 55 + (run % 3) * 40;
            const double et = 9.45 + aa * 0.0000425 + ((run * 7) % 5) * 0.004;
            runs.append({QString::number(et, 'f', 3), QString::number(aa)});
        }
        fillRuns(log, runs);
        PerformanceFactorWindow* window = windows.open();
        auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
        frame->resize(760, 520);
        pickRun(window, 0);
        QCOMPARE(window->graph->plottableCount(), 40);
        const QString folder = qEnvironmentVariable("TARNWICK_KEEP_PICTURES");
        if (!folder.isEmpty()) {
            QTest::qWait(50);
            QVERIFY(window->grab().save(QDir(folder).filePath(QStringLiteral("graph-et.png"))));
        }
    }
};

QTEST_MAIN(TestPerformanceFactorWindow)
#include "tst_performancefactorwindow.moc"
