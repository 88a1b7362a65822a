#include "ui/charts/StripChart.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

const QColor Backdrop(0, 0, 0);
const QColor Frame(200, 200, 200);
const QColor GridLine(60, 60, 60);
const QColor MarkText(255, 255, 255);
// Room for one time label ("12:05:09p") and the space before the next, and the room the value
// axes take beside the time axis.
constexpr int TimeLabelSpacing = 100;
constexpr int ValueAxesWidth = 120;

// Ticks at the spacing the chart was designed with while that spacing gives a readable number
// of them for the room the axis has (its tick count); once the chart has scaled itself far
// from its start, a spacing that suits the range.
class DesignTicker : public QCPAxisTicker {
public:
    DesignTicker(double major, double minor)
        : major(major), subTicks(qMax(0, int(std::lround(major / minor)) - 1)) {}

protected:
    double getTickStep(const QCPRange& range) override {
        const double ticks = range.size() / major;
        if (ticks >= 2 && ticks <= std::max(4, 2 * tickCount()))
            return major;
        return fittedStep(range);
    }
    int getSubTickCount(double tickStep) override {
        return tickStep == major ? subTicks : QCPAxisTicker::getSubTickCount(tickStep);
    }
    virtual double fittedStep(const QCPRange& range) { return QCPAxisTicker::getTickStep(range); }

private:
    double major;
    int subTicks;
};

// The time axis: fractions of a day, labelled as the time of day "2:05:09p".
class TimeOfDayTicker : public DesignTicker {
public:
    using DesignTicker::DesignTicker;

protected:
    // The shortest step a clock reads well, from a second to twelve hours, that gives no more
    // ticks than the axis has room for.
    double fittedStep(const QCPRange& range) override {
        static constexpr std::array<int, 17> Seconds{
            1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200};
        const double wanted = range.size() * 86400.0 / tickCount();
        const auto step = std::find_if(Seconds.begin(), Seconds.end(),
                                       [wanted](int seconds) { return seconds >= wanted; });
        return (step == Seconds.end() ? Seconds.back() : *step) / 86400.0;
    }
    QString getTickLabel(double tick, const QLocale&, QChar, int) override {
        return StripCharts::timeOfDayText(tick);
    }
};

void paintAxis(QCPAxis* axis, const QColor& labels) {
    axis->setBasePen(QPen(Frame));
    axis->setTickPen(QPen(Frame));
    axis->setSubTickPen(QPen(Frame));
    axis->setTickLabelColor(labels);
    axis->setLabelColor(labels);
    axis->grid()->setPen(QPen(GridLine, 0, Qt::DotLine));
}

void startAxis(QCPAxis* axis, const StripCharts::Axis& design,
               QSharedPointer<QCPAxisTicker> ticker) {
    axis->setTicker(ticker);
    axis->setRange(design.lower, design.upper);
    axis->setSubTicks(true);
}

} // namespace

StripChart::StripChart(const StripCharts::Chart& chart, QWidget* parent) : QCustomPlot(parent) {
    setObjectName(chart.control.toString());
    setBackground(Backdrop);
    axisRect()->setBackground(Backdrop);

    xAxis->setObjectName(StripCharts::TimeAxis.toString());
    paintAxis(xAxis, Frame);
    startAxis(xAxis, chart.time,
              QSharedPointer<QCPAxisTicker>(
                  new TimeOfDayTicker(chart.time.majorTick, chart.time.minorTick)));

    // The first quantity on the left, a second one on the right.
    const std::array<QCPAxis*, 2> sides{yAxis, yAxis2};
    lines.reserve(std::size_t(chart.plots.size()));
    for (int i = 0; i < chart.plots.size() && i < int(sides.size()); ++i) {
        const StripCharts::Plot& plot = chart.plots[i];
        const QString name = plot.name.toString();
        QCPAxis* axis = sides[std::size_t(i)];
        axis->setVisible(true);
        axis->setObjectName(name);
        axis->setLabel(name);
        paintAxis(axis, plot.color);
        startAxis(axis, plot.axis,
                  QSharedPointer<QCPAxisTicker>(
                      new DesignTicker(plot.axis.majorTick, plot.axis.minorTick)));
        axis->grid()->setVisible(i == 0);

        auto* curve = new QCPCurve(xAxis, axis);
        curve->setName(name);
        curve->setPen(QPen(plot.color));

        QCPItemStraightLine* cursor = nullptr;
        if (plot.cursor) {
            cursor = new QCPItemStraightLine(this);
            cursor->setObjectName(name);
            cursor->setPen(QPen(plot.cursor->color));
            // Only the height of the line counts; the two points that carry it lie one day
            // apart on the time axis.
            for (QCPItemPosition* point : {cursor->point1, cursor->point2})
                point->setAxes(xAxis, axis);
            cursor->point1->setCoords(plot.cursor->x, plot.cursor->y);
            cursor->point2->setCoords(plot.cursor->x + 1, plot.cursor->y);
            cursor->setVisible(false);
        }
        lines.push_back(Line{curve, axis, cursor, {}, {}});
    }
}

int StripChart::lineNamed(const QString& name) const {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].curve->name() == name)
            return int(i);
    }
    return -1;
}

void StripChart::addPoint(int index, double t, double value, bool draw) {
    if (index < 0 || index >= lineCount() || !std::isfinite(t) || !std::isfinite(value))
        return;
    Line& line = lines[std::size_t(index)];
    QSharedPointer<QCPCurveDataContainer> points = line.curve->data();
    points->add(QCPCurveData(line.arrivals, t, value));
    line.arrivals += 1;
    line.times.push(t);
    line.values.push(value);
    if (points->size() > StripCharts::History) {
        points->remove(points->constBegin()->t);
        line.times.dropOldest();
        line.values.dropOldest();
    }
    fitAxes(line);
    // Points that come in one turn of the event loop are drawn together.
    if (draw)
        replot(rpQueuedReplot);
}

void StripChart::clearPoints() {
    for (Line& line : lines) {
        line.curve->data()->clear();
        line.times.clear();
        line.values.clear();
    }
    replot(rpQueuedReplot);
}

// The time axis spans the points of every line, the value axis those of its own line.
void StripChart::fitAxes(Line& line) {
    double first = line.times.min();
    double last = line.times.max();
    for (const Line& other : lines) {
        if (other.times.isEmpty())
            continue;
        first = qMin(first, other.times.min());
        last = qMax(last, other.times.max());
    }
    fit(xAxis, first, last);
    fit(line.axis, line.values.min(), line.values.max());
}

// A single value keeps the span the axis has, around that value.
void StripChart::fit(QCPAxis* axis, double lower, double upper) {
    if (lower == upper) {
        const double half = axis->range().size() / 2;
        axis->setRange(lower - half, lower + half);
        return;
    }
    axis->setRange(lower, upper);
}

double StripChart::middleOf(int index) const {
    const QCPRange range = lines[std::size_t(index)].axis->range();
    return (range.lower + range.upper) / 2;
}

double StripChart::cursorY(int index) const {
    QCPItemStraightLine* line = cursor(index);
    return line ? line->point1->coords().y() : 0;
}

void StripChart::setCursorY(int index, double y) {
    QCPItemStraightLine* line = cursor(index);
    if (!line)
        return;
    line->point1->setCoords(line->point1->coords().x(), y);
    line->point2->setCoords(line->point2->coords().x(), y);
    replot(rpQueuedReplot);
}

void StripChart::addAnnotation(const QString& lineName, double t, double value,
                               const QString& text) {
    const int index = lineNamed(lineName);
    if (index < 0)
        return;
    auto* mark = new QCPItemText(this);
    mark->setProperty("plot", lineName);
    mark->position->setAxes(xAxis, lines[std::size_t(index)].axis);
    mark->position->setType(QCPItemPosition::ptPlotCoords);
    mark->position->setCoords(t, value);
    mark->setPositionAlignment(Qt::AlignLeft | Qt::AlignBottom);
    mark->setColor(MarkText);
    mark->setText(text);
    replot(rpQueuedReplot);
}

void StripChart::removeAnnotations() {
    for (int i = itemCount() - 1; i >= 0; --i) {
        if (qobject_cast<QCPItemText*>(item(i)))
            removeItem(i);
    }
    replot(rpQueuedReplot);
}

// A narrow chart shows fewer time labels, so that they never run into each other.
void StripChart::resizeEvent(QResizeEvent* event) {
    QCustomPlot::resizeEvent(event);
    xAxis->ticker()->setTickCount(std::max(2, (width() - ValueAxesWidth) / TimeLabelSpacing));
}

void StripChart::mousePressEvent(QMouseEvent* event) {
    QCustomPlot::mousePressEvent(event);
    if (event->button() == Qt::RightButton) {
        emit rightButtonPressed(event->globalPosition().toPoint());
        return;
    }
    if (event->button() == Qt::LeftButton && mode == DragCursors)
        dragged = cursorUnder(event->position());
}

void StripChart::mouseMoveEvent(QMouseEvent* event) {
    QCustomPlot::mouseMoveEvent(event);
    if (dragged < 0)
        return;
    setCursorY(dragged, lines[std::size_t(dragged)].axis->pixelToCoord(event->position().y()));
}

void StripChart::mouseReleaseEvent(QMouseEvent* event) {
    QCustomPlot::mouseReleaseEvent(event);
    dragged = -1;
}

// The shown cursor nearest the pointer, if it is within reach of it.
int StripChart::cursorUnder(const QPointF& position) const {
    int nearest = -1;
    double nearestDistance = selectionTolerance();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        QCPItemStraightLine* line = lines[i].cursor;
        if (!line || !line->visible())
            continue;
        const double distance = line->selectTest(position, false);
        if (distance >= 0 && distance <= nearestDistance) {
            nearest = int(i);
            nearestDistance = distance;
        }
    }
    return nearest;
}
