#pragma once

#include "racelog/RunClipboard.h"

#include <QTableView>

class WeatherStation;
class QMenu;
class RaceLog;
class RunTable;

// The run table of a race log window (objectName "gridLog"): the view over the runs of a
// RaceLog, with the header row and the run number column fixed, the four in-place editors
// (txtTime, txtCtrlDate, cboLane, txtEdit), the keys and mouse rules of run entry, and the two
// right-click menus: the column menu miColumn and the row menu miRow. Rows and columns in this
// face are the run table's own numbers (row 0 the header, column 0 the run number).
class RunGrid : public QTableView {
    Q_OBJECT
public:
    // The station gives the live weather and the weather log to the weather imports; the
    // clipboard is the one all race log windows share.
    RunGrid(WeatherStation& station, RunClipboard::Runs& clipboard, RaceLog& log,
            QWidget* parent = nullptr);
    ~RunGrid() override;

    RunTable& table() const;

    // Opens the editor of the current column; key is the typed character code, 32 for a
    // double click.
    void beginCellEdit(int keyCode);
    // Closes whichever editor is open and puts its text into the current cell.
    void commitCellEdit();

    int currentRunRow() const; // the current cell's row, by the run table's numbering
    int currentRunColumn() const;
    void setCurrentRunCell(int row, int column);

    // The commands of the menus, callable by name from the window too.
    void newRun();
    void deleteRun();
    void cutRun();
    void copyRun();
    void pasteRun();
    void getCurrentWeather();
    void getLoggedWeather();
    void getTimeSlip();

    // The window hands in the "Show Column" submenu of the column menu.
    void setShowColumnMenu(QMenu* menu);
    QMenu* columnMenu() const;
    QMenu* rowMenu() const;

signals:
    // The corner cell was clicked: open or close the side panel.
    void panelToggleRequested();
    // "Predict...", "Notes...", "Settings...": open the panel at that tab (2, 1, 0).
    void panelTabRequested(int tab);
    // "Reference Run" for a row.
    void referenceRunRequested(int row);
    // "Run Complete..." for a row: complete the run from the reference run.
    void runCompleteRequested(int row);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void connectMenus();
    void showColumnWidth(int column);
    void moveToNextShownColumn();
    void stepRow(int step);
    bool headerMouseEvent(QObject* watched, QMouseEvent* event);
    void pressOnRunNumber(const QMouseEvent& event);
    void releaseRightButton(const QPoint& globalPos);
    void paintCorner();
    std::pair<int, int> selectedRuns() const;

    struct Private;
    Private* d;
};
