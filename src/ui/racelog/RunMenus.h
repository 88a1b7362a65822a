#pragma once

class QAction;
class QMenu;
class QWidget;

// The two right-click menus of the run table. The column menu columnMenu ("Column") opens over
// any cell and adds a run or shows and hides columns; the row menu rowMenu ("Row") opens over a
// run number and holds the commands on that run.
struct RunMenus {
    explicit RunMenus(QWidget* parent);

    // Puts the window's "Show Column" submenu at the end of the column menu, in place of one
    // handed in before.
    void setShowColumnMenu(QMenu* menu);

    QMenu* columnMenu;
    QAction* newRunAtRowAction;

    QMenu* rowMenu;
    QAction* referenceRunAction;
    QAction* runCompleteAction;
    QAction* loggedWeatherAction;
    QAction* currentWeatherAction;
    QAction* timeSlipAction;
    QAction* cutAction;
    QAction* copyAction;
    QAction* pasteAction;
    QAction* predictAction;
    QAction* predictionCheckAction;
    QAction* notesAction;
    QAction* settingsAction;
    QAction* incrementalTimesAction;
    QAction* raceLogAction;
    QAction* annotationsAction;
    QAction* racepakAction;
    QAction* newRunAction;
    QAction* deleteAction;

private:
    QAction* showColumn = nullptr;
};
