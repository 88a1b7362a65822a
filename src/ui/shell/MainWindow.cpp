#include "ui/shell/MainWindow.h"

#include "core/Calculator.h"
#include "core/Dialogs.h"
#include "core/Hourglass.h"
#include "core/NumberText.h"
#include "core/Palette.h"
#include "core/Registry.h"
#include "feed/FeedWatchdog.h"
#include "feed/InstrumentConnection.h"
#include "feed/PagerSchedule.h"
#include "feed/PortSettings.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherStation.h"
#include "ui/shell/AboutDialog.h"
#include "ui/shell/CentreOnScreen.h"
#include "ui/shell/CommandBar.h"
#include "ui/shell/WarningText.h"
#include "ui/shell/WindowArrangement.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QProgressDialog>
#include <QScreen>
#include <QTimer>
#include <QUrl>

namespace {

// The user manual is installed beside the program: <prefix>/bin and
// <prefix>/share/tarnwick/manual.
QString manualIndexPath() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../share/tarnwick/manual/index.html"));
}

} // namespace

MainWindow::MainWindow(WeatherStation& station, QWidget* parent)
    : QMainWindow(parent), station(station), backgroundColor(Palette::WorkspaceColor) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Tarnwick"));
    resize(1024, 720);

    mdi = new QMdiArea(this);
    mdi->setObjectName(QStringLiteral("mdiClient"));
    workspace = mdi->background();
    setCentralWidget(mdi);

    bar = new CommandBar(*this, [this](const QString& name) { dispatch(name); });
    addCommands();
    bar->showTools([this](const QString& name) { return commands.contains(name); });

    connect(&station, &WeatherStation::statusText, this, &MainWindow::showStatus);
    connect(&station, &WeatherStation::onlineChanged, this, &MainWindow::setOnlineMark);
    // A failure of the links opens its box at once, before the connection goes on.
    connect(&station.link(), &InstrumentConnection::warning, this, &Dialogs::show);
    connect(&station.watchdog(), &FeedWatchdog::staleFor, this, [this] { showStale(true); });
    connect(&station.watchdog(), &FeedWatchdog::fresh, this, [this] { showStale(false); });
}

InstrumentConnection& MainWindow::instrument() const {
    return station.link();
}

WeatherFeed& MainWindow::weatherFeed() const {
    return station.feed();
}

int MainWindow::pagerFrequency() const {
    return station.pagerFrequency();
}

void MainWindow::setPagerFrequency(int frequency) {
    station.setPagerFrequency(frequency);
}

QLabel* MainWindow::statusPanel(const QString& name) const {
    return findChild<QLabel*>(name);
}

void MainWindow::showStatus(const QString& text) {
    statusPanel(QStringLiteral("lblStatus"))->setText(text);
}

void MainWindow::setOnlineMark(bool online) {
    statusPanel(QStringLiteral("lblPellamor"))->setEnabled(online);
}

// The station puts the alarm's words on the status line; the colour is the window's.
void MainWindow::showStale(bool stale) {
    showAsWarning(*statusPanel(QStringLiteral("lblStatus")), stale);
}

MainWindow::~MainWindow() = default;

// The commands that work now. A tool without a command stays hidden until one is given.
void MainWindow::addCommands() {
    commands = {
        {QStringLiteral("miExit"), [this] { close(); }},
        {QStringLiteral("miLoadLoggedWeather"), [this] { replayWeatherLog(); }},
        {QStringLiteral("miClearViews"), [this] { clearViews(); }},
        {QStringLiteral("miAutomaticUpdates"), [this] { toggleAutomaticUpdates(); }},
        {QStringLiteral("miDeltaVP"), [this] { toggleDeltaVP(); }},
        {QStringLiteral("miCalculator"), [] { Calculator::launch(); }},
        {QStringLiteral("miRefresh"), [this] { bar->refresh(); }},
        {QStringLiteral("miMoreColors"), [this] { chooseMoreColors(); }},
        {QStringLiteral("miTileHorizontally"),
         [this] { WindowArrangement::tileHorizontally(*mdi); }},
        {QStringLiteral("miTileVertically"), [this] { WindowArrangement::tileVertically(*mdi); }},
        {QStringLiteral("miCascade"), [this] { WindowArrangement::cascade(*mdi); }},
        {QStringLiteral("miCloseAll"), [this] { mdi->closeAllSubWindows(); }},
        {QStringLiteral("miHelpContents"), [this] { showHelpContents(); }},
        {QStringLiteral("miAbout"), [this] { showAbout(); }},
    };
    for (const Palette::Entry& entry : Palette::entries())
        commands.insert(entry.name, [this, color = entry.color] { setBackground(color); });
    connect(bar->tool(QStringLiteral("miWindowList"))->menu(), &QMenu::aboutToShow, this,
            &MainWindow::listWindows);
}

// A stored value that cannot be read falls back to its default alone; the load goes on, so
// one bad value never costs the user the settings after it.
void MainWindow::load() {
    centerOnScreen();
    showDisplayCaption();
    loadBackground();
    loadPagerFrequency();
    loadNoWeatherSeconds();
    loadDeltaVP();
    resetRaceLogs();
    loadPortSettings();
    disableSetDateTime();
    listRaceLogTypes();
    resetFlags();
    askForPortWhenNone();
    disablePropertiesInDisplayMode();
    useRelayDefaultsInDisplayMode();
    startSerialPort();
    startTimers();
}

void MainWindow::centerOnScreen() {
    centreOnScreen(*this);
}

// A display instance tells itself apart from the main instance by its caption.
void MainWindow::showDisplayCaption() {
    if (station.isDisplay())
        setWindowTitle(QStringLiteral("Vessimar"));
}

// A stored text that is no colour of the palette keeps the workspace colour and stays in the
// store as the user wrote it, until the user picks a colour.
void MainWindow::loadBackground() {
    const QString text = Registry::get(SettingKeys::Background);
    if (text == Registry::NoKeyValue)
        return;
    const std::optional<double> number = NumberText::toDouble(text);
    const std::optional<quint32> color = number ? Palette::fromValue(*number) : std::nullopt;
    if (!color) {
        backgroundUnread = true;
        return;
    }
    setBackground(*color);
}

void MainWindow::loadPagerFrequency() {
    station.setPagerFrequency(PagerSchedule::loadFrequency());
}

void MainWindow::loadNoWeatherSeconds() {
    station.watchdog().setThreshold(FeedWatchdog::loadThreshold());
}

void MainWindow::loadDeltaVP() {
    const QString text = Registry::get(SettingKeys::DeltaVP);
    bool& deltaVP = station.predictionSettings().deltaVP;
    deltaVP = text == u"1";
    deltaVPUnread = !deltaVP && text != u"0" && text != Registry::NoKeyValue;
    bar->tool(QStringLiteral("miDeltaVP"))->setChecked(deltaVP);
}

void MainWindow::resetRaceLogs() {
    station.raceLogs().reset();
}

void MainWindow::loadPortSettings() {
    ::loadPortSettings(instrument().portSettings);
    portSettingsAsLoaded = instrument().portSettings;
}

void MainWindow::disableSetDateTime() {
    bar->tool(QStringLiteral("miSetDateTime"))->setEnabled(false);
}

void MainWindow::listRaceLogTypes() {
    if (raceLogListing)
        raceLogListing();
}

// No live window is open yet; the logs follow the weather until the user says otherwise.
void MainWindow::resetFlags() {
    OpenViews& views = station.views();
    views.close(ViewTable::View::WindDirection);
    views.close(ViewTable::View::WindSpeed);
    views.close(ViewTable::View::VaporPressure);
    station.predictionSettings().automaticUpdates = true;
    bar->tool(QStringLiteral("miAutomaticUpdates"))->setChecked(true);
    station.weatherLog().release();
}

// The program runs without a link until the user chooses a port.
void MainWindow::askForPortWhenNone() {
    if (instrument().portSettings.comPort != 0)
        return;
    Dialogs::inform(QStringLiteral("Please go to Pellamor->Properties\r\n") +
                        QStringLiteral("and select a port that Pellamor\r\n") +
                        QStringLiteral("is connected to."),
                    QStringLiteral("Tarnwick - Communications"), Dialogs::Icon::Information);
}

// The port settings belong to the main instance, which owns the instrument.
void MainWindow::disablePropertiesInDisplayMode() {
    if (station.isDisplay())
        bar->tool(QStringLiteral("miProperties"))->setEnabled(false);
}

// A display instance reads the relay on this machine unless told otherwise. Only memory
// changes here; the settings reach the store at exit.
void MainWindow::useRelayDefaultsInDisplayMode() {
    if (!station.isDisplay())
        return;
    PortSettings& settings = instrument().portSettings;
    if (settings.host.isEmpty() || settings.host == u"None")
        settings.host = QStringLiteral("localhost");
    if (settings.tcpPort.isEmpty() || settings.tcpPort == u"None")
        settings.tcpPort = QStringLiteral("5555");
}

// A main instance on a COM port opens it now; one set to TCP/IP connects only when the user
// applies the port settings.
void MainWindow::startSerialPort() {
    station.startSerialPort();
}

void MainWindow::connectRelay() {
    instrument().connectIPPort();
}

void MainWindow::startTimers() {
    station.startTimers();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // Every race log closes first with its own save question; one that refuses keeps the
    // program open, so no run is lost on the way out.
    mdi->closeAllSubWindows();
    if (!mdi->subWindowList().isEmpty()) {
        event->ignore();
        return;
    }
    stopTimers();
    if (!weatherLogClosed()) {
        // The timers stay stopped: a window that refused to close is to be closed again.
        event->ignore();
        Dialogs::inform(QStringLiteral("Please wait a second so the log file can close!"),
                        QStringLiteral("Logging Weather Data"), Dialogs::Icon::Information);
        return;
    }
    try {
        closeLinks();
        saveDeltaVP();
        saveBackground();
    } catch (...) {
        Dialogs::inform(QStringLiteral("Detected error in shutdown!"), QStringLiteral("Tarnwick"),
                        Dialogs::Icon::Information);
    }
    event->accept();
}

// The relay goes first, then the port; the port settings in memory are kept for the next start.
void MainWindow::closeLinks() {
    station.closeLinks();
    savePortSettings(instrument().portSettings, portSettingsAsLoaded);
}

void MainWindow::stopTimers() {
    station.stopTimers();
}

// The weather log says whether a row is being written; a close that comes in meanwhile is
// refused rather than cut the row short.
bool MainWindow::weatherLogClosed() {
    return !station.weatherLog().isBusy();
}

void MainWindow::saveDeltaVP() {
    if (deltaVPUnread)
        return;
    const bool on = bar->tool(QStringLiteral("miDeltaVP"))->isChecked();
    Registry::set(SettingKeys::DeltaVP, on ? QStringLiteral("1") : QStringLiteral("0"));
}

void MainWindow::saveBackground() {
    if (backgroundUnread)
        return;
    Registry::set(SettingKeys::Background, Palette::toText(backgroundColor));
}

void MainWindow::openFile(const QString& path) {
    RaceLogLoad load;
    {
        Hourglass busy;
        if (raceLogLoader)
            load = raceLogLoader(path);
    }
    if (load.loaded)
        return;
    QString text = QStringLiteral("Not able to load Race Log...\r\n") + path;
    if (!load.reason.isEmpty())
        text += QStringLiteral("\r\n") + load.reason;
    Dialogs::inform(text, QStringLiteral("Tarnwick - Load Race Log"), Dialogs::Icon::Information);
}

void MainWindow::dispatch(const QString& toolName) {
    // A copy: a command may give other tools their commands while it runs.
    const std::function<void()> command = commands.value(toolName);
    if (command) {
        command();
        return;
    }
    if (toolName.startsWith(u"new") && newRaceLogCommand)
        newRaceLogCommand(toolName.mid(3));
}

QMdiArea* MainWindow::mdiArea() const {
    return mdi;
}

void MainWindow::setCommand(const QString& toolName, std::function<void()> command) {
    commands.insert(toolName, std::move(command));
    bar->showTools([this](const QString& name) { return commands.contains(name); });
}

QStringList MainWindow::commandNames() const {
    return commands.keys();
}

void MainWindow::setNewRaceLog(std::function<void(const QString&)> command) {
    newRaceLogCommand = std::move(command);
}

void MainWindow::setRaceLogLoader(std::function<RaceLogLoad(const QString&)> loader) {
    raceLogLoader = std::move(loader);
}

void MainWindow::setRaceLogListing(std::function<void()> listing) {
    raceLogListing = std::move(listing);
}

// The flag turns over and the tool's check mark shows it.
void MainWindow::toggleAutomaticUpdates() {
    bool& automaticUpdates = station.predictionSettings().automaticUpdates;
    automaticUpdates = !automaticUpdates;
    bar->tool(QStringLiteral("miAutomaticUpdates"))->setChecked(automaticUpdates);
}

void MainWindow::toggleDeltaVP() {
    bool& deltaVP = station.predictionSettings().deltaVP;
    deltaVP = !deltaVP;
    deltaVPUnread = false;
    bar->tool(QStringLiteral("miDeltaVP"))->setChecked(deltaVP);
}

void MainWindow::setBackground(quint32 color) {
    backgroundColor = color;
    backgroundUnread = false;
    mdi->setBackground(Palette::isSystemColor(color) ? workspace : QBrush(Palette::toColor(color)));
}

void MainWindow::chooseMoreColors() {
    const std::optional<QColor> chosen = Dialogs::chooseColor(mdi->background().color());
    if (chosen)
        setBackground(Palette::fromColor(*chosen));
}

// The window list is made each time it opens, so it always names the windows open now.
void MainWindow::listWindows() {
    QMenu* list = bar->tool(QStringLiteral("miWindowList"))->menu();
    list->clear();
    const QList<QMdiSubWindow*> windows = mdi->subWindowList(QMdiArea::CreationOrder);
    for (qsizetype i = 0; i < windows.size(); ++i) {
        QMdiSubWindow* window = windows[i];
        QAction* entry =
            list->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(window->windowTitle()));
        entry->setObjectName(QStringLiteral("miChildWindow"));
        entry->setCheckable(true);
        entry->setChecked(window == mdi->activeSubWindow());
        connect(entry, &QAction::triggered, mdi,
                [this, window] { mdi->setActiveSubWindow(window); });
    }
}

void MainWindow::showHelpContents() {
    QDesktopServices::openUrl(QUrl::fromLocalFile(manualIndexPath()));
}

void MainWindow::showAbout() {
    AboutDialog about(this);
    about.exec();
}

void MainWindow::replayWeatherLog() {
    Hourglass busy;
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Load Logged Weather");
    request.filter = QStringLiteral("Tarnwick Weather Log Files (*.csv) |*.csv|") +
                     QStringLiteral("All Files (*.*) |*.*|");
    request.filterIndex = 1;
    request.initialFolder = weatherLogFolder();
    const std::optional<Dialogs::FileChoice> file = Dialogs::chooseFile(request);
    if (!file)
        return;

    const Dialogs::Answer clear =
        Dialogs::show({QStringLiteral("Do you want to clear the existing logged weather data\r\n") +
                           QStringLiteral("from the graph before loading\r\n") + file->title + u'?',
                       QStringLiteral("Load Logged Weather"), Dialogs::Icon::Question,
                       Dialogs::Buttons::YesNo, Dialogs::Answer::Yes});
    if (clear == Dialogs::Answer::Yes)
        clearViews();
    replayWithProgress(*file);
}

// A whole day takes a moment: a bar shows how far the replay has come, and Cancel stops it
// between two rows, so every chart keeps the same rows. The live feed goes on meanwhile. The
// bar shows from the first report, not after a wait measured on the clock: how long a replay
// takes depends on the machine and what else it is doing, and Cancel must be there whatever
// that is.
void MainWindow::replayWithProgress(const Dialogs::FileChoice& file) {
    constexpr int Steps = 1000;
    QProgressDialog progress(QStringLiteral("Loading ") + file.title + QStringLiteral("..."),
                             QStringLiteral("Cancel"), 0, Steps, this);
    progress.setObjectName(QStringLiteral("dlgLoadLoggedWeather"));
    progress.setWindowTitle(QStringLiteral("Load Logged Weather"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(0);
    loadLoggedWeather(file.path, station.views(), [&progress](double fractionRead) {
        progress.setValue(int(fractionRead * Steps));
        return !progress.wasCanceled();
    });
}

// Clears each open chart in the order of the view table; the live weather and wind direction
// windows keep what they show.
void MainWindow::clearViews() {
    station.views().clear();
}
