#include "ui/graphs/RunGraph.h"

#include <cmath>
#include <limits>

namespace {

const QColor Backdrop(0, 0, 0);
const QColor Frame(200, 200, 200);
const QColor GridLine(60, 60, 60);
const QColor CursorColor(255, 0, 255);
// The share of an axis's span left free beyond the outermost points, so that no point sits on
// the frame.
constexpr double FitMargin = 0.05;
constexpr double ZoomOutStep = 0.2;

void paintAxis(QCPAxis* axis) {
    axis->setBasePen(QPen(Frame));
    axis->setTickPen(QPen(Frame));
    axis->setSubTickPen(QPen(Frame));
    axis->setTickLabelColor(Frame);
    axis->setLabelColor(Frame);
    axis->grid()->setPen(QPen(GridLine, 0, Qt::DotLine));
}

void widen(QCPAxis* axis, double by) {
    const QCPRange range = axis->range();
    axis->setRange(range.lower - by, range.upper + by);
}

} // namespace

const QStringList RunGraph::MouseModes{QStringLiteral("Auto Scale"), QStringLiteral("Cursors"),
                                       QStringLiteral("Pan"), QStringLiteral("Zoom In"),
                                       QStringLiteral("Zoom Out")};

RunGraph::RunGraph(int cursorCount, QWidget* parent) : QCustomPlot(parent) {
    setBackground(Backdrop);
    axisRect()->setBackground(Backdrop);
    paintAxis(xAxis);
    paintAxis(yAxis);
    axisRect()->setRangeDrag(Qt::Horizontal | Qt::Vertical);
    axisRect()->setRangeZoom(Qt::Horizontal | Qt::Vertical);
    // The cursors, and the line through them, have a layer of their own: a drag draws that
    // layer again, not every run's point.
    addLayer(QStringLiteral("cursors"), layer(QStringLiteral("main")), limAbove);
    cursorLayer = layer(QStringLiteral("cursors"));
    cursorLayer->setMode(QCPLayer::lmBuffered);
    for (int i = 0; i < cursorCount; ++i) {
        Cursor cursor{new QCPItemStraightLine(this), new QCPItemStraightLine(this), {}};
        for (QCPItemStraightLine* line : {cursor.upright, cursor.level}) {
            line->setObjectName(QStringLiteral("cursor%1").arg(i + 1));
            line->setPen(QPen(CursorColor, 1, i == 0 ? Qt::SolidLine : Qt::DashLine));
            line->setSelectable(false);
            line->setVisible(false);
            line->setLayer(cursorLayer);
        }
        cursors.push_back(cursor);
        place(cursors.back(), QPointF(0, 0));
    }
}

QCPGraph* RunGraph::addPlot(const QString& name, const QColor& color, bool joined) {
    QCPGraph* added = addGraph();
    added->setName(name);
    added->setPen(QPen(color, 1));
    added->setLineStyle(joined ? QCPGraph::lsLine : QCPGraph::lsNone);
    added->setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssDisc, color, color, 6));
    return added;
}

QCPGraph* RunGraph::plot(const QString& name) const {
    for (int i = 0; i < graphCount(); ++i) {
        if (graph(i)->name() == name)
            return graph(i);
    }
    return nullptr;
}

void RunGraph::clearData() {
    for (int i = 0; i < graphCount(); ++i)
        graph(i)->data()->clear();
    replot(rpQueuedReplot);
}

void RunGraph::fitAxes() {
    rescaleAxes();
    for (QCPAxis* axis : {xAxis, yAxis}) {
        const QCPRange range = axis->range();
        widen(axis, range.size() * FitMargin);
    }
    replot(rpQueuedReplot);
}

void RunGraph::widenAxes() {
    widen(xAxis, ZoomOutStep);
    widen(yAxis, ZoomOutStep);
    replot(rpQueuedReplot);
}

// Scaling and zooming out happen at once and leave the mouse as it was; the other modes give
// the mouse its work on the chart.
void RunGraph::setMouseMode(int mode) {
    switch (mode) {
    case AutoScale:
        fitAxes();
        break;
    case Cursors:
        tracking = DragCursors;
        setInteractions({});
        setSelectionRectMode(QCP::srmNone);
        break;
    case Pan:
        tracking = PanPlotArea;
        setInteractions(QCP::iRangeDrag);
        setSelectionRectMode(QCP::srmNone);
        break;
    case ZoomIn:
        tracking = ZoomRectangle;
        setInteractions(QCP::iRangeZoom);
        setSelectionRectMode(QCP::srmZoom);
        break;
    case ZoomOut:
        widenAxes();
        break;
    default:
        return;
    }
    showCursors(mode == Cursors);
}

bool RunGraph::cursorsShown() const {
    return !cursors.empty() && cursors.front().upright->visible();
}

void RunGraph::showCursors(bool shown) {
    for (Cursor& cursor : cursors) {
        cursor.upright->setVisible(shown);
        cursor.level->setVisible(shown);
    }
    replot(rpQueuedReplot);
}

void RunGraph::setSnap(bool snap) {
    snapping = snap;
}

QPointF RunGraph::cursorPosition(int index) const {
    return cursors[std::size_t(index)].at;
}

void RunGraph::setCursorPosition(int index, const QPointF& position) {
    if (index < 0 || index >= cursorCount())
        return;
    place(cursors[std::size_t(index)], snapping ? nearestPoint(position) : position);
    emit cursorMoved(index);
    cursorLayer->replot();
}

void RunGraph::setCursorLine(QCPGraph* plot) {
    cursorLine = plot;
    plot->setLayer(cursorLayer);
}

// All cursors stand in the middle before any move is told, so that none is read against
// another's old place.
void RunGraph::centerCursors() {
    const QPointF middle(xAxis->range().center(), yAxis->range().center());
    for (Cursor& cursor : cursors)
        place(cursor, snapping ? nearestPoint(middle) : middle);
    for (int i = 0; i < cursorCount(); ++i)
        emit cursorMoved(i);
    cursorLayer->replot();
}

void RunGraph::chooseCursorMode(int index) {
    setSnap(index == 1);
    centerCursors();
}

// Each line is carried by two points a unit apart along it.
void RunGraph::place(Cursor& cursor, const QPointF& position) {
    cursor.at = position;
    cursor.upright->point1->setCoords(position.x(), position.y());
    cursor.upright->point2->setCoords(position.x(), position.y() + 1);
    cursor.level->point1->setCoords(position.x(), position.y());
    cursor.level->point2->setCoords(position.x() + 1, position.y());
}

// Nearest as the eye sees it: each axis's distance as a share of its span, so that the two
// axes' units weigh alike whatever the chart's size. Without any point the position stays.
QPointF RunGraph::nearestPoint(const QPointF& position) const {
    const double width = xAxis->range().size();
    const double height = yAxis->range().size();
    QPointF nearest = position;
    double nearestDistance = std::numeric_limits<double>::infinity();
    for (int i = 0; i < graphCount(); ++i) {
        const QCPGraph* candidate = graph(i);
        if (candidate == cursorLine)
            continue;
        for (const QCPGraphData& point : *candidate->data()) {
            const double dx = (point.key - position.x()) / width;
            const double dy = (point.value - position.y()) / height;
            const double distance = dx * dx + dy * dy;
            if (distance < nearestDistance) {
                nearestDistance = distance;
                nearest = QPointF(point.key, point.value);
            }
        }
    }
    return nearest;
}

void RunGraph::mousePressEvent(QMouseEvent* event) {
    QCustomPlot::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && tracking == DragCursors && cursorsShown())
        dragged = cursorUnder(event->position());
}

void RunGraph::mouseMoveEvent(QMouseEvent* event) {
    QCustomPlot::mouseMoveEvent(event);
    if (dragged < 0)
        return;
    const QPointF pixel = event->position();
    setCursorPosition(dragged,
                      QPointF(xAxis->pixelToCoord(pixel.x()), yAxis->pixelToCoord(pixel.y())));
}

void RunGraph::mouseReleaseEvent(QMouseEvent* event) {
    QCustomPlot::mouseReleaseEvent(event);
    dragged = -1;
}

// The cursor with a line nearest the pointer, if one is within reach of it; of cursors that
// stand together, the first.
int RunGraph::cursorUnder(const QPointF& pixel) const {
    int nearest = -1;
    double nearestDistance = selectionTolerance() + 1;
    for (std::size_t i = 0; i < cursors.size(); ++i) {
        for (QCPItemStraightLine* line : {cursors[i].upright, cursors[i].level}) {
            const double distance = line->selectTest(pixel, false);
            if (distance >= 0 && distance < nearestDistance) {
                nearest = int(i);
                nearestDistance = distance;
            }
        }
    }
    return nearest;
}
