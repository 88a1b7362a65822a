#include "ui/graphs/ThrottleStopGraphWindow.h"

#include "core/NumberText.h"
#include "core/SettingKeys.h"
#include "prediction/ThrottleStopPoints.h"
#include "racelog/OpenRaceLogs.h"
#include "racelog/RaceLog.h"
#include "ui/graphs/RunGraph.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

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
    return NumberText::format(float(at.y()), QStringLiteral("0.0000")) + QStringLiteral(",  ") +
           NumberText::format(float(at.x()), QStringLiteral("0.0000"));
}

void plotPoints(QCPGraph* plot, const std::vector<ThrottleStopPoints::Point>& points) {
    for (const ThrottleStopPoints::Point& point : points)
        plot->addData(point.x, point.y);
}

} // namespace

ThrottleStopGraphWindow::ThrottleStopGraphWindow(OpenRaceLogs& openLogs, QWidget* parent)
    : RunGraphWindow(openLogs,
                     {"frmGraphTS", Caption, placementKey(), {760, 520}, CursorModes, 2, "tsGraph"},
                     parent),
      raceLogs(openLogs) {
    laneList = new QComboBox(this);
    laneList->setObjectName(QStringLiteral("cboLanes"));
    laneList->addItems(
        {QStringLiteral("Both Lanes"), QStringLiteral("Left Lane"), QStringLiteral("Right Lane")});
    laneList->setToolTip(QStringLiteral("The lanes the fitted line goes through"));
    laneList->hide();
    for (int i = 0; i < 2; ++i) {
        cursorLabel[i] = new QLabel(QStringLiteral("0.0000,  0.0000"), this);
        cursorLabel[i]->setObjectName(QStringLiteral("lblCursor"));
        cursorLabel[i]->setProperty("index", i);
        cursorLabel[i]->setMinimumWidth(
            cursorLabel[i]->fontMetrics().horizontalAdvance(QStringLiteral("00.0000,  00.0000")));
    }
    setButton = new QPushButton(QStringLiteral("Set &TSR"), this);
    setButton->setObjectName(QStringLiteral("cmdSet"));

    graph->xAxis->setLabel(QStringLiteral("ET at 0 ft AA"));
    graph->yAxis->setLabel(QStringLiteral("Timer 2"));
    graph->addPlot(LeftPlot, LeftLane, false);
    graph->addPlot(RightPlot, RightLane, false);
    QCPGraph* line = graph->addPlot(LinePlot, Line, true);
    line->setScatterStyle(QCPScatterStyle::ssNone);
    graph->setCursorLine(line);

    connect(laneList, &QComboBox::currentIndexChanged, this, &ThrottleStopGraphWindow::fitCursors);
    connect(graph, &RunGraph::cursorMoved, this, &ThrottleStopGraphWindow::showCursors);
    connect(setButton, &QPushButton::clicked, this, &ThrottleStopGraphWindow::setTsr);
    layOut({mouseModeList, cursorModeList, laneList, cursorLabel[0], cursorLabel[1], nullptr,
            setButton});
}

QWidget* ThrottleStopGraphWindow::make(OpenRaceLogs& raceLogs) {
    return new ThrottleStopGraphWindow(raceLogs);
}

// A log without a target or with one incomplete run shows an empty chart: see collect().
void ThrottleStopGraphWindow::logChosen() {
    RaceLog* log = chosenLog();
    if (!log)
        return;
    graph->clearData();
    shownLanes = {};
    const RunTable& runs = log->runs();
    const std::optional<ThrottleStopPoints::Lanes> lanes = ThrottleStopPoints::collect(
        [&runs](int row, int column) { return runs.cell(row, column); }, runs.tableRows() - 1,
        log->field(RaceLog::Field::PF), log->field(RaceLog::Field::TargetET));
    if (!lanes)
        return;
    shownLanes = *lanes;
    plotPoints(graph->plot(LeftPlot), lanes->left);
    plotPoints(graph->plot(RightPlot), lanes->right);
    graph->fitAxes();
    chooseMouseMode(mouseModeList->currentIndex());
}

// The line through the cursors stands only while the cursors do.
void ThrottleStopGraphWindow::chooseMouseMode(int mode) {
    if (mode != RunGraph::Cursors)
        graph->plot(LinePlot)->data()->clear();
    RunGraphWindow::chooseMouseMode(mode);
}

// A fitted pair of cursors floats: the user may still move them by hand afterwards.
void ThrottleStopGraphWindow::chooseCursorMode(int mode) {
    laneList->setVisible(mode == FitMode && cursorModeList->isVisibleTo(this));
    RunGraphWindow::chooseCursorMode(mode == FitMode ? 0 : mode);
    if (mode == FitMode)
        fitCursors();
}

// The cursors go on the fitted line at the first and last ET of the points, so the caption
// shows the line's ratio just as if they had been laid there by hand; the second cursor's
// label then tells the points' spread about the line.
void ThrottleStopGraphWindow::fitCursors() {
    if (cursorModeList->currentIndex() != FitMode)
        return;
    std::vector<ThrottleStopPoints::Point> points;
    if (laneList->currentIndex() != RightLaneOnly)
        points.insert(points.end(), shownLanes.left.begin(), shownLanes.left.end());
    if (laneList->currentIndex() != LeftLaneOnly)
        points.insert(points.end(), shownLanes.right.begin(), shownLanes.right.end());
    const std::optional<ThrottleStopPoints::LineFit> fit = ThrottleStopPoints::fitLine(points);
    if (!fit) {
        cursorLabel[1]->setText(QStringLiteral("No line to fit"));
        return;
    }
    graph->setCursorPosition(0, QPointF(fit->firstX, fit->at(fit->firstX)));
    graph->setCursorPosition(1, QPointF(fit->lastX, fit->at(fit->lastX)));
    cursorLabel[1]->setText(QStringLiteral("RMS ") +
                            NumberText::format(fit->rms, QStringLiteral("0.0000")) +
                            QStringLiteral(" s"));
}

// A cursor moved: its reading, the line through both and the ratio of that line. Level
// cursors keep the ratio found before, upright ones leave the caption as it was.
void ThrottleStopGraphWindow::showCursors() {
    const QPointF first = graph->cursorPosition(0);
    const QPointF second = graph->cursorPosition(1);
    cursorLabel[0]->setText(cursorText(first));
    cursorLabel[1]->setText(cursorText(second));
    QCPGraph* line = graph->plot(LinePlot);
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
    if (raceLogList->currentIndex() < 0)
        return nullptr;
    return raceLogs.at(raceLogList->currentData().toInt());
}
