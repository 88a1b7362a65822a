// The window "Throttle Stop Ratio": a log's runs as corrected ET against the timer, the line
// through two cursors and the ratio it writes into the log.
#include "GraphWindows.h"
#include "common/PdfReading.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "racelog/RaceLog.h"
#include "ui/graphs/RunGraph.h"
#include "ui/graphs/ThrottleStopGraphWindow.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <cmath>

namespace {

QStringList entries(const QComboBox* list) {
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts << list->itemText(row);
    return texts;
}

// The points of a plot as (x, y), in the order of x.
QList<QPointF> points(RunGraph* graph, const QString& plot) {
    QList<QPointF> found;
    for (const QCPGraphData& point : *graph->plot(plot)->data())
        found << QPointF(point.key, point.value);
    return found;
}

bool near(const QPointF& a, const QPointF& b) {
    return std::abs(a.x() - b.x()) < 1e-9 && std::abs(a.y() - b.y()) < 1e-9;
}

// PF 5 and a target of 9.50. PF 5 makes the sensitivity 8.5e-6 - 5 x 8.5e-7 = 4.25e-6.
void fillLog(RaceLogWindow* log) {
    log->document().setField(RaceLog::Field::PF, "5");
    log->document().setField(RaceLog::Field::TargetET, "9.50");
    log->document().setField(RaceLog::Field::TSR, "0.25");
}

// Corrected ETs of the runs of threeRuns(), worked out by hand:
// 9.5 at AA 2000: 9.5 - 4.25e-6 x 1999 x 9.5 = 9.5 - 0.080709625
// 9.6 at AA 2100: 9.6 - 4.25e-6 x 2099 x 9.6 = 9.6 - 0.0856392
// 7.4 (1000 ft) at AA 1500: 7.4 - 4.25e-6 x 1499 x 7.4 = 7.4 - 0.04714355
const double Left1 = 9.419290375;
const double Right1 = 9.5143608;
const double Left2 = 7.35285645;

void threeRuns(RaceLogWindow* log) {
    addRuns(log, {{{3, "Left"}, {12, "9.5"}, {19, "2000"}, {14, "1.5"}},
                  {{3, "Right"}, {12, "9.6"}, {19, "2100"}, {14, "1.4"}},
                  {{3, "right"}, {10, "7.4"}, {19, "1500"}, {14, "1.6"}}});
}

void closeLog(RaceLogWindow* log, ScriptedDialogs& dialogs) {
    dialogs.queueAnswer(Dialogs::Answer::No);
    qobject_cast<QMdiSubWindow*>(log->parentWidget())->close();
}

QMdiSubWindow* frameOf(QWidget* window) {
    return qobject_cast<QMdiSubWindow*>(window->parentWidget());
}

} // namespace

class TestThrottleStopGraph : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

    ThrottleStopGraphWindow* open(GraphWindows& windows) {
        return windows.open<ThrottleStopGraphWindow>(QStringLiteral("miGraphTS"));
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void theWindowHasItsControls() {
        GraphWindows windows;
        windows.newLog();
        ThrottleStopGraphWindow* window = open(windows);
        QVERIFY(window);
        QCOMPARE(window->objectName(), QStringLiteral("frmGraphTS"));
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio"));
        QCOMPARE(window->findChild<QComboBox*>("cboRaceLogs"), window->raceLogList);
        QCOMPARE(entries(window->raceLogList), QStringList({"Race Log# 1"}));
        QCOMPARE(entries(window->findChild<QComboBox*>("cboGraph")),
                 QStringList({"Auto Scale", "Cursors", "Pan", "Zoom In", "Zoom Out"}));
        QCOMPARE(entries(window->findChild<QComboBox*>("cboCursors")),
                 QStringList({"Float", "Snap", "Fit"}));
        QCOMPARE(window->mouseModeList->currentIndex(), 0);
        QCOMPARE(window->cursorModeList->currentIndex(), 0);
        QVERIFY(window->cursorModeList->isHidden());
        QCOMPARE(window->findChildren<QLabel*>("lblCursor").size(), 2);
        QCOMPARE(window->findChild<QPushButton*>("cmdSet")->text(), QStringLiteral("Set &TSR"));
        auto* graph = window->findChild<RunGraph*>("tsGraph");
        QVERIFY(graph);
        QCOMPARE(graph->graphCount(), 3);
        QCOMPARE(graph->graph(0)->name(), QStringLiteral("left"));
        QCOMPARE(graph->graph(1)->name(), QStringLiteral("right"));
        QCOMPARE(graph->graph(2)->name(), QStringLiteral("line"));
        QCOMPARE(graph->cursorCount(), 2);
        QVERIFY(!graph->cursorsShown());
        // A window without a place of its own opens at a size a chart can be read at.
        QVERIFY(frameOf(window)->width() >= 600);
        QVERIFY(frameOf(window)->height() >= 400);
        // The command brings the open window to the front rather than open a second one.
        windows.run("miGraphTS");
        QCOMPARE(windows.main.findChildren<ThrottleStopGraphWindow*>().size(), 1);
    }

    // Each run at its corrected ET against its timer; only "Right" goes right.
    void theRunsStandByLane() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        const QList<QPointF> left = points(window->graph, "left");
        QCOMPARE(left.size(), 2);
        QVERIFY(near(left[0], QPointF(Left2, 1.6)));
        QVERIFY(near(left[1], QPointF(Left1, 1.5)));
        const QList<QPointF> right = points(window->graph, "right");
        QCOMPARE(right.size(), 1);
        QVERIFY(near(right[0], QPointF(Right1, 1.4)));
        QVERIFY(points(window->graph, "line").isEmpty());
        // Auto Scale: the axes span the points.
        QVERIFY(window->graph->xAxis->range().contains(Left2));
        QVERIFY(window->graph->xAxis->range().contains(Right1));
    }

    void onlyLeftLaneRunsLeaveTheRightPlotEmpty() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        addRuns(log, {{{3, "Left"}, {12, "9.5"}, {19, "2000"}, {14, "1.5"}},
                      {{3, ""}, {12, "9.6"}, {19, "2100"}, {14, "1.4"}}});
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        QCOMPARE(points(window->graph, "left").size(), 2);
        QVERIFY(points(window->graph, "right").isEmpty());
    }

    // A run without its time yet stops the whole graph, even the runs before it.
    void aLastRunWithoutTimeLeavesTheGraphEmpty() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        log->grid->newRun();
        setCells(log, 4, {{3, "Right"}, {19, "2000"}, {14, "1.5"}});
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        for (const char* plot : {"left", "right", "line"})
            QVERIFY(points(window->graph, plot).isEmpty());
    }

    // The graph is drawn afresh for each log chosen.
    void choosingAnotherLogRedraws() {
        GraphWindows windows;
        RaceLogWindow* first = windows.newLog();
        fillLog(first);
        threeRuns(first);
        RaceLogWindow* second = windows.newLog();
        fillLog(second);
        // No target ET: no graph.
        second->document().setField(RaceLog::Field::TargetET, "");
        setCells(second, 1, {{12, "9.5"}, {19, "2000"}, {14, "1.5"}});
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        QCOMPARE(points(window->graph, "left").size(), 2);
        window->raceLogList->setCurrentIndex(1);
        QVERIFY(points(window->graph, "left").isEmpty());
        QVERIFY(points(window->graph, "right").isEmpty());
    }

    // Cursors: both to the middle, their readings, the line through them and the ratio.
    void theCursorsGiveTheRatio() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        RunGraph* graph = window->graph;
        window->mouseModeList->setCurrentIndex(1);
        QCOMPARE(graph->property("trackingMode").toInt(), 2);
        QVERIFY(graph->cursorsShown());
        QVERIFY(!window->cursorModeList->isHidden());
        const QPointF middle(graph->xAxis->range().center(), graph->yAxis->range().center());
        QCOMPARE(graph->cursorPosition(0), middle);
        QCOMPARE(graph->cursorPosition(1), middle);
        // Level cursors found no ratio yet.
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio"));

        // (1.5 - 1.25) / (9.5 - 9.75) x 0.01 = -0.01: falling points show as positive.
        graph->setCursorPosition(0, QPointF(9.5, 1.5));
        graph->setCursorPosition(1, QPointF(9.75, 1.25));
        const QList<QLabel*> labels = window->findChildren<QLabel*>("lblCursor");
        QCOMPARE(labels[0]->text(), QStringLiteral("1.5000,  9.5000"));
        QCOMPARE(labels[1]->text(), QStringLiteral("1.2500,  9.7500"));
        const QList<QPointF> line = points(graph, "line");
        QCOMPARE(line.size(), 2);
        QCOMPARE(line[0], QPointF(9.5, 1.5));
        QCOMPARE(line[1], QPointF(9.75, 1.25));
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio: 0.010000"));
        QCOMPARE(frameOf(window)->windowTitle(), QStringLiteral("Throttle Stop Ratio: 0.010000"));

        // (1.5 - 1.4375) / (9.5 - 9.25) x 0.01 = 0.0025.
        graph->setCursorPosition(1, QPointF(9.25, 1.4375));
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio: 0.002500"));
        // Level cursors keep the ratio; upright ones cannot give one and leave the caption.
        graph->setCursorPosition(1, QPointF(9.8, 1.5));
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio: 0.002500"));
        graph->setCursorPosition(1, QPointF(9.5, 1.2));
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio: 0.002500"));
        QCOMPARE(labels[1]->text(), QStringLiteral("1.2000,  9.5000"));
    }

    // Dragging a cursor with the mouse moves it and tells the window.
    void aCursorIsDraggedWithTheMouse() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        windows.main.resize(1000, 700);
        windows.main.show();
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        window->mouseModeList->setCurrentIndex(1);
        RunGraph* graph = window->graph;
        graph->replot();
        const QPointF from = graph->cursorPosition(0);
        const QPoint press(int(graph->xAxis->coordToPixel(from.x())),
                           int(graph->yAxis->coordToPixel(from.y())));
        const QPoint to = press + QPoint(-60, 40);
        QSignalSpy moved(graph, &RunGraph::cursorMoved);
        QTest::mousePress(graph, Qt::LeftButton, {}, press);
        QMouseEvent drag(QEvent::MouseMove, to, graph->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(graph, &drag);
        QTest::mouseRelease(graph, Qt::LeftButton, {}, to);
        QVERIFY(moved.count() >= 1);
        QVERIFY(graph->cursorPosition(0).x() < from.x());
        QVERIFY(graph->cursorPosition(0).y() < from.y());
    }

    // Snapping cursors stand on the nearest run.
    void snappingCursorsStandOnARun() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        window->mouseModeList->setCurrentIndex(1);
        window->cursorModeList->setCurrentIndex(1);
        RunGraph* graph = window->graph;
        QVERIFY(graph->snaps());
        graph->setCursorPosition(0, QPointF(Right1 + 0.01, 1.39));
        QVERIFY(near(graph->cursorPosition(0), QPointF(Right1, 1.4)));
        graph->setCursorPosition(1, QPointF(Left2 + 0.1, 1.55));
        QVERIFY(near(graph->cursorPosition(1), QPointF(Left2, 1.6)));
        window->cursorModeList->setCurrentIndex(0);
        graph->setCursorPosition(1, QPointF(8.0, 1.55));
        QCOMPARE(graph->cursorPosition(1), QPointF(8.0, 1.55));
    }

    // The modes of the mouse, and the line that stands only with the cursors.
    void theMouseModes() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        RunGraph* graph = window->graph;
        window->mouseModeList->setCurrentIndex(1);
        graph->setCursorPosition(0, QPointF(9.4, 1.5));
        QCOMPARE(points(graph, "line").size(), 2);

        window->mouseModeList->setCurrentIndex(2);
        QCOMPARE(graph->trackingMode(), 3);
        QVERIFY(graph->interactions().testFlag(QCP::iRangeDrag));
        QVERIFY(!graph->cursorsShown());
        QVERIFY(window->cursorModeList->isHidden());
        QVERIFY(points(graph, "line").isEmpty());

        window->mouseModeList->setCurrentIndex(3);
        QCOMPARE(graph->trackingMode(), 6);
        QCOMPARE(graph->selectionRectMode(), QCP::srmZoom);

        // Zoom Out widens each axis by 0.2 at both ends and leaves the mouse's mode.
        const QCPRange x = graph->xAxis->range();
        const QCPRange y = graph->yAxis->range();
        window->mouseModeList->setCurrentIndex(4);
        QCOMPARE(graph->trackingMode(), 6);
        QCOMPARE(graph->xAxis->range().lower, x.lower - 0.2);
        QCOMPARE(graph->xAxis->range().upper, x.upper + 0.2);
        QCOMPARE(graph->yAxis->range().lower, y.lower - 0.2);
        QCOMPARE(graph->yAxis->range().upper, y.upper + 0.2);

        // Auto Scale brings the axes back to the points.
        window->mouseModeList->setCurrentIndex(0);
        QCOMPARE(graph->trackingMode(), 6);
        QCOMPARE(graph->xAxis->range().lower, x.lower);
        QCOMPARE(graph->yAxis->range().upper, y.upper);
        QVERIFY(graph->xAxis->range().lower < Left2);
        QVERIFY(graph->xAxis->range().upper > Right1);
        QVERIFY(graph->yAxis->range().lower < 1.4);
        QVERIFY(graph->yAxis->range().upper > 1.6);
    }

    // Fit lays the cursors on the least-squares line through the chosen lanes. At AA 1 a run's
    // corrected ET is its ET. The left lane straddles timer = 0.25 x ET - 1.1 by 0.003 either
    // side; the right lane's two runs lie far off that line.
    void fitLaysTheCursorsOnTheLineOfTheChosenLanes() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        int row = 0;
        QList<QPointF> left;
        for (const double et : {9.40, 9.44, 9.52, 9.60}) {
            for (const double off : {0.003, -0.003}) {
                if (++row > 1)
                    log->grid->newRun();
                left << QPointF(et, 0.25 * et - 1.1 + off);
                setCells(log, row,
                         {{3, "Left"},
                          {12, QString::number(et, 'f', 2)},
                          {19, "1"},
                          {14, QString::number(left.last().y(), 'f', 4)}});
            }
        }
        const QList<QPointF> right{{9.38, 1.9}, {9.70, 1.1}};
        for (const QPointF& point : right) {
            log->grid->newRun();
            ++row;
            setCells(log, row,
                     {{3, "Right"},
                      {12, QString::number(point.x(), 'f', 2)},
                      {19, "1"},
                      {14, QString::number(point.y(), 'f', 1)}});
        }
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        window->mouseModeList->setCurrentIndex(RunGraph::Cursors);
        auto* lanes = window->findChild<QComboBox*>("cboLanes");
        QVERIFY(lanes);
        QCOMPARE(entries(lanes), QStringList({"Both Lanes", "Left Lane", "Right Lane"}));
        QVERIFY(!lanes->isVisibleTo(window));

        lanes->setCurrentIndex(1);
        window->cursorModeList->setCurrentIndex(2);
        QVERIFY(lanes->isVisibleTo(window));
        QVERIFY(near(window->graph->cursorPosition(0), QPointF(9.40, 1.25)));
        QVERIFY(near(window->graph->cursorPosition(1), QPointF(9.60, 1.30)));
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio: 0.002500"));
        QCOMPARE(window->cursorLabel[1]->text(), QStringLiteral("RMS 0.0030 s"));
        window->setButton->click();
        QCOMPARE(log->document().content().tsr, QStringLiteral("0.002500"));

        // Both lanes: the least-squares line of all ten points, worked out here.
        lanes->setCurrentIndex(0);
        const QList<QPointF> all = left + right;
        double mx = 0, my = 0;
        for (const QPointF& p : all) {
            mx += p.x() / all.size();
            my += p.y() / all.size();
        }
        double sxx = 0, sxy = 0;
        for (const QPointF& p : all) {
            sxx += (p.x() - mx) * (p.x() - mx);
            sxy += (p.x() - mx) * (p.y() - my);
        }
        const double slope = sxy / sxx;
        double squares = 0;
        for (const QPointF& p : all)
            squares += std::pow(p.y() - (my + slope * (p.x() - mx)), 2);
        const QPointF first = window->graph->cursorPosition(0);
        const QPointF last = window->graph->cursorPosition(1);
        QVERIFY(std::abs(first.x() - 9.38) < 1e-9);
        QVERIFY(std::abs(last.x() - 9.70) < 1e-9);
        QVERIFY(std::abs(first.y() - (my + slope * (9.38 - mx))) < 1e-9);
        QVERIFY(std::abs(last.y() - (my + slope * (9.70 - mx))) < 1e-9);
        QCOMPARE(window->cursorLabel[1]->text(),
                 "RMS " + QString::number(std::sqrt(squares / all.size()), 'f', 4) + " s");
        QCOMPARE(window->windowTitle(),
                 "Throttle Stop Ratio: " + QString::number(std::abs(slope) * 0.01, 'f', 6));

        // Back to Float: the lane list goes and the cursors read their places again.
        window->cursorModeList->setCurrentIndex(0);
        QVERIFY(!lanes->isVisibleTo(window));
        QVERIFY(!window->cursorLabel[1]->text().startsWith("RMS"));
    }

    void aLaneWithoutTwoEtsHasNoLineToFit() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        window->mouseModeList->setCurrentIndex(RunGraph::Cursors);
        window->findChild<QComboBox*>("cboLanes")->setCurrentIndex(2); // one right run only
        window->cursorModeList->setCurrentIndex(2);
        QCOMPARE(window->cursorLabel[1]->text(), QStringLiteral("No line to fit"));
        QCOMPARE(window->windowTitle(), QStringLiteral("Throttle Stop Ratio"));
    }

    // Set TSR writes the ratio of the caption into the log as one step that undo takes back;
    // the log's prediction waits for the next weather line or Predict.
    void setTsrWritesTheRatioAsOneStep() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        window->mouseModeList->setCurrentIndex(1);
        window->graph->setCursorPosition(0, QPointF(9.4, 1.5));
        window->graph->setCursorPosition(1, QPointF(9.6, 1.3));
        RaceLog& document = log->document();
        const int steps = document.undoStack().count();
        const QString page = log->document().prediction().line().pagerMessage;
        window->setButton->click();
        QCOMPARE(document.field(RaceLog::Field::TSR), QStringLiteral("0.010000"));
        QCOMPARE(log->sidePanel->tsrField->text(), QStringLiteral("0.010000"));
        QCOMPARE(document.undoStack().count(), steps + 1);
        QCOMPARE(document.undoStack().undoText(), QStringLiteral("Set TSR"));
        QCOMPARE(log->findChild<QAction*>("miUndo")->text(), QStringLiteral("Undo Set TSR"));
        QCOMPARE(log->document().prediction().line().pagerMessage, page);
        log->findChild<QAction*>("miUndo")->trigger();
        QCOMPARE(document.field(RaceLog::Field::TSR), QStringLiteral("0.25"));
        QCOMPARE(document.undoStack().count(), steps + 1);
        QCOMPARE(document.undoStack().index(), steps);
    }

    // Before any cursor move the caption has no number: nothing is written.
    void setTsrBeforeAnyCursorWritesNothing() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        const int steps = log->document().undoStack().count();
        window->setButton->click();
        QCOMPARE(log->document().field(RaceLog::Field::TSR), QStringLiteral("0.25"));
        QCOMPARE(log->document().undoStack().count(), steps);
    }

    // A log closed while the window is open loses its entry when chosen; the first one left
    // is drawn. A log opened meanwhile joins the list.
    void logsClosedAndOpenedWhileTheWindowIsOpen() {
        GraphWindows windows;
        RaceLogWindow* first = windows.newLog();
        fillLog(first);
        threeRuns(first);
        RaceLogWindow* second = windows.newLog();
        ThrottleStopGraphWindow* window = open(windows);
        QCOMPARE(entries(window->raceLogList), QStringList({"Race Log# 1", "Race Log# 2"}));
        RaceLogWindow* third = windows.newLog();
        third->document().setField(RaceLog::Field::PageIdentifier, "Blue");
        QCOMPARE(window->raceLogList->count(), 3);

        closeLog(second, *dialogs);
        QCOMPARE(window->raceLogList->count(), 3);
        window->raceLogList->setCurrentIndex(1);
        QCOMPARE(entries(window->raceLogList), QStringList({"Race Log# 1", "Race Log# 3"}));
        QCOMPARE(window->raceLogList->currentIndex(), 0);
        QCOMPARE(points(window->graph, "left").size(), 2);

        // Set TSR for a closed log does nothing and keeps its entry.
        closeLog(third, *dialogs);
        window->mouseModeList->setCurrentIndex(1);
        window->graph->setCursorPosition(0, QPointF(9.4, 1.5));
        window->graph->setCursorPosition(1, QPointF(9.6, 1.3));
        {
            const QSignalBlocker quiet(window->raceLogList);
            window->raceLogList->setCurrentIndex(1);
        }
        window->setButton->click();
        QCOMPARE(window->raceLogList->count(), 2);
        QCOMPARE(first->document().field(RaceLog::Field::TSR), QStringLiteral("0.25"));
    }

    // The main window's Print and PDF Export work on the graph in front, labelled without
    // the ratio.
    void printAndPdfExport() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        window->mouseModeList->setCurrentIndex(1);
        window->graph->setCursorPosition(0, QPointF(9.4, 1.5));
        windows.main.mdiArea()->setActiveSubWindow(frameOf(window));
        const QString file = home->root() + QStringLiteral("/ts.pdf");
        dialogs->queueFile(file);
        windows.run("miPDFExport");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].title, QStringLiteral("PDF Throttle Stop Ratio Export"));
        QVERIFY(QFile::exists(file));
        dialogs->queuePrinter(false);
        windows.run("miPrint");
        QCOMPARE(dialogs->quietPrintRequests, 1);
    }

    // PDF Export draws the graph anew at the resolution of the page, not as a picture of the
    // screen: the file holds no image, the axis title and every tick label of the time axis
    // are text, and the points of each lane stand in its colour on the graph's black ground,
    // a tenth of its size in twips.
    void pdfExportDrawsTheGraphInLinesAndText() {
        GraphWindows windows;
        windows.main.resize(1200, 900);
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        threeRuns(log);
        ThrottleStopGraphWindow* window = open(windows);
        window->raceLogList->setCurrentIndex(0);
        windows.main.mdiArea()->setActiveSubWindow(frameOf(window));
        const QString file = home->root() + QStringLiteral("/ts.pdf");
        dialogs->queueFile(file);
        windows.run("miPDFExport");

        QCOMPARE(PdfReading::imageSizes(file), QList<QSize>());
        const QString text = PdfReading::text(file);
        QVERIFY2(text.contains(QStringLiteral("ET at 0 ft AA")), qPrintable(text));
        const QList<QString> ticks = window->graph->xAxis->tickVectorLabels();
        QVERIFY(ticks.size() >= 2);
        for (const QString& tick : ticks)
            QVERIFY2(text.contains(tick), qPrintable(tick + QStringLiteral(" in ") + text));
        const QImage page = PdfReading::firstPage(file);
        const QRect graph = PdfReading::filledArea(page, Qt::black);
        const double scale = 144.0 / window->graph->logicalDpiX();
        QVERIFY(std::abs(graph.width() - window->graph->width() * scale) <= 3);
        QVERIFY(std::abs(graph.height() - window->graph->height() * scale) <= 3);
        // Discs 6 pixels across, 9 units on the page: two in the left lane, one in the right.
        QVERIFY(PdfReading::pixelsNear(page, graph, QColor(255, 220, 0), 60) > 60);
        QVERIFY(PdfReading::pixelsNear(page, graph, QColor(0, 200, 255), 60) > 30);
    }

    // Closing keeps the window's place; it opens there next time.
    void theWindowKeepsItsPlace() {
        QRect kept;
        {
            GraphWindows windows;
            windows.main.resize(1200, 900);
            windows.main.show();
            ThrottleStopGraphWindow* window = open(windows);
            frameOf(window)->setGeometry(40, 30, 700, 480);
            kept = frameOf(window)->geometry();
            frameOf(window)->close();
        }
        GraphWindows windows;
        windows.main.resize(1200, 900);
        windows.main.show();
        ThrottleStopGraphWindow* window = open(windows);
        QCOMPARE(frameOf(window)->geometry(), kept);
    }

    // The picture of the manual: a season of 40 runs in both lanes, the cursors laid along
    // the cloud.
    void pictureForTheManual() {
        GraphWindows windows;
        windows.main.resize(1000, 700);
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        fillLog(log);
        log->document().setField(RaceLog::Field::PageIdentifier, "Blue 7");
        for (int run = 1; run <= 40; ++run) {
            if (run > 1)
                log->grid->newRun();
            // A longer throttle stop slows the car; the spread is the day-to-day scatter.
            const double timer = 1.20 + 0.01 * run;
            const double scatter = 0.012 * std::sin(run * 2.3);
            const double et = 9.42 + (timer - 1.2) / 2.5 + scatter;
            const int aa = 1800 + (run * 37) % 600;
            setCells(log, run,
                     {{3, run % 3 == 0 ? "Right" : "Left"},
                      {12, QString::number(et, 'f', 3)},
                      {19, QString::number(aa)},
                      {14, QString::number(timer, 'f', 3)}});
        }
        ThrottleStopGraphWindow* window = open(windows);
        frameOf(window)->setGeometry(0, 0, 860, 560);
        window->raceLogList->setCurrentIndex(0);
        QCOMPARE(points(window->graph, "left").size() + points(window->graph, "right").size(), 40);
        window->mouseModeList->setCurrentIndex(1);
        RunGraph* graph = window->graph;
        const double s = 4.25e-6;
        const auto corrected = [s](double et) { return et - s * 2099 * et; };
        graph->setCursorPosition(0, QPointF(corrected(9.43), 1.225));
        graph->setCursorPosition(1, QPointF(corrected(9.56), 1.575));
        QVERIFY(window->windowTitle().startsWith("Throttle Stop Ratio: 0.0"));
        graph->replot();
        const QImage picture = frameOf(window)->grab().toImage();
        QVERIFY(!picture.isNull());
        if (qEnvironmentVariableIsSet("TARNWICK_KEEP_PICTURES"))
            QVERIFY(picture.save(qEnvironmentVariable("TARNWICK_KEEP_PICTURES") +
                                 QStringLiteral("/graph-ts.png")));
    }
};

QTEST_MAIN(TestThrottleStopGraph)
#include "tst_throttlestopgraph.moc"
