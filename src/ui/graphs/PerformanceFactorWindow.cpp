#include "ui/graphs/PerformanceFactorWindow.h"

#include "core/Dialogs.h"
#include "core/NumberText.h"
#include "core/SettingKeys.h"
#include "prediction/ComputeFault.h"
#include "racelog/KeyFilters.h"
#include "racelog/OpenRaceLogs.h"
#include "racelog/RaceLog.h"
#include "ui/charts/ChartPrinting.h"
#include "ui/graphs/RaceLogList.h"
#include "ui/racelog/TextFieldRules.h"
#include "ui/shell/WindowPlacement.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <qcustomplot.h>

namespace Graph = PerformanceFactorGraph;

namespace {

// The throttle stop graph and this one share their place on the screen: a crew uses one
// after the other on the same spot.
const QString PlacementKey = SettingKeys::placementPath(u"GraphTS");

const QColor Backdrop(0, 0, 0);
const QColor Frame(200, 200, 200);
const QColor GridLine(70, 70, 70);

// A trial factor that is no number is taken as none.
const QString NoFactor = QStringLiteral("0.00");

void paintAxis(QCPAxis* axis, const QString& label) {
    axis->setLabel(label);
    axis->setBasePen(QPen(Frame));
    axis->setTickPen(QPen(Frame));
    axis->setSubTickPen(QPen(Frame));
    axis->setTickLabelColor(Frame);
    axis->setLabelColor(Frame);
    axis->grid()->setPen(QPen(GridLine, 0, Qt::DotLine));
    axis->grid()->setZeroLinePen(Qt::NoPen);
}

// The lines fill the graph with a little room to spare, so no end sits on the frame.
void scaleToData(QCustomPlot& graph) {
    graph.rescaleAxes();
    for (QCPAxis* axis : {graph.xAxis, graph.yAxis}) {
        const QCPRange range = axis->range();
        const double margin = range.size() > 0 ? range.size() * 0.05 : 0.5;
        axis->setRange(range.lower - margin, range.upper + margin);
    }
}

void inform(const QString& text) {
    Dialogs::inform(text, QStringLiteral("Tarnwick - Performance Factor"), Dialogs::Icon::Critical);
}

} // namespace

PerformanceFactorWindow::PerformanceFactorWindow(OpenRaceLogs& raceLogs, QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("frmGraphET"));
    new KeptPlacement(*this, PlacementKey);
    setWindowTitle(QStringLiteral(" Performance Factor"));
    buildControls();
    listedLogs = new RaceLogList(*raceLogList, raceLogs);
    connect(raceLogList, &QComboBox::currentIndexChanged, this,
            &PerformanceFactorWindow::chooseLog);
    connect(runList, &QComboBox::activated, this, &PerformanceFactorWindow::drawRuns);
    connect(graphButton, &QPushButton::clicked, this, &PerformanceFactorWindow::regraph);
    connect(setButton, &QPushButton::clicked, this, &PerformanceFactorWindow::setFactor);
    connect(graph, &QCustomPlot::mousePress, this, &PerformanceFactorWindow::clickGraph);
    // The list starts on its first log, ready for a run to be picked.
    chooseLog();
}

QWidget* PerformanceFactorWindow::make(OpenRaceLogs& raceLogs) {
    return new PerformanceFactorWindow(raceLogs);
}

void PerformanceFactorWindow::buildControls() {
    raceLogList = new QComboBox;
    raceLogList->setObjectName(QStringLiteral("cboRaceLogs"));
    raceLogList->setMinimumContentsLength(12);
    runList = new QComboBox;
    runList->setObjectName(QStringLiteral("cboRun"));
    runList->setMinimumContentsLength(4);
    pfField = new QLineEdit;
    pfField->setObjectName(QStringLiteral("txtPF"));
    pfField->setMaximumWidth(80);
    // The trial factor is typed as the log's own factor is.
    auto* rules = new TextFieldRules(this);
    rules->add(pfField, KeyFilters::signedNumber, [] {});
    graphButton = new QPushButton(QStringLiteral("&Graph"));
    graphButton->setObjectName(QStringLiteral("cmdGraph"));
    setButton = new QPushButton(QStringLiteral("Set &PF"));
    setButton->setObjectName(QStringLiteral("cmdSet"));

    graph = new QCustomPlot;
    graph->setObjectName(QStringLiteral("etGraph"));
    // A line per run, and a log can hold a season of runs: no legend keeps track of them.
    graph->setAutoAddPlottableToLegend(false);
    graph->setBackground(Backdrop);
    graph->axisRect()->setBackground(Backdrop);
    paintAxis(graph->xAxis, QStringLiteral("ET"));
    paintAxis(graph->yAxis, QStringLiteral("AA"));

    auto* bar = new QHBoxLayout;
    const auto caption = [this](const QString& text, QWidget* buddy) {
        auto* label = new QLabel(text, this);
        label->setBuddy(buddy);
        return label;
    };
    bar->addWidget(caption(QStringLiteral("Race &Log"), raceLogList));
    bar->addWidget(raceLogList);
    bar->addWidget(caption(QStringLiteral("&Run"), runList));
    bar->addWidget(runList);
    bar->addWidget(caption(QStringLiteral("P&F"), pfField));
    bar->addWidget(pfField);
    bar->addWidget(graphButton);
    bar->addWidget(setButton);
    bar->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(graph, 1);
}

// A log's runs become the lists of the graph; nothing is drawn until a run is picked. A log
// whose entry only moved in the list (a log opened before it) is still the one shown.
void PerformanceFactorWindow::chooseLog() {
    const int entry = raceLogList->currentIndex();
    const int slot = entry >= 0 ? raceLogList->itemData(entry).toInt() : -1;
    RaceLog* log = listedLogs->chosen();
    if (!log || (log == shownLog && slot == shownSlot))
        return;
    shownLog = log;
    shownSlot = slot;

    graph->clearPlottables();
    graph->replot();
    const RunTable& table = log->runs();
    {
        const QSignalBlocker quiet(runList);
        runList->clear();
        runList->addItem(QStringLiteral("All"));
        for (int run = 1; run < table.tableRows(); ++run)
            runList->addItem(QString::number(run));
        runList->setCurrentIndex(-1);
    }
    const QString factor = log->field(RaceLog::Field::PF);
    pfField->setText(NumberText::isNumeric(factor) ? factor : NoFactor);
    usable = Graph::usableRuns(*log, NumberText::toDouble(pfField->text()).value_or(0.0));
}

// "All" draws every run afresh; a single run is added to what is drawn. A run whose line
// cannot be drawn (one at AA 0) ends the drawing there.
void PerformanceFactorWindow::drawRuns(int entry) {
    if (entry < 0)
        return;
    QList<Graph::Run> taken;
    if (entry == 0) {
        graph->clearPlottables();
        taken = usable;
    } else if (entry <= usable.size()) {
        taken.append(usable[entry - 1]);
    }
    try {
        for (const Graph::Run& run : taken) {
            const Graph::Line line = Graph::lineThrough(run);
            auto* plot = new QCPCurve(graph->xAxis, graph->yAxis);
            plot->setPen(QPen(Graph::plotColour(graph->plottableCount()), 2));
            plot->setData(QList<double>{line.x[0], line.x[1]}, QList<double>{line.y[0], line.y[1]});
        }
    } catch (const ComputeFault&) {
        // The lines drawn so far stay.
    }
    scaleToData(*graph);
    graph->replot();
}

// The slopes for the trial factor; the graph keeps the old lines until a run is picked.
void PerformanceFactorWindow::regraph() {
    graphButton->setEnabled(false);
    if (!NumberText::isNumeric(pfField->text()))
        pfField->setText(NoFactor);
    try {
        Graph::reslope(usable, ComputeCheck::converted(pfField->text()));
        runList->setCurrentIndex(-1);
    } catch (const ComputeFault&) {
        inform(QStringLiteral("Error detected in graph option!"));
    }
    graphButton->setEnabled(true);
}

// The factor goes into the log as typed, as one step the log can undo. The log predicts with
// it at the next reading or Predict.
void PerformanceFactorWindow::setFactor() {
    const int entry = raceLogList->currentIndex();
    if (entry < 0 || raceLogList->itemData(entry).toInt() != shownSlot || !shownLog)
        return;
    const QString factor = pfField->text();
    if (!NumberText::isNumeric(factor))
        return;
    shownLog->change(QStringLiteral("Set PF"), [&factor](RaceLogData& log) { log.pf = factor; });
}

// A left click fits the axes to the lines and lets the mouse zoom; a right click widens them
// a little and stops the zoom.
void PerformanceFactorWindow::clickGraph(QMouseEvent* event) {
    try {
        if (event->button() == Qt::LeftButton) {
            if (tracking != ZoomTracking)
                scaleToData(*graph);
            tracking = ZoomTracking;
            graph->setSelectionRectMode(QCP::srmZoom);
        } else if (event->button() == Qt::RightButton) {
            for (QCPAxis* axis : {graph->xAxis, graph->yAxis})
                axis->setRange(axis->range().lower - 0.2, axis->range().upper + 0.2);
            tracking = ClickTracking;
            graph->setSelectionRectMode(QCP::srmNone);
        }
        graph->replot();
    } catch (const std::exception&) {
        inform(QStringLiteral("Error detected in graph function!"));
    }
}

void PerformanceFactorWindow::printDocument() {
    ChartPrinting::print(ChartPrinting::drawingOf(*graph));
}

void PerformanceFactorWindow::saveAsPdf() {
    ChartPrinting::saveAsPdf(QStringLiteral("Performance Factor"), *graph);
}
