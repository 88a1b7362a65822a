#include "ui/graphs/ThrottleStopGraphWindow.h"

#include "core/NumberText.h"
#include "core/SettingKeys.h"
#include "prediction/ThrottleStopPoints.h"
#include "racelog/OpenRaceLogs.h"
#include "racelog/RaceLog.h"
#include "ui/charts/ChartPrinting.h"
#include "ui/graphs/RaceLogList.h"
#include "ui/graphs/RunGraph.h"
#include "ui/shell/WindowPlacement.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const QString Caption = QStringLiteral("Throttle Stop Ratio");
const QString LeftPlot = QStringLiteral("left");
const QString RightPlot = QStringLiteral("right");
const QString LinePlot = QStringLiteral("line");
const QColor LeftLane(255, 220, 0);
const QColor RightLane(0, 200, 255);
const QColor Line(255, 255, 255);

// The cursor list: the chart's own two ways, then the fit, which the window makes.
const QStringList CursorModes{QStringLiteral("Float"), QStringLiteral("Snap"),
                              QStringLiteral("Fit")};
constexpr int FitMode = 2;
// The lanes a fit goes through.
enum FitLanes { BothLanes, LeftLaneOnly, RightLaneOnly };

QString placementKey() {
    return SettingKeys::placementPath(u"GraphTS");
}

QString cursorText(const QPointF& at) {
    return NumberText::Format(float(at.y()), QStringLiteral("0.0000")) + QStringLiteral(",  ") +
           NumberText::Format(float(at.x()), QStringLiteral("0.0000"));
}

void plotPoints(QCPGraph* plot, const std::vector<ThrottleStopPoints::Point>& points) {
    for (const ThrottleStopPoints::Point& point : points)
        plot->addData(point.x, point.y);
}

} // namespace

ThrottleStopGraphWindow::ThrottleStopGraphWindow(OpenRaceLogs& openLogs, QWidget* parent)
    : QWidget(parent), raceLogs(openLogs) {
    setObjectName(QStringLiteral("frmGraphTS"));
    new KeptPlacement(*this, placementKey());
    setWindowTitle(Caption);
    setAttribute(Qt::WA_DeleteOnClose);

    cboRaceLogs = new QComboBox(this);
    cboRaceLogs->setObjectName(QStringLiteral("cboRaceLogs"));
    cboRaceLogs->setToolTip(QStringLiteral("Race Logs"));
    cboRaceLogs->setMinimumContentsLength(14);
    cboGraph = new QComboBox(this);
    cboGraph->setObjectName(QStringLiteral("cboGraph"));
    cboGraph->addItems(RunGraph::MouseModes);
    cboCursors = new QComboBox(this);
    cboCursors->setObjectName(QStringLiteral("cboCursors"));
    cboCursors->addItems(CursorModes);
    cboLanes = new QComboBox(this);
    cboLanes->setObjectName(QStringLiteral("cboLanes"));
    cboLanes->addItems(
        {QStringLiteral("Both Lanes"), QStringLiteral("Left Lane"), QStringLiteral("Right Lane")});
    cboLanes->setToolTip(QStringLiteral("The lanes the fitted line goes through"));
    cboLanes->hide();
    for (int i = 0; i < 2; ++i) {
        lblCursor[i] = new QLabel(QStringLiteral("0.0000,  0.0000"), this);
        lblCursor[i]->setObjectName(QStringLiteral("lblCursor"));
        lblCursor[i]->setProperty("index", i);
        lblCursor[i]->setMinimumWidth(
            lblCursor[i]->fontMetrics().horizontalAdvance(QStringLiteral("00.0000,  00.0000")));
    }
    cmdSet = new QPushButton(QStringLiteral("Set &TSR"), this);
    cmdSet->setObjectName(QStringLiteral("cmdSet"));

    tsGraph = new RunGraph(2, this);
    tsGraph->setObjectName(QStringLiteral("tsGraph"));
    tsGraph->xAxis->setLabel(QStringLiteral("ET at 0 ft AA"));
    tsGraph->yAxis->setLabel(QStringLiteral("Timer 2"));
    tsGraph->addPlot(LeftPlot, LeftLane, false);
    tsGraph->addPlot(RightPlot, RightLane, false);
    QCPGraph* line = tsGraph->addPlot(LinePlot, Line, true);
    line->setScatterStyle(QCPScatterStyle::ssNone);
    tsGraph->setCursorLine(line);

    auto* controls = new QHBoxLayout;
    controls->addWidget(new QLabel(QStringLiteral("Race Logs"), this));
    controls->addWidget(cboRaceLogs);
    controls->addWidget(cboGraph);
    controls->addWidget(cboCursors);
    controls->addWidget(cboLanes);
    controls->addWidget(lblCursor[0]);
    controls->addWidget(lblCursor[1]);
    controls->addStretch();
    controls->addWidget(cmdSet);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(tsGraph, 1);

    // Nothing is drawn until the user chooses a log.
    logs = new RaceLogList(*cboRaceLogs, raceLogs);
    cboRaceLogs->setCurrentIndex(-1);
    connect(cboRaceLogs, &QComboBox::currentIndexChanged, this,
            &ThrottleStopGraphWindow::drawChosenLog);
    connect(cboGraph, &QComboBox::currentIndexChanged, this,
            &ThrottleStopGraphWindow::chooseMouseMode);
    connect(cboCursors, &QComboBox::currentIndexChanged, this,
            &ThrottleStopGraphWindow::chooseCursorMode);
    connect(cboLanes, &QComboBox::currentIndexChanged, this, &ThrottleStopGraphWindow::fitCursors);
    connect(tsGraph, &RunGraph::cursorMoved, this, &ThrottleStopGraphWindow::showCursors);
    connect(cmdSet, &QPushButton::clicked, this, &ThrottleStopGraphWindow::setTsr);

    cboCursors->setCurrentIndex(0);
    chooseMouseMode(0);
}

QWidget* ThrottleStopGraphWindow::make(OpenRaceLogs& raceLogs) {
    return new ThrottleStopGraphWindow(raceLogs);
}

QSize ThrottleStopGraphWindow::sizeHint() const {
    return {760, 520};
}

// A log without a target or with one incomplete run shows an empty chart: see collect().
void ThrottleStopGraphWindow::drawChosenLog() {
    if (cboRaceLogs->currentIndex() < 0)
        return;
    RaceLog* log = logs->chosen();
    if (!log)
        return;
    tsGraph->clearData();
    shownLanes = {};
    const RunTable& runs = log->runs();
    const std::optional<ThrottleStopPoints::Lanes> lanes = ThrottleStopPoints::collect(
        [&runs](int row, int column) { return runs.cell(row, column); }, runs.tableRows() - 1,
        log->field(RaceLog::Field::PF), log->field(RaceLog::Field::TargetET));
    if (!lanes)
        return;
    shownLanes = *lanes;
    plotPoints(tsGraph->plot(LeftPlot), lanes->left);
    plotPoints(tsGraph->plot(RightPlot), lanes->right);
    tsGraph->fitAxes();
    chooseMouseMode(cboGraph->currentIndex());
}

// The line through the cursors stands only while the cursors do.
void ThrottleStopGraphWindow::chooseMouseMode(int mode) {
    if (mode != RunGraph::Cursors)
        tsGraph->plot(LinePlot)->data()->clear();
    tsGraph->setMouseMode(mode);
    cboCursors->setVisible(mode == RunGraph::Cursors);
    if (mode == RunGraph::Cursors) {
        cboCursors->setCurrentIndex(0);
        chooseCursorMode(0);
    }
}

// A fitted pair of cursors floats: the user may still move them by hand afterwards.
void ThrottleStopGraphWindow::chooseCursorMode(int mode) {
    cboLanes->setVisible(mode == FitMode && cboCursors->isVisibleTo(this));
    tsGraph->chooseCursorMode(mode == FitMode ? 0 : mode);
    if (mode == FitMode)
        fitCursors();
}

// The cursors go on the fitted line at the first and last ET of the points, so the caption
// shows the line's ratio just as if they had been laid there by hand; the second cursor's
// label then tells the points' spread about the line.
void ThrottleStopGraphWindow::fitCursors() {
    if (cboCursors->currentIndex() != FitMode)
        return;
    std::vector<ThrottleStopPoints::Point> points;
    if (cboLanes->currentIndex() != RightLaneOnly)
        points.insert(points.end(), shownLanes.left.begin(), shownLanes.left.end());
    if (cboLanes->currentIndex() != LeftLaneOnly)
        points.insert(points.end(), shownLanes.right.begin(), shownLanes.right.end());
    const std::optional<ThrottleStopPoints::LineFit> fit = ThrottleStopPoints::fitLine(points);
    if (!fit) {
        lblCursor[1]->setText(QStringLiteral("No line to fit"));
        return;
    }
    tsGraph->setCursorPosition(0, QPointF(fit->firstX, fit->at(fit->firstX)));
    tsGraph->setCursorPosition(1, QPointF(fit->lastX, fit->at(fit->lastX)));
    lblCursor[1]->setText(QStringLiteral("RMS ") +
                          NumberText::Format(fit->rms, QStringLiteral("0.0000")) +
                          QStringLiteral(" s"));
}

// A cursor moved: its reading, the line through both and the ratio of that line. Level
// cursors keep the ratio found before, upright ones leave the caption as it was.
void ThrottleStopGraphWindow::showCursors() {
    const QPointF first = tsGraph->cursorPosition(0);
    const QPointF second = tsGraph->cursorPosition(1);
    lblCursor[0]->setText(cursorText(first));
    lblCursor[1]->setText(cursorText(second));
    QCPGraph* line = tsGraph->plot(LinePlot);
    line->data()->clear();
    line->addData(float(first.x()), float(first.y()));
    line->addData(float(second.x()), float(second.y()));
    const std::optional<float> ratio = ThrottleStopPoints::ratio(
        float(first.x()), float(first.y()), float(second.x()), float(second.y()));
    if (ratio)
        setWindowTitle(ThrottleStopPoints::captionWithRatio(windowTitle(), *ratio));
}

// The ratio goes in as the caption shows it, as one step of the log's undo; the log's
// prediction takes it up with the next weather line or Predict.
void ThrottleStopGraphWindow::setTsr() {
    RaceLog* log = openChosenLog();
    if (!log)
        return;
    const std::optional<QString> ratio = ThrottleStopPoints::ratioInCaption(windowTitle());
    if (!ratio)
        return;
    log->change(QStringLiteral("Set TSR"), [&ratio](RaceLogData& data) { data.tsr = *ratio; });
}

RaceLog* ThrottleStopGraphWindow::openChosenLog() const {
    if (cboRaceLogs->currentIndex() < 0)
        return nullptr;
    return raceLogs.at(cboRaceLogs->currentData().toInt());
}

void ThrottleStopGraphWindow::printDocument() {
    ChartPrinting::print(ChartPrinting::drawingOf(*tsGraph));
}

void ThrottleStopGraphWindow::saveAsPdf() {
    ChartPrinting::saveAsPdf(Caption, *tsGraph);
}
