#pragma once

#include "ui/output/PrintableWindow.h"

#include <QWidget>
#include <initializer_list>

class OpenRaceLogs;
class QComboBox;
class RaceLog;
class RaceLogList;
class RunGraph;

// What the windows that chart a race log's runs have in common: the list "Race Logs" of the
// open logs, the list of the graph's mouse modes, the list of its cursor modes, and the graph
// itself; the window keeps its place on the screen, and prints and saves its graph under its
// caption. Each window adds its own controls to the bar and its own plots to the graph.
class RunGraphWindow : public QWidget, public PrintableWindow {
    Q_OBJECT
public:
    QSize sizeHint() const override { return size; }
    void printDocument() override;
    void saveAsPdf() override;

    QComboBox* raceLogList;
    QComboBox* mouseModeList;
    QComboBox* cursorModeList;
    RunGraph* graph;

protected:
    // What sets one run graph window apart from the others.
    struct Look {
        const char* objectName;
        QString caption;
        // The window's place on the screen is kept under this key.
        QString placementKey;
        QSize size;
        QStringList cursorModes;
        int cursorCount;
        const char* graphName;
    };

    RunGraphWindow(OpenRaceLogs& raceLogs, const Look& look, QWidget* parent);

    // The last step of building the window: the bar holds "Race Logs" and its list, then the
    // given controls in order, a nullptr standing for the room left over; the graph fills the
    // window below it. The graph starts in its first mouse mode.
    void layOut(std::initializer_list<QWidget*> bar);

    // The user chose an entry of the race log list.
    virtual void logChosen() = 0;
    // A mouse mode of the list: the graph takes it, and the cursor modes show only for the
    // cursors, starting again from the first.
    virtual void chooseMouseMode(int mode);
    virtual void chooseCursorMode(int mode);

    // The race log of the chosen entry; see RaceLogList::chosen().
    RaceLog* chosenLog();

private:
    RaceLogList* listedLogs;
    QString caption;
    QSize size;
};
