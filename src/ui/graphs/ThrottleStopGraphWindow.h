#pragma once

#include "prediction/ThrottleStopPoints.h"
#include "ui/graphs/RunGraphWindow.h"

class QLabel;
class QPushButton;

// The window "Throttle Stop Ratio": a race log's runs as their ET at the model's common
// altitude against their throttle stop timer, a cloud of points per lane. The crew lays the
// two cursors along the cloud; the slope of the line through them, in the caption, is the
// ratio that "Set TSR" writes into the log. "Fit" lays the cursors by least squares instead,
// along the line through the points of the chosen lanes, and tells how far the points stray
// from it.
class ThrottleStopGraphWindow : public RunGraphWindow {
    Q_OBJECT
public:
    explicit ThrottleStopGraphWindow(OpenRaceLogs& raceLogs, QWidget* parent = nullptr);

    static QWidget* make(OpenRaceLogs& raceLogs);

    QComboBox* laneList;
    QLabel* cursorLabel[2];
    QPushButton* setButton;

private:
    void logChosen() override;
    void chooseMouseMode(int mode) override;
    void chooseCursorMode(int mode) override;
    void showCursors();
    void fitCursors();
    void setTsr();
    // The log of the chosen entry while it is open; its entry stays either way.
    RaceLog* openChosenLog() const;

    OpenRaceLogs& raceLogs;
    ThrottleStopPoints::Lanes shownLanes;
};
