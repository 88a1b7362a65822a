#pragma once

#include "racelog/RunClipboard.h"
#include "ui/shell/MainWindow.h"

#include <QObject>
#include <QString>

class PrintableWindow;
class RaceLog;
class RaceLogWindow;
class QMdiSubWindow;
class WeatherStation;

// The main window's commands on race logs: new and open, save, close, print, predict all, and
// the list of race log types under "New Race Log". It gives the main window these commands
// when it is made, registers each log it opens among the station's open logs, and keeps the
// run clipboard the logs' windows share.
class RaceLogCommands : public QObject {
    Q_OBJECT
public:
    RaceLogCommands(MainWindow& main, WeatherStation& station);

    // Hangs the list of race log types (the subkeys of the defaults) under "New Race Log",
    // in the File menu and on the tool bar. With no type, "New Race Log" stays a command.
    void createRaceLogListing();

    // A new, empty log of a type (empty for the general defaults) in the first free slot.
    void newRaceLog(const QString& raceLogType);
    // Opens a race log file in a new window. No window is left when there is no such file,
    // when it is no race log or when it lacks a column; the reason names the column.
    RaceLogLoad loadRaceLog(const QString& path, const QString& title);

    // The runs cut or copied last in any of the logs.
    const RunClipboard::Runs& runClipboard() const { return clipboard; }

private:
    RaceLogWindow* createLog(const QString& raceLogType);
    void showLog(RaceLogWindow* log);
    QMdiSubWindow* activeChild() const;
    RaceLogWindow* activeLog() const;
    RaceLogWindow* windowOf(const RaceLog* log) const;

    void openRaceLog();
    void closeActive();
    void saveActive(bool choosePath);
    void saveAll();
    void predictAll();
    void runOnActive(void (PrintableWindow::*command)());
    void exportToExcel();

    MainWindow& main;
    WeatherStation& station;
    RunClipboard::Runs clipboard;
};
