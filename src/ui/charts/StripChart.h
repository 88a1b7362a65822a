#pragma once

#include "charts/SlidingRange.h"
#include "charts/StripCharts.h"

#include <qcustomplot.h>
#include <vector>

// The chart control of a strip chart window: one or two lines of a quantity against the time
// of day, each on a value axis of its own beside the shared time axis, a cursor for each line
// that has one, and the marks of race log runs. The chart owns its points, cursors and marks;
// the program keeps no copy.
//
// The lines, their value axes and their cursors carry the quantity's name ("VP"); the time
// axis is named "time". The chart fits its axes to the points it holds as they come.
class StripChart : public QCustomPlot {
    Q_OBJECT
    // How the mouse works on the chart: PlainPointer, or DragCursors, in which the user drags
    // the cursors shown.
    Q_PROPERTY(int pointerMode READ pointerMode WRITE setPointerMode)
public:
    static constexpr int PlainPointer = 10;
    static constexpr int DragCursors = 2;

    explicit StripChart(const StripCharts::Chart& chart, QWidget* parent = nullptr);

    int lineCount() const { return int(lines.size()); }
    QCPCurve* line(int index) const { return lines[index].curve; }
    QCPAxis* valueAxis(int index) const { return lines[index].axis; }
    // nullptr for a line without a cursor.
    QCPItemStraightLine* cursor(int index) const { return lines[index].cursor; }
    // The index of the line with this name; -1 for none.
    int lineNamed(const QString& name) const;

    // Adds the point (t, value) to the line; the oldest point of a full line goes. A value
    // that is not a number leaves the line as it was. Unless draw is false, the chart is
    // drawn again once the events of the moment are done.
    void addPoint(int index, double t, double value, bool draw = true);
    // The points of every line go; cursors and marks stay.
    void clearPoints();

    int pointerMode() const { return mode; }
    void setPointerMode(int pointerMode) { mode = pointerMode; }

    // The middle of the line's value axis as it stands now.
    double middleOf(int index) const;
    double cursorY(int index) const;
    void setCursorY(int index, double y);

    // A caption at (t, value) of the named line.
    void addAnnotation(const QString& lineName, double t, double value, const QString& text);
    void removeAnnotations();

signals:
    void rightButtonPressed(const QPoint& globalPosition);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Line {
        QCPCurve* curve;
        QCPAxis* axis;
        QCPItemStraightLine* cursor;
        SlidingRange times;
        SlidingRange values;
        // The points are drawn in the order they came, which is their arrival number.
        double arrivals = 0;
    };

    void fitAxes(Line& line);
    static void fit(QCPAxis* axis, double lower, double upper);
    int cursorUnder(const QPointF& position) const;

    std::vector<Line> lines;
    int mode = PlainPointer;
    int dragged = -1; // the line whose cursor the mouse moves
};
