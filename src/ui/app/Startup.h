#pragma once

#include "core/InstanceChannel.h"
#include "core/InstanceRole.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>
#include <optional>

class CrewView;
class MainWindow;
class WeatherStation;

// The start of the process. Main decides the role of this process - main instance or
// display instance - or hands a race log to the running main instance and ends, then makes
// the weather station of that role, opens the main window on it and connects the process to
// its source of weather records.
class Startup : public QObject {
    Q_OBJECT
public:
    // arguments as the process got them, the program's own name first; applicationFolder is
    // where the companion programs lie.
    Startup(const QStringList& arguments, const QString& applicationFolder);
    ~Startup() override;

    // Runs the start-up. Gives the exit code when the process ends here, or nothing when the
    // main window is up and the events are to run.
    std::optional<int> run();

    MainWindow* mainWindow() const;
    // The live weather and the open logs and views; made once the role is known.
    WeatherStation* weatherStation() const { return station.get(); }

private:
    void showSplashWhileLoading();
    QString handedPath() const;
    void openHandedPath(const QString& path);
    std::optional<int> startDisplay();

    InstanceRole role = InstanceRole::Main;
    const QString commandLine;
    const QString applicationFolder;
    InstanceChannel channel;
    std::unique_ptr<WeatherStation> station;
    // Goes before the station it reads.
    std::unique_ptr<CrewView> crew;
    QPointer<MainWindow> window;
};
