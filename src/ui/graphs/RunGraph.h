#pragma once

#include <QStringList>
#include <qcustomplot.h>
#include <vector>

// The chart control of the run graphs: named plots of points on one pair of axes, cursors
// that the user drags across the chart, and the mouse modes of the graph's mode list (scale
// to the data, drag cursors, pan, zoom in, zoom out). The chart owns its points and cursors;
// the windows keep no copy.
class RunGraph : public QCustomPlot {
    Q_OBJECT
    // What a press and drag of the mouse does on the chart: PlainPointer, DragCursors,
    // PanPlotArea or ZoomRectangle. Scaling and zooming out at once leave it as it was.
    Q_PROPERTY(int trackingMode READ trackingMode)
public:
    static constexpr int PlainPointer = 10;
    static constexpr int DragCursors = 2;
    static constexpr int PanPlotArea = 3;
    static constexpr int ZoomRectangle = 6;

    // The entries of a graph window's mode list, in order.
    enum MouseMode { AutoScale, Cursors, Pan, ZoomIn, ZoomOut };
    static const QStringList MouseModes;

    RunGraph(int cursorCount, QWidget* parent = nullptr);

    // A plot of points, with a line from point to point when joined.
    QCPGraph* addPlot(const QString& name, const QColor& color, bool joined);
    // nullptr when there is no plot of that name.
    QCPGraph* plot(const QString& name) const;
    // The points of every plot go.
    void clearData();

    // Each axis spans the points of every plot, with a little room around them.
    void fitAxes();
    // Each axis widens by 0.2 at both ends.
    void widenAxes();
    // Sets the mouse mode of the mode list's entry; shows the cursors only for Cursors.
    void setMouseMode(int mode);
    int trackingMode() const { return tracking; }

    int cursorCount() const { return int(cursors.size()); }
    bool cursorsShown() const;
    // Snapping cursors stand on the nearest point of a plot; floating ones anywhere.
    void setSnap(bool snap);
    bool snaps() const { return snapping; }
    QPointF cursorPosition(int index) const;
    // Puts the cursor there (or on the nearest point, when snapping) and tells of the move.
    void setCursorPosition(int index, const QPointF& position);
    // Every cursor to the middle of the axes as they stand.
    void centerCursors();
    // The cursor list's choice, "Float" (0) or "Snap" (1): the cursors take the way of
    // moving and start again from the middle.
    void chooseCursorMode(int index);
    // The plot of the line drawn through the cursors: they never snap to it, and it is drawn
    // again with them.
    void setCursorLine(QCPGraph* plot);

signals:
    void cursorMoved(int index);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    // A cursor is a cross of an upright and a level line through its point.
    struct Cursor {
        QCPItemStraightLine* upright;
        QCPItemStraightLine* level;
        QPointF at;
    };

    void showCursors(bool shown);
    void place(Cursor& cursor, const QPointF& position);
    QPointF nearestPoint(const QPointF& position) const;
    int cursorUnder(const QPointF& pixel) const;

    std::vector<Cursor> cursors;
    int tracking = PlainPointer;
    bool snapping = false;
    QCPGraph* cursorLine = nullptr;
    QCPLayer* cursorLayer;
    int dragged = -1;
};
