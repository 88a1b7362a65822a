#pragma once

#include "charts/StripCharts.h"
#include "ui/charts/LiveViewWindow.h"
#include "ui/output/PrintableWindow.h"

#include <QList>

class QAction;
class QMenu;
class StripChart;

// A strip chart window: the chart of one or two weather quantities against the time of day,
// filling the window, with the menu miOptions that the right mouse button opens over the
// chart (print, PDF, the cursors, the removal of the run marks). The eight strip charts are
// this window, each configured by its row of the strip chart table.
class StripChartWindow : public LiveViewWindow, public PrintableWindow {
    Q_OBJECT
public:
    StripChartWindow(ViewTable::View view, OpenViews& views, QWidget* parent = nullptr);

    // The maker the view windows use for each strip chart.
    static LiveViewWindow* make(ViewTable::View view, OpenViews& views);

    StripChart* chart() const { return graph; }
    QMenu* optionsMenu() const { return popupMenu; }

    void showReading(const WeatherRecord& reading, const QString& statusLine) override;
    void addLoggedPoint(float t, const QList<float>& values) override;
    void endOfReplay() override;
    void clear() override;

    // A run's mark on the named line of the chart.
    void annotate(const QString& lineName, float t, float value, const QString& text);

    // The chart as it stands, on the default printer without a dialog.
    void printDocument() override;
    void saveAsPdf() override;

    // The size of a window shown for the first time, before it has a place of its own.
    QSize sizeHint() const override { return {600, 300}; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildMenu();
    void showCursor(int line);
    void centerCursors();
    void removeCursors();
    void fitChart();
    QString label() const;

    const StripCharts::Chart& table;
    StripChart* graph;
    QMenu* popupMenu;
    // The menu entry of each line's cursor; nullptr for a line without one.
    QList<QAction*> cursorEntries;
};
