#pragma once

#include "core/InstanceChannel.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <optional>

struct AppState;
class MainWindow;

// The start of the process. Main decides the role of this process - main instance or
// display instance - or hands a race log to the running main instance and ends, then opens
// the main window and connects the process to its source of weather records.
class Startup : public QObject {
    Q_OBJECT
public:
    // arguments as the process got them, the program's own name first; applicationFolder is
    // where the companion programs lie.
    Startup(AppState& state, const QStringList& arguments, const QString& applicationFolder);
    ~Startup() override;

    // Runs the start-up. Gives the exit code when the process ends here, or nothing when the
    // main window is up and the events are to run.
    std::optional<int> Main();

    MainWindow* mainWindow() const;

private:
    void ShowSplashWhileLoading();
    QString handedPath() const;
    void OpenHandedPath(const QString& path);
    std::optional<int> StartDisplay();

    AppState& state;
    const QString commandLine;
    const QString applicationFolder;
    InstanceChannel channel;
    QPointer<MainWindow> window;
};
