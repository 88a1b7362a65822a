#pragma once

#include "core/Dialogs.h"
#include "feed/PortSettings.h"

#include <QBrush>
#include <QHash>
#include <QMainWindow>
#include <QStringList>
#include <functional>

class CommandBar;
class InstrumentConnection;
class QLabel;
class QMdiArea;
class QTimer;
class WeatherFeed;
class WeatherStation;

// What loading a race log file came to: loaded, or not, with the reason when there is more
// to say than the file's path.
struct RaceLogLoad {
    bool loaded = false;
    QString reason;
};

// The main window: the multiple-document frame with the one command bar, the status bar and
// the weather station.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // The station runs the live weather and holds the open logs and views; it outlives the
    // window.
    explicit MainWindow(WeatherStation& station, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The form load, step by step in order. Called once by the start-up after construction.
    void load();
    // Loads a race log into a new child window; on failure says so.
    void openFile(const QString& path);
    // Runs the command of a tool, found by the tool's name.
    void dispatch(const QString& toolName);

    QMdiArea* mdiArea() const;

    // The live weather: the instrument's links, the feed, the poll and the page timing.
    WeatherStation& weatherStation() const { return station; }
    // The instrument's port and the relay connection, with their settings.
    InstrumentConnection& instrument() const;
    // The feed that turns the instrument's bytes into the live weather.
    WeatherFeed& weatherFeed() const;
    // A display instance takes its feed from the relay named by the host and port settings.
    void connectRelay();

    // Gives a tool its command; from then on the tool shows on the bar.
    void setCommand(const QString& toolName, std::function<void()> command);
    // The names of the tools that have a command now.
    QStringList commandNames() const;
    // What a tool named "new" followed by a race log type runs: a new log of that type.
    void setNewRaceLog(std::function<void(const QString& raceLogType)> command);
    // What loads a race log file into a new child window; false when it could not.
    void setRaceLogLoader(std::function<RaceLogLoad(const QString& path)> loader);
    // What lists the race log types under "New Race Log" during the load.
    void setRaceLogListing(std::function<void()> listing);

    // How many send ticks go by between two pages (0 to 135), as the defaults set it.
    int pagerFrequency() const;
    // The configuration sets it at once when the user picks another frequency.
    void setPagerFrequency(int frequency);
    // The colour of the client area as a colour number (blue, green, red).
    quint32 background() const { return backgroundColor; }

protected:
    // The shutdown, step by step in order; may refuse the close.
    void closeEvent(QCloseEvent* event) override;

private:
    void addCommands();

    // The form load.
    void centerOnScreen();
    void showDisplayCaption();
    void loadBackground();
    void loadPagerFrequency();
    void loadNoWeatherSeconds();
    void loadDeltaVP();
    void resetRaceLogs();
    void loadPortSettings();
    void disableSetDateTime();
    void listRaceLogTypes();
    void resetFlags();
    void askForPortWhenNone();
    void disablePropertiesInDisplayMode();
    void useRelayDefaultsInDisplayMode();
    void startSerialPort();
    void startTimers();

    // The shutdown.
    void stopTimers();
    bool weatherLogClosed();
    void closeLinks();
    void saveDeltaVP();
    void saveBackground();

    // Where the weather station's results show.
    void showStatus(const QString& text);
    void setOnlineMark(bool online);
    void showStale(bool stale);
    QLabel* statusPanel(const QString& name) const;

    // The commands.
    void toggleAutomaticUpdates();
    void toggleDeltaVP();
    void setBackground(quint32 color);
    void chooseMoreColors();
    void listWindows();
    void showHelpContents();
    void showAbout();
    void replayWeatherLog();
    void replayWithProgress(const Dialogs::FileChoice& file);
    void clearViews();

    WeatherStation& station;
    QMdiArea* mdi = nullptr;
    CommandBar* bar = nullptr;
    QHash<QString, std::function<void()>> commands;
    std::function<void(const QString&)> newRaceLogCommand;
    std::function<RaceLogLoad(const QString&)> raceLogLoader;
    std::function<void()> raceLogListing;
    QBrush workspace; // the client area as the system paints it
    quint32 backgroundColor;
    // Stored values the load could not read; the shutdown leaves them in the store as they
    // are unless the user has set the value since.
    bool backgroundUnread = false;
    bool deltaVPUnread = false;
    // What the load read, so the shutdown writes back only what changed.
    PortSettings portSettingsAsLoaded;
};
