#pragma once

#include "racelog/RunClipboard.h"

#include <QTableView>

class WeatherStation;
class QMenu;
class RaceLog;
class RunTable;

// The run table of a race log window (objectName "gridLog"): the view over the runs of a
// RaceLog, with the header row and the run number column fixed, the cell editors of its
// RunCellDelegate (txtTime, txtCtrlDate, cboLane, txtEdit), the keys and mouse rules of run
// entry, and the two right-click menus: the column menu miColumn and the row menu miRow. The
// widths of the columns and which of them are shown belong to the grid. Rows and columns in
// this interface are the run table's own numbers (row 0 the header, column 0 the run number).
class RunGrid : public QTableView {
    Q_OBJECT
public:
    // Widths in pixels: the run number column, every other column as the grid opens, and a
    // column shown again after it was hidden.
    static constexpr int RunNumberWidth = 38;
    static constexpr int ColumnWidth = 67;
    static constexpr int ShownAgainWidth = 76;

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

    // Hides or shows a column the user may hide; a column shown again comes back a little
    // wider. The cells keep their texts. False for a column that cannot be hidden.
    bool hideRunColumn(int column);
    bool showRunColumn(int column);
    bool isRunColumnHidden(int column) const;
    // The columns shown, the run number first: what the pages of the log show.
    QList<int> shownColumns() const;

    // The corner cell is the handle of the side panel; the window says what it reads.
    void setCornerText(const QString& text);
    QString cornerText() const;

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
    bool setColumnShown(int column, bool shown);
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
