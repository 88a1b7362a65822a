#pragma once

#include "ui/output/PrintableWindow.h"

#include <QWidget>

class OpenRaceLogs;
class QComboBox;
class QLabel;
class RaceLogList;
class RunGraph;

// The Trend Finder, "Run / Weather Information": columns of race logs laid over one another,
// run after run, so that a trend between the weather and the times shows by eye. Each
// quantity has a plot of its own; a column chosen again, or the same quantity of another log,
// runs on along the same plot.
class TrendFinderWindow : public QWidget, public PrintableWindow {
    Q_OBJECT
public:
    explicit TrendFinderWindow(OpenRaceLogs& raceLogs, QWidget* parent = nullptr);

    static QWidget* make(OpenRaceLogs& raceLogs);

    QSize sizeHint() const override;
    void printDocument() override;
    void saveAsPdf() override;

    QComboBox* cboRaceLogs;
    QComboBox* cboChart;
    QComboBox* cboGraph;
    QComboBox* cboCursors;
    QLabel* lblCursor;
    RunGraph* runGraph;

private:
    void askToClear();
    void drawQuantity(int index);
    void chooseMouseMode(int mode);

    RaceLogList* logs;
};
