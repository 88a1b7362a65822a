#pragma once

#include "racelog/Database.h"
#include "racelog/RaceLog.h"
#include "racelog/RunClipboard.h"
#include "ui/output/PrintableWindow.h"

#include <QColor>
#include <QWidget>
#include <functional>

class LogSidePanel;
class QLabel;
class RunGrid;
class ShowColumnMenu;
class PageDocument;
class WeatherStation;

// The race log window: the view and editor of one RaceLog, its runs in the run table grid
// and its settings, notes and prediction inputs in the side panel sidePanel, which the corner
// cell of the table opens and closes. Undo and Redo take back the log's changes. The window
// lives in a child window of the main window; its log is among the station's open logs while
// the window is open, and the window shows what the log's prediction publishes.
class RaceLogWindow : public QWidget, public PrintableWindow {
    Q_OBJECT
public:
    RaceLogWindow(WeatherStation& station, RunClipboard::Runs& clipboard,
                  QWidget* parent = nullptr);
    ~RaceLogWindow() override;

    // The window load: its place on the screen, the run table, the race tracks and the
    // values a log of type raceLogType starts from. The grid and the panel take the
    // background of the main window.
    void load(const QColor& mainBackground);
    // Reads a race log file into this newly loaded window. A file that is no race log, or
    // lacks a column, leaves the window as it was. Values that could not be read are told
    // once, and the first save over the file keeps the original beside it.
    Database::LoadResult loadFile(const QString& path);

    RaceLog& document() { return log; }

    // The file the log is kept in: its full path and its name.
    void logFile(const QString& path, const QString& title);
    // Saves the log into its file after asking; an empty path asks for a file first. False
    // only when the file could not be written; a refused question or a cancelled file choice
    // is no failure.
    bool saveLog(const QString& path);

    QString fileExtension(const QString& name) const;
    // Every second run row gets the band colour.
    void paintRowBands();

    // The prediction from the reference run, published in the log: the caption shows it, and
    // a prediction that fails says so in a box.
    void updatePredictions();

    // The runs as the times table, on paper and in PDF.
    void printDocument() override;
    void saveAsPdf() override;

    QString raceLogType;

    LogSidePanel* sidePanel;
    RunGrid* grid;
    ShowColumnMenu* showColumnMenu;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void giveUsableSize();
    void correctPlacement();
    void setupGrid();
    void applyTypeDefaults();
    void takeBackground(const QColor& color);
    void paintGridBackdrop();

    void togglePanel();
    void showPanelTab(int tab);
    void openPanel(int tab);
    void closePanel();
    void arrange();

    void addUndoCommands();
    void followPrediction();
    // While the feed is stale a line above the runs (lblStale) says the prediction stands on
    // old weather, and for how long.
    void showStale(int seconds);
    void settleCaption(const QString& pageIdentifier);
    void warnOfManyPagingLogs();
    void completeRun(int row);
    void showPages(const std::function<void(PageDocument&)>& layout);
    void annotateCharts();
    void handOverToRacepak();
    PageDocument timesPages();
    void selectReferenceRun(int index);
    void warnOfUnreadValues(const QString& path, int count);
    bool keepOriginal(const QString& target);

    QWidget* placedWindow();
    void releaseSlot();

    WeatherStation& station;
    RaceLog log;
    QLabel* staleLabel;
    int gridLeft = 0;
    bool panelOpen = false;
    QColor gridBackdrop;    // the main window's background, beyond the cells of the grid
    QString keepOriginalOf; // a file not read whole, copied aside before the first save over it
};
