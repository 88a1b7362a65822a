#pragma once

#include "prediction/ThrottleStopPoints.h"
#include "ui/output/PrintableWindow.h"

#include <QWidget>

class OpenRaceLogs;
class QComboBox;
class QLabel;
class QPushButton;
class RaceLog;
class RaceLogList;
class RunGraph;

// The window "Throttle Stop Ratio": a race log's runs as their ET at the model's common
// altitude against their throttle stop timer, a cloud of points per lane. The crew lays the
// two cursors along the cloud; the slope of the line through them, in the caption, is the
// ratio that "Set TSR" writes into the log. "Fit" lays the cursors by least squares instead,
// along the line through the points of the chosen lanes, and tells how far the points stray
// from it.
class ThrottleStopGraphWindow : public QWidget, public PrintableWindow {
    Q_OBJECT
public:
    explicit ThrottleStopGraphWindow(OpenRaceLogs& raceLogs, QWidget* parent = nullptr);

    static QWidget* make(OpenRaceLogs& raceLogs);

    QSize sizeHint() const override;
    void printDocument() override;
    void saveAsPdf() override;

    QComboBox* cboRaceLogs;
    QComboBox* cboGraph;
    QComboBox* cboCursors;
    QComboBox* cboLanes;
    QLabel* lblCursor[2];
    QPushButton* cmdSet;
    RunGraph* tsGraph;

private:
    void drawChosenLog();
    void chooseMouseMode(int mode);
    void chooseCursorMode(int mode);
    void showCursors();
    void fitCursors();
    void setTsr();
    // The log of the chosen entry while it is open; its entry stays either way.
    RaceLog* openChosenLog() const;

    OpenRaceLogs& raceLogs;
    RaceLogList* logs;
    ThrottleStopPoints::Lanes shownLanes;
};
