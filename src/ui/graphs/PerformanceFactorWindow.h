#pragma once

#include "prediction/PerformanceFactorGraph.h"
#include "ui/output/PrintableWindow.h"

#include <QPointer>
#include <QWidget>

class OpenRaceLogs;
class QComboBox;
class QCustomPlot;
class QLineEdit;
class QMouseEvent;
class QPushButton;
class RaceLog;
class RaceLogList;

// The performance factor graph: the runs of one race log as ET against AA, each with the
// short line along which the model moves it for a trial factor. The crew types a factor,
// presses Graph, picks the runs to see, and when the lines lie along one another sets the
// factor into the log.
class PerformanceFactorWindow : public QWidget, public PrintableWindow {
    Q_OBJECT
public:
    // How a left or right click on the graph leaves the mouse: 6 draws a rectangle to zoom
    // into, 1 only reports clicks.
    static constexpr int ClickTracking = 1;
    static constexpr int ZoomTracking = 6;

    explicit PerformanceFactorWindow(OpenRaceLogs& raceLogs, QWidget* parent = nullptr);
    // The window as the main window's command makes it.
    static QWidget* make(OpenRaceLogs& raceLogs);

    QSize sizeHint() const override { return {640, 480}; }

    // The runs of the chosen log that the graph can show, with their slopes.
    const QList<PerformanceFactorGraph::Run>& runs() const { return usable; }
    int trackingMode() const { return tracking; }

    void printDocument() override;
    void saveAsPdf() override;

    QComboBox* raceLogList;
    QComboBox* runList;
    QLineEdit* pfField;
    QPushButton* graphButton;
    QPushButton* setButton;
    QCustomPlot* graph;

private:
    void buildControls();
    void chooseLog();
    void drawRuns(int entry);
    void regraph();
    void setFactor();
    void clickGraph(QMouseEvent* event);

    RaceLogList* listedLogs;
    QPointer<RaceLog> shownLog;
    int shownSlot = -1;
    QList<PerformanceFactorGraph::Run> usable;
    int tracking = ClickTracking;
};
