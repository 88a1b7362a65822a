#pragma once

#include <QBrush>
#include <QHash>
#include <QMainWindow>
#include <functional>

struct AppState;
class CommandBar;
class QMdiArea;
class QTimer;
class WeatherReplaySink;

// The main window: the multiple-document frame with the one command bar, the status bar, the
// link to the instrument and the two timers.
class frmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain(AppState& state, QWidget* parent = nullptr);
    ~frmMain() override;

    // The form load, step by step in order. Called once by the start-up after construction.
    void Load();
    // Loads a race log into a new child window; on failure says so.
    void OpenFile(const QString& path);
    // Runs the command of a tool, found by the tool's name.
    void dispatch(const QString& toolName);

    QMdiArea* mdiArea() const;

    // Gives a tool its command; from then on the tool shows on the bar.
    void setCommand(const QString& toolName, std::function<void()> command);
    // What a tool named "new" followed by a race log type runs: a new log of that type.
    void setNewRaceLog(std::function<void(const QString& raceLogType)> command);
    // What loads a race log file into a new child window; false when it could not.
    void setRaceLogLoader(std::function<bool(const QString& path)> loader);
    // Where a replay of the weather log sends its rows: the open charts.
    void setReplaySink(WeatherReplaySink* sink);

    // How many send ticks go by between two pages (0 to 135), as the defaults set it.
    int pagerFrequency() const { return iPagerFrequency; }
    // The colour of the client area as a colour number (blue, green, red).
    quint32 background() const { return backgroundColor; }

protected:
    // The shutdown, step by step in order; may refuse the close.
    void closeEvent(QCloseEvent* event) override;

private:
    void addCommands();

    // The form load.
    void CenterOnScreen();
    void ShowDisplayCaption();
    void LoadBackground();
    void LoadPagerFrequency();
    void LoadDeltaVP();
    void ResetRaceLogs();
    void DisableSetDateTime();
    void ResetFlags();
    void DisablePropertiesInDisplayMode();
    void StartTimers();

    // The shutdown.
    void StopTimers();
    bool WeatherLogClosed();
    void SaveDeltaVP();
    void SaveBackground();

    // The commands.
    void ToggleAutomaticUpdates();
    void ToggleDeltaVP();
    void SetBackground(quint32 color);
    void ChooseMoreColors();
    void ListWindows();
    void ShowHelpContents();
    void ShowAbout();
    void ReplayWeatherLog();
    void ClearViews();

    AppState& state;
    QMdiArea* mdi = nullptr;
    CommandBar* bar = nullptr;
    QTimer* tmrMain = nullptr; // polls the instrument and marks it offline
    QTimer* tmrSend = nullptr; // counts to the next page
    QHash<QString, std::function<void()>> commands;
    std::function<void(const QString&)> newRaceLog;
    std::function<bool(const QString&)> raceLogLoader;
    WeatherReplaySink* replaySink = nullptr;
    QBrush workspace; // the client area as the system paints it
    quint32 backgroundColor;
    int iPagerFrequency = 75;
};
