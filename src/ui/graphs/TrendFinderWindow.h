#pragma once

#include "ui/graphs/RunGraphWindow.h"

class QLabel;

// The Trend Finder, "Run / Weather Information": columns of race logs laid over one another,
// run after run, so that a trend between the weather and the times shows by eye. Each
// quantity has a plot of its own; a column chosen again, or the same quantity of another log,
// runs on along the same plot.
class TrendFinderWindow : public RunGraphWindow {
    Q_OBJECT
public:
    explicit TrendFinderWindow(OpenRaceLogs& raceLogs, QWidget* parent = nullptr);

    static QWidget* make(OpenRaceLogs& raceLogs);

    QComboBox* quantityList;
    QLabel* cursorLabel;

private:
    // A new log may be laid over what stands or start on a clean chart. Choosing it draws
    // nothing; the quantity chosen afterwards does.
    void logChosen() override;
    void drawQuantity(int index);
};
