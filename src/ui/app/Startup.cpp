#include "ui/app/Startup.h"

#include "core/Dialogs.h"
#include "core/NumberText.h"
#include "crew/CrewView.h"
#include "feed/InstrumentConnection.h"
#include "feed/WeatherStation.h"
#include "ui/charts/ViewCommands.h"
#include "ui/crew/CrewViewCommand.h"
#include "ui/feed/PortCommand.h"
#include "ui/graphs/GraphCommands.h"
#include "ui/output/IncrementalTimesCommand.h"
#include "ui/pager/PagerDispatch.h"
#include "ui/racelog/RaceLogCommands.h"
#include "ui/shell/CountMonitors.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/SplashScreen.h"
#include "ui/shell/ToolIcons.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QTimer>
#include <QWindow>

namespace {

const QString displayQuestion =
    QStringLiteral("A previous instance of Tarnwick has been detected.\r\n"
                   "Tarnwick is being configured with display options!");

// The splash stays up at least this long, so that it is seen even when the load is quick.
constexpr int splashMs = 1000;

#ifdef Q_OS_WIN
const QString oskerbyName = QStringLiteral("oskerby.exe");
#else
const QString oskerbyName = QStringLiteral("oskerby");
#endif

} // namespace

Startup::Startup(const QStringList& arguments, const QString& applicationFolder)
    : commandLine(arguments.mid(1).join(u' ')), applicationFolder(applicationFolder) {}

// The window goes before the station it shows.
Startup::~Startup() {
    delete window;
}

MainWindow* Startup::mainWindow() const {
    return window;
}

std::optional<int> Startup::run() {
    // Every window and box of the program carries its icon, the first question included; the
    // desktop finds the program's entry, and so its icon, by the same name.
    QGuiApplication::setWindowIcon(ToolIcons::programIcon());
    QGuiApplication::setDesktopFileName(QStringLiteral("org.tarnwick.Tarnwick"));

    // A file handed to a running program: the main instance opens it, and this process ends
    // without showing anything.
    const bool anotherProcess = channel.anotherProcessRunning();
    if (!commandLine.isEmpty() && anotherProcess) {
        InstanceChannel::handOver(handedPath());
        return 0;
    }

    if (anotherProcess) {
        const Dialogs::Message question{displayQuestion, QStringLiteral("Tarnwick"),
                                        Dialogs::Icon::Information, Dialogs::Buttons::OkCancel,
                                        Dialogs::Answer::Ok};
        if (Dialogs::show(question) == Dialogs::Answer::Cancel)
            return 0;
        role = InstanceRole::Display;
    }

    showSplashWhileLoading();
    window->show();
    // With the window up, a port the crew view cannot have shows on its status line.
    crew->start();

    // A display instance never takes files: a later start's path goes to the main instance.
    // The main instance takes them until its window has closed.
    if (role == InstanceRole::Main) {
        connect(&channel, &InstanceChannel::pathReceived, this, &Startup::openHandedPath);
        connect(window->windowHandle(), &QWindow::visibleChanged, this, [this](bool visible) {
            if (!visible)
                channel.stopListening();
        });
        channel.listen();
    }

    if (!commandLine.isEmpty())
        window->openFile(commandLine);

    if (role == InstanceRole::Display)
        return startDisplay();
    return std::nullopt;
}

void Startup::showSplashWhileLoading() {
    SplashScreen splash;
    splash.show();
    splash.repaint();
    // Nothing else exists yet; the wait only lets the splash be drawn and seen.
    QEventLoop wait;
    QTimer::singleShot(splashMs, &wait, &QEventLoop::quit);
    wait.exec(QEventLoop::ExcludeUserInputEvents);

    station = std::make_unique<WeatherStation>(role);
    // A display instance serves the crew view only where no main instance does.
    std::function<bool()> mainInstanceElsewhere;
    if (role == InstanceRole::Display)
        mainInstanceElsewhere = &InstanceChannel::mainInstanceListening;
    crew = std::make_unique<CrewView>(*station, mainInstanceElsewhere);
    connect(crew.get(), &CrewView::problem, station.get(), &WeatherStation::statusText);
    window = new MainWindow(*station);
    // The race log, pager, view, graph and report commands join the one dispatch before the
    // load lists the race log types and starts the timers.
    new RaceLogCommands(*window, *station);
    new PagerDispatch(*window);
    PortCommand::add(*window);
    CrewViewCommand::add(*window, *crew);
    ViewCommands::add(*window, station->views());
    GraphCommands::add(*window, station->raceLogs());
    IncrementalTimesCommand::add(*window);
    window->load();
}

// A path relative to this start's working folder means nothing to the main instance, which
// runs in a folder of its own: a file found here goes over with its full path.
QString Startup::handedPath() const {
    const QString here = QDir::current().absoluteFilePath(commandLine);
    return QFileInfo(commandLine).isRelative() && QFileInfo::exists(here) ? here : commandLine;
}

// Restoring a minimised window gives it back the state it had before: maximised stays so.
void Startup::openHandedPath(const QString& path) {
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
    window->openFile(path);
}

std::optional<int> Startup::startDisplay() {
    const QString oskerby = applicationFolder + u'/' + oskerbyName;
    if (!QFileInfo(oskerby).isFile())
        return 0;
    // The relay serves every display on the configured port; it keeps running when this
    // process ends, and a second relay on a taken port simply ends.
    QProcess relay;
    relay.setProgram(oskerby);
    const QString port = window->instrument().portSettings.tcpPort;
    if (NumberText::isNumeric(port))
        relay.setArguments({QStringLiteral("--port"), port});
    relay.setStandardOutputFile(QProcess::nullDevice());
    relay.setStandardErrorFile(QProcess::nullDevice());
    relay.startDetached();
    window->connectRelay();
    if (!countMonitors(*window))
        Dialogs::inform(QStringLiteral("Unable to determine how many monitors are in use."),
                        QStringLiteral("Tarnwick - Startup"), Dialogs::Icon::Information);
    return std::nullopt;
}
