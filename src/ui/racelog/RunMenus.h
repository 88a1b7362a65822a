#pragma once

class QAction;
class QMenu;
class QWidget;

// The two right-click menus of the run table. The column menu miColumn ("Column") opens over
// any cell and adds a run or shows and hides columns; the row menu miRow ("Row") opens over a
// run number and holds the commands on that run.
struct RunMenus {
    explicit RunMenus(QWidget* parent);

    // Puts the window's "Show Column" submenu at the end of the column menu, in place of one
    // handed in before.
    void setShowColumnMenu(QMenu* menu);

    QMenu* miColumn;
    QAction* miNewRunNum;

    QMenu* miRow;
    QAction* miReferenceRun;
    QAction* miRunComplete;
    QAction* miGetLoggedWeather;
    QAction* miGetWeather;
    QAction* miiCardWeather;
    QAction* miCut;
    QAction* miCopy;
    QAction* miPaste;
    QAction* miPredict;
    QAction* miPredictionCheck;
    QAction* miNotes;
    QAction* miSettings;
    QAction* miIncrementalTimes;
    QAction* miRaceLog;
    QAction* miAnnotations;
    QAction* miRacepak;
    QAction* miNewRun;
    QAction* miDelete;

private:
    QAction* showColumn = nullptr;
};
