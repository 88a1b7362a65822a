#include "ui/charts/StripChartWindow.h"

#include "charts/ViewCaptions.h"
#include "feed/CorrectionFactor.h"
#include "ui/charts/ChartPrinting.h"
#include "ui/charts/StripChart.h"

#include <QMdiSubWindow>
#include <QMenu>

namespace {

// The time of day of each point is read from the computer's clock as it comes, not taken
// from the reading.
float now() {
    return StripCharts::dayFraction(QTime::currentTime());
}

} // namespace

StripChartWindow::StripChartWindow(ViewTable::View view, OpenViews& views, QWidget* parent)
    : LiveViewWindow(view, views, parent), table(*StripCharts::find(view)) {
    graph = new StripChart(table, this);
    buildMenu();
    connect(graph, &StripChart::rightButtonPressed, this,
            [this](const QPoint& position) { popupMenu->popup(position); });
    resize(sizeHint());
    fitChart();
}

LiveViewWindow* StripChartWindow::make(ViewTable::View view, OpenViews& views) {
    return new StripChartWindow(view, views);
}

void StripChartWindow::buildMenu() {
    popupMenu = new QMenu(QStringLiteral("Options"), this);
    popupMenu->setObjectName(QStringLiteral("miOptions"));
    const auto entry = [this](const QString& name, const QString& text) {
        QAction* action = popupMenu->addAction(text);
        action->setObjectName(name);
        return action;
    };
    connect(entry(QStringLiteral("miPrint"), QStringLiteral("Print")), &QAction::triggered, this,
            &StripChartWindow::printDocument);
    connect(entry(QStringLiteral("mnuPDFExport"), QStringLiteral("PDF Export...")),
            &QAction::triggered, this, &StripChartWindow::saveAsPdf);
    popupMenu->addSeparator();
    for (int line = 0; line < table.plots.size(); ++line) {
        const std::optional<StripCharts::Cursor>& cursor = table.plots[line].cursor;
        if (!cursor) {
            cursorEntries << nullptr;
            continue;
        }
        QAction* action = entry(cursor->menuName.toString(), cursor->menuText.toString());
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, line] { showCursor(line); });
        cursorEntries << action;
    }
    popupMenu->addSeparator();
    const StripCharts::MenuEntry center = StripCharts::centerEntry(table);
    connect(entry(center.name, center.text), &QAction::triggered, this,
            &StripChartWindow::centerCursors);
    const StripCharts::MenuEntry remove = StripCharts::removeEntry(table);
    connect(entry(remove.name, remove.text), &QAction::triggered, this,
            &StripChartWindow::removeCursors);
    popupMenu->addSeparator();
    connect(entry(QStringLiteral("miRemoveAnnotations"), QStringLiteral("Remove Annotations")),
            &QAction::triggered, graph, &StripChart::removeAnnotations);
}

// The values of a reading go in the order of the view's series, each line with a clock
// reading of its own; the caption follows. A reading whose correction factor cannot be
// worked out leaves the chart and the caption as they were.
void StripChartWindow::showReading(const WeatherRecord& reading, const QString& statusLine) {
    float factor = 0;
    if (view() == ViewTable::View::CF) {
        const std::optional<float> worked = correctionFactor(reading.ABP, reading.Temp, reading.VP);
        if (!worked)
            return;
        factor = *worked;
    }
    const QList<float> values = ViewTable::entry(view()).samples(reading, factor);
    for (int line = 0; line < values.size(); ++line)
        graph->addPoint(line, now(), values[line]);
    setWindowTitle(ViewCaptions::caption(view(), reading, factor, statusLine));
}

// A replayed day is drawn once, at its end.
void StripChartWindow::addLoggedPoint(float t, const QList<float>& values) {
    for (int line = 0; line < values.size(); ++line)
        graph->addPoint(line, t, values[line], false);
}

void StripChartWindow::endOfReplay() {
    graph->replot(QCustomPlot::rpQueuedReplot);
}

void StripChartWindow::clear() {
    graph->clearPoints();
}

void StripChartWindow::annotate(const QString& lineName, float t, float value,
                                const QString& text) {
    graph->addAnnotation(lineName, t, value, text);
}

// A cursor already shown stays where the user left it.
void StripChartWindow::showCursor(int line) {
    QCPItemStraightLine* cursor = graph->cursor(line);
    if (!cursor->visible()) {
        graph->setCursorY(line, graph->middleOf(line));
        cursor->setVisible(true);
        graph->setPointerMode(StripChart::DragCursors);
    }
    // The entry shows the cursor's state, whatever a click on it did to its check mark.
    cursorEntries[line]->setChecked(true);
}

// Shown or not, every cursor goes to the middle of its own axis.
void StripChartWindow::centerCursors() {
    for (int line = 0; line < graph->lineCount(); ++line) {
        if (graph->cursor(line))
            graph->setCursorY(line, graph->middleOf(line));
    }
}

void StripChartWindow::removeCursors() {
    for (int line = 0; line < graph->lineCount(); ++line) {
        if (QCPItemStraightLine* cursor = graph->cursor(line)) {
            cursorEntries[line]->setChecked(false);
            cursor->setVisible(false);
        }
    }
    graph->setPointerMode(StripChart::PlainPointer);
    graph->replot(QCustomPlot::rpQueuedReplot);
}

QString StripChartWindow::label() const {
    return ViewTable::entry(view()).caption.toString();
}

void StripChartWindow::printDocument() {
    ChartPrinting::print(ChartPrinting::drawingOf(*graph));
}

void StripChartWindow::saveAsPdf() {
    ChartPrinting::saveAsPdf(label(), *graph);
}

void StripChartWindow::resizeEvent(QResizeEvent* event) {
    LiveViewWindow::resizeEvent(event);
    fitChart();
}

// The chart fills the window; a minimised window leaves it the size it had.
void StripChartWindow::fitChart() {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()); frame && frame->isMinimized())
        return;
    graph->setGeometry(rect());
}
