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
    Dialogs::Inform(text, QStringLiteral("Tarnwick - Performance Factor"), Dialogs::Icon::Critical);
}

} // namespace

PerformanceFactorWindow::PerformanceFactorWindow(OpenRaceLogs& raceLogs, QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("frmGraphET"));
    new KeptPlacement(*this, PlacementKey);
    setWindowTitle(QStringLiteral(" Performance Factor"));
    buildControls();
    logs = new RaceLogList(*cboRaceLogs, raceLogs);
    connect(cboRaceLogs, &QComboBox::currentIndexChanged, this,
            &PerformanceFactorWindow::chooseLog);
    connect(cboRun, &QComboBox::activated, this, &PerformanceFactorWindow::drawRuns);
    connect(cmdGraph, &QPushButton::clicked, this, &PerformanceFactorWindow::regraph);
    connect(cmdSet, &QPushButton::clicked, this, &PerformanceFactorWindow::setFactor);
    connect(etGraph, &QCustomPlot::mousePress, this, &PerformanceFactorWindow::clickGraph);
    // The list starts on its first log, ready for a run to be picked.
    chooseLog();
}

QWidget* PerformanceFactorWindow::make(OpenRaceLogs& raceLogs) {
    return new PerformanceFactorWindow(raceLogs);
}

void PerformanceFactorWindow::buildControls() {
    cboRaceLogs = new QComboBox;
    cboRaceLogs->setObjectName(QStringLiteral("cboRaceLogs"));
    cboRaceLogs->setMinimumContentsLength(12);
    cboRun = new QComboBox;
    cboRun->setObjectName(QStringLiteral("cboRun"));
    cboRun->setMinimumContentsLength(4);
    txtPF = new QLineEdit;
    txtPF->setObjectName(QStringLiteral("txtPF"));
    txtPF->setMaximumWidth(80);
    // The trial factor is typed as the log's own factor is.
    auto* rules = new TextFieldRules(this);
    rules->add(txtPF, KeyFilters::SignedNumber, [] {});
    cmdGraph = new QPushButton(QStringLiteral("&Graph"));
    cmdGraph->setObjectName(QStringLiteral("cmdGraph"));
    cmdSet = new QPushButton(QStringLiteral("Set &PF"));
    cmdSet->setObjectName(QStringLiteral("cmdSet"));

    etGraph = new QCustomPlot;
    etGraph->setObjectName(QStringLiteral("etGraph"));
    // A line per run, and a log can hold a season of runs: no legend keeps track of them.
    etGraph->setAutoAddPlottableToLegend(false);
    etGraph->setBackground(Backdrop);
    etGraph->axisRect()->setBackground(Backdrop);
    paintAxis(etGraph->xAxis, QStringLiteral("ET"));
    paintAxis(etGraph->yAxis, QStringLiteral("AA"));

    auto* bar = new QHBoxLayout;
    const auto caption = [this](const QString& text, QWidget* buddy) {
        auto* label = new QLabel(text, this);
        label->setBuddy(buddy);
        return label;
    };
    bar->addWidget(caption(QStringLiteral("Race &Log"), cboRaceLogs));
    bar->addWidget(cboRaceLogs);
    bar->addWidget(caption(QStringLiteral("&Run"), cboRun));
    bar->addWidget(cboRun);
    bar->addWidget(caption(QStringLiteral("P&F"), txtPF));
    bar->addWidget(txtPF);
    bar->addWidget(cmdGraph);
    bar->addWidget(cmdSet);
    bar->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(etGraph, 1);
}

// A log's runs become the lists of the graph; nothing is drawn until a run is picked. A log
// whose entry only moved in the list (a log opened before it) is still the one shown.
void PerformanceFactorWindow::chooseLog() {
    const int entry = cboRaceLogs->currentIndex();
    const int slot = entry >= 0 ? cboRaceLogs->itemData(entry).toInt() : -1;
    RaceLog* log = logs->chosen();
    if (!log || (log == shownLog && slot == shownSlot))
        return;
    shownLog = log;
    shownSlot = slot;

    etGraph->clearPlottables();
    etGraph->replot();
    const RunTable& table = log->runs();
    {
        const QSignalBlocker quiet(cboRun);
        cboRun->clear();
        cboRun->addItem(QStringLiteral("All"));
        for (int run = 1; run < table.tableRows(); ++run)
            cboRun->addItem(QString::number(run));
        cboRun->setCurrentIndex(-1);
    }
    const QString factor = log->field(RaceLog::Field::PF);
    txtPF->setText(NumberText::IsNumeric(factor) ? factor : NoFactor);
    usable = Graph::usableRuns(*log, NumberText::ToDouble(txtPF->text()).value_or(0.0));
}

// "All" draws every run afresh; a single run is added to what is drawn. A run whose line
// cannot be drawn (one at AA 0) ends the drawing there.
void PerformanceFactorWindow::drawRuns(int entry) {
    if (entry < 0)
        return;
    QList<Graph::Run> taken;
    if (entry == 0) {
        etGraph->clearPlottables();
        taken = usable;
    } else if (entry <= usable.size()) {
        taken.append(usable[entry - 1]);
    }
    try {
        for (const Graph::Run& run : taken) {
            const Graph::Line line = Graph::lineThrough(run);
            auto* plot = new QCPCurve(etGraph->xAxis, etGraph->yAxis);
            plot->setPen(QPen(Graph::plotColour(etGraph->plottableCount()), 2));
            plot->setData(QList<double>{line.x[0], line.x[1]}, QList<double>{line.y[0], line.y[1]});
        }
    } catch (const ComputeFault&) {
        // The lines drawn so far stay.
    }
    scaleToData(*etGraph);
    etGraph->replot();
}

// The slopes for the trial factor; the graph keeps the old lines until a run is picked.
void PerformanceFactorWindow::regraph() {
    cmdGraph->setEnabled(false);
    if (!NumberText::IsNumeric(txtPF->text()))
        txtPF->setText(NoFactor);
    try {
        Graph::reslope(usable, ComputeCheck::converted(txtPF->text()));
        cboRun->setCurrentIndex(-1);
    } catch (const ComputeFault&) {
        inform(QStringLiteral("Error detected in graph option!"));
    }
    cmdGraph->setEnabled(true);
}

// The factor goes into the log as typed, as one step the log can undo. The log predicts with
// it at the next reading or Predict.
void PerformanceFactorWindow::setFactor() {
    const int entry = cboRaceLogs->currentIndex();
    if (entry < 0 || cboRaceLogs->itemData(entry).toInt() != shownSlot || !shownLog)
        return;
    const QString factor = txtPF->text();
    if (!NumberText::IsNumeric(factor))
        return;
    shownLog->change(QStringLiteral("Set PF"), [&factor](RaceLogData& log) { log.pf = factor; });
}

// A left click fits the axes to the lines and lets the mouse zoom; a right click widens them
// a little and stops the zoom.
void PerformanceFactorWindow::clickGraph(QMouseEvent* event) {
    try {
        if (event->button() == Qt::LeftButton) {
            if (tracking != ZoomTracking)
                scaleToData(*etGraph);
            tracking = ZoomTracking;
            etGraph->setSelectionRectMode(QCP::srmZoom);
        } else if (event->button() == Qt::RightButton) {
            for (QCPAxis* axis : {etGraph->xAxis, etGraph->yAxis})
                axis->setRange(axis->range().lower - 0.2, axis->range().upper + 0.2);
            tracking = ClickTracking;
            etGraph->setSelectionRectMode(QCP::srmNone);
        }
        etGraph->replot();
    } catch (const std::exception&) {
        inform(QStringLiteral("Error detected in graph function!"));
    }
}

void PerformanceFactorWindow::printDocument() {
    ChartPrinting::print(ChartPrinting::drawingOf(*etGraph));
}

void PerformanceFactorWindow::saveAsPdf() {
    ChartPrinting::saveAsPdf(QStringLiteral("Performance Factor"), *etGraph);
}
