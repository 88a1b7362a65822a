// The Trend Finder: columns of race logs laid on one chart run after run.
#include "GraphWindows.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "racelog/RaceLog.h"
#include "ui/graphs/RunGraph.h"
#include "ui/graphs/TrendFinderWindow.h"

#include <QLabel>
#include <QTest>
#include <cmath>

namespace {

QStringList entries(const QComboBox* list) {
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts << list->itemText(row);
    return texts;
}

QList<QPointF> points(RunGraph* graph, const QString& plot) {
    QList<QPointF> found;
    for (const QCPGraphData& point : *graph->plot(plot)->data())
        found << QPointF(point.key, point.value);
    return found;
}

void closeLog(RaceLogWindow* log, ScriptedDialogs& dialogs) {
    dialogs.queueAnswer(Dialogs::Answer::No);
    qobject_cast<QMdiSubWindow*>(log->parentWidget())->close();
}

QMdiSubWindow* frameOf(QWidget* window) {
    return qobject_cast<QMdiSubWindow*>(window->parentWidget());
}

constexpr int AbpEntry = 5;
constexpr int TempEntry = 6;
constexpr int RhEntry = 7;

} // namespace

class TestTrendFinder : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

    TrendFinderWindow* open(GraphWindows& windows) {
        return windows.open<TrendFinderWindow>(QStringLiteral("miGraph"));
    }
    // Chooses the log, answering the clearing question.
    void chooseLog(TrendFinderWindow* window, int index, Dialogs::Answer answer) {
        dialogs->queueAnswer(answer);
        window->raceLogList->setCurrentIndex(index);
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
        windows.newLog()->document().setField(RaceLog::Field::PageIdentifier, "Red");
        TrendFinderWindow* window = open(windows);
        QVERIFY(window);
        QCOMPARE(window->objectName(), QStringLiteral("frmGraph"));
        QCOMPARE(window->windowTitle(), QStringLiteral("Run / Weather Information"));
        QCOMPARE(entries(window->findChild<QComboBox*>("cboRaceLogs")), QStringList({"Red"}));
        QCOMPARE(entries(window->findChild<QComboBox*>("cboChart")),
                 QStringList({"60 ft", "330 ft", "660 ft", "1000 ft", "1320 ft", "ABP", "Temp",
                              "RH", "AA", "VP", "DA", "WS", "Track Temp"}));
        QCOMPARE(entries(window->findChild<QComboBox*>("cboGraph")),
                 QStringList({"Auto Scale", "Cursors", "Pan", "Zoom In", "Zoom Out"}));
        QCOMPARE(entries(window->findChild<QComboBox*>("cboCursors")),
                 QStringList({"Float", "Snap"}));
        QCOMPARE(window->mouseModeList->currentIndex(), 0);
        QVERIFY(window->cursorModeList->isHidden());
        QCOMPARE(window->findChild<QLabel*>("lblCursor")->text(), QStringLiteral("0.0000"));
        auto* graph = window->findChild<RunGraph*>("runGraph");
        QVERIFY(graph);
        QStringList plots;
        for (int i = 0; i < graph->graphCount(); ++i)
            plots << graph->graph(i)->name();
        QCOMPARE(plots, QStringList({"ft60", "ft330", "ft660", "ft1000", "ft1320", "ABP", "Temp",
                                     "RH", "AA", "VP", "DA", "WS", "TrackTemp"}));
        QCOMPARE(graph->cursorCount(), 1);
        QVERIFY(frameOf(window)->width() >= 600);
        QVERIFY(frameOf(window)->height() >= 400);
    }

    // Choosing a log asks whether to clear; it draws nothing.
    void choosingALogAsksToClear() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, {{{22, "29.92"}}, {{22, "30.1"}}});
        TrendFinderWindow* window = open(windows);
        chooseLog(window, 0, Dialogs::Answer::Yes);
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& question = dialogs->messages[0];
        QCOMPARE(question.title, QStringLiteral("Graph Clear"));
        QCOMPARE(question.text,
                 QStringLiteral("Question:\r\n  Would you like to clear the graph?"));
        QCOMPARE(question.icon, Dialogs::Icon::Question);
        QCOMPARE(question.buttons, Dialogs::Buttons::YesNo);
        for (int i = 0; i < window->graph->graphCount(); ++i)
            QVERIFY(window->graph->graph(i)->data()->isEmpty());
    }

    // The column goes on its plot one run further along for each value, as single precision.
    void aQuantityIsDrawnRunAfterRun() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, {{{22, "29.92"}, {23, "85"}},
                      {{22, "30.1"}, {23, "88.5"}},
                      {{22, ""}, {23, "90"}},
                      {{22, "29.5"}, {23, "91"}}});
        TrendFinderWindow* window = open(windows);
        chooseLog(window, 0, Dialogs::Answer::Yes);
        choose(window->quantityList, AbpEntry);
        // The gap in run 3 ends the column.
        QCOMPARE(points(window->graph, "ABP"),
                 QList<QPointF>({QPointF(1, 29.92f), QPointF(2, 30.1f)}));
        QVERIFY(points(window->graph, "Temp").isEmpty());
        choose(window->quantityList, TempEntry);
        QCOMPARE(points(window->graph, "Temp"), QList<QPointF>({QPointF(1, 85), QPointF(2, 88.5),
                                                                QPointF(3, 90), QPointF(4, 91)}));
        // Chosen again, the column goes on a second time behind the first.
        choose(window->quantityList, AbpEntry);
        QCOMPARE(points(window->graph, "ABP"),
                 QList<QPointF>({QPointF(1, 29.92f), QPointF(2, 30.1f), QPointF(3, 29.92f),
                                 QPointF(4, 30.1f)}));
        // The axes take in what was drawn.
        QVERIFY(window->graph->yAxis->range().contains(29.92));
        QVERIFY(window->graph->yAxis->range().contains(91));
    }

    void textInTheFirstRunDrawsNothing() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, {{{6, "n/a"}}, {{6, "1.25"}}});
        TrendFinderWindow* window = open(windows);
        chooseLog(window, 0, Dialogs::Answer::Yes);
        choose(window->quantityList, 0);
        QVERIFY(points(window->graph, "ft60").isEmpty());
    }

    // Two logs on one quantity run on along the same plot; No keeps the chart for the next
    // log's columns, Yes clears it.
    void twoLogsRunOnAlongOnePlot() {
        GraphWindows windows;
        RaceLogWindow* first = windows.newLog();
        addRuns(first, {{{24, "40"}}, {{24, "42"}}});
        RaceLogWindow* second = windows.newLog();
        addRuns(second, {{{24, "55"}}, {{24, "57.5"}}, {{24, "60"}}});
        TrendFinderWindow* window = open(windows);
        chooseLog(window, 0, Dialogs::Answer::Yes);
        choose(window->quantityList, RhEntry);
        chooseLog(window, 1, Dialogs::Answer::No);
        QCOMPARE(points(window->graph, "RH").size(), 2);
        choose(window->quantityList, RhEntry);
        QCOMPARE(points(window->graph, "RH"),
                 QList<QPointF>({QPointF(1, 40), QPointF(2, 42), QPointF(3, 55), QPointF(4, 57.5),
                                 QPointF(5, 60)}));
        chooseLog(window, 0, Dialogs::Answer::Yes);
        QVERIFY(points(window->graph, "RH").isEmpty());
        choose(window->quantityList, RhEntry);
        QCOMPARE(points(window->graph, "RH"), QList<QPointF>({QPointF(1, 40), QPointF(2, 42)}));
    }

    // A quantity chosen with no log chosen draws nothing.
    void noLogNoDrawing() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, {{{24, "40"}}});
        TrendFinderWindow* window = open(windows);
        QCOMPARE(window->raceLogList->currentIndex(), -1);
        choose(window->quantityList, RhEntry);
        QVERIFY(points(window->graph, "RH").isEmpty());
        QVERIFY(dialogs->messages.isEmpty());
    }

    // The cursor reads its height.
    void theCursorReadsItsHeight() {
        GraphWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, {{{24, "40"}}, {{24, "42"}}, {{24, "47"}}});
        TrendFinderWindow* window = open(windows);
        chooseLog(window, 0, Dialogs::Answer::Yes);
        choose(window->quantityList, RhEntry);
        window->mouseModeList->setCurrentIndex(1);
        RunGraph* graph = window->graph;
        QCOMPARE(graph->trackingMode(), 2);
        QVERIFY(graph->cursorsShown());
        QVERIFY(!window->cursorModeList->isHidden());
        QCOMPARE(graph->cursorPosition(0).y(), graph->yAxis->range().center());
        graph->setCursorPosition(0, QPointF(2.2, 41.25));
        QCOMPARE(window->cursorLabel->text(), QStringLiteral("41.2500"));
        window->cursorModeList->setCurrentIndex(1);
        graph->setCursorPosition(0, QPointF(2.8, 46));
        QCOMPARE(graph->cursorPosition(0), QPointF(3, 47));
        QCOMPARE(window->cursorLabel->text(), QStringLiteral("47.0000"));
        window->mouseModeList->setCurrentIndex(2);
        QCOMPARE(graph->trackingMode(), 3);
        QVERIFY(!graph->cursorsShown());
        QVERIFY(window->cursorModeList->isHidden());
        window->mouseModeList->setCurrentIndex(3);
        QCOMPARE(graph->trackingMode(), 6);
        const QCPRange y = graph->yAxis->range();
        window->mouseModeList->setCurrentIndex(4);
        QCOMPARE(graph->yAxis->range().lower, y.lower - 0.2);
        QCOMPARE(graph->trackingMode(), 6);
    }

    // A log closed while the window is open loses its entry when its quantity is drawn; a
    // log opened meanwhile joins the list.
    void logsClosedAndOpenedWhileTheWindowIsOpen() {
        GraphWindows windows;
        RaceLogWindow* first = windows.newLog();
        addRuns(first, {{{24, "40"}}});
        RaceLogWindow* second = windows.newLog();
        TrendFinderWindow* window = open(windows);
        windows.newLog();
        QCOMPARE(entries(window->raceLogList),
                 QStringList({"Race Log# 1", "Race Log# 2", "Race Log# 3"}));
        chooseLog(window, 1, Dialogs::Answer::No);
        closeLog(second, *dialogs);
        dialogs->queueAnswer(Dialogs::Answer::No);
        choose(window->quantityList, RhEntry);
        QCOMPARE(entries(window->raceLogList), QStringList({"Race Log# 1", "Race Log# 3"}));
        QCOMPARE(window->raceLogList->currentIndex(), 0);
        QVERIFY(points(window->graph, "RH").isEmpty());
        choose(window->quantityList, RhEntry);
        QCOMPARE(points(window->graph, "RH"), QList<QPointF>({QPointF(1, 40)}));
    }

    void printAndPdfExport() {
        GraphWindows windows;
        TrendFinderWindow* window = open(windows);
        windows.main.mdiArea()->setActiveSubWindow(frameOf(window));
        const QString file = home->root() + QStringLiteral("/trend.pdf");
        dialogs->queueFile(file);
        windows.run("miPDFExport");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].title,
                 QStringLiteral("PDF Run / Weather Information Export"));
        QVERIFY(QFile::exists(file));
        dialogs->queuePrinter(false);
        windows.run("miPrint");
        QCOMPARE(dialogs->quietPrintRequests, 1);
    }

    void theWindowKeepsItsPlace() {
        QRect kept;
        {
            GraphWindows windows;
            windows.main.resize(1200, 900);
            windows.main.show();
            TrendFinderWindow* window = open(windows);
            frameOf(window)->setGeometry(60, 20, 720, 500);
            kept = frameOf(window)->geometry();
            frameOf(window)->close();
        }
        GraphWindows windows;
        windows.main.resize(1200, 900);
        windows.main.show();
        TrendFinderWindow* window = open(windows);
        QCOMPARE(frameOf(window)->geometry(), kept);
    }

    // The picture of the manual: the air temperature and the humidity of a day of 30 runs.
    void pictureForTheManual() {
        GraphWindows windows;
        windows.main.resize(1000, 700);
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        log->document().setField(RaceLog::Field::PageIdentifier, "Blue 7");
        for (int run = 1; run <= 30; ++run) {
            if (run > 1)
                log->grid->newRun();
            // The air warms through the day and dries as it does.
            const double temp = 68 + 22 * std::sin(run / 30.0 * 2.6) + 1.5 * std::sin(run * 1.7);
            const double rh = 78 - 0.9 * (temp - 68) + 2 * std::cos(run * 2.1);
            setCells(log, run,
                     {{23, QString::number(temp, 'f', 1)}, {24, QString::number(rh, 'f', 1)}});
        }
        TrendFinderWindow* window = open(windows);
        frameOf(window)->setGeometry(0, 0, 900, 560);
        chooseLog(window, 0, Dialogs::Answer::Yes);
        choose(window->quantityList, TempEntry);
        choose(window->quantityList, RhEntry);
        window->mouseModeList->setCurrentIndex(1);
        window->graph->setCursorPosition(0, QPointF(12, 70));
        QCOMPARE(points(window->graph, "Temp").size(), 30);
        window->graph->replot();
        const QImage picture = frameOf(window)->grab().toImage();
        QVERIFY(!picture.isNull());
        if (qEnvironmentVariableIsSet("TARNWICK_KEEP_PICTURES"))
            QVERIFY(picture.save(qEnvironmentVariable("TARNWICK_KEEP_PICTURES") +
                                 QStringLiteral("/trend-finder.png")));
    }
};

QTEST_MAIN(TestTrendFinder)
#include "tst_trendfinder.moc"
