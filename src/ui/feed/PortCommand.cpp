#include "ui/feed/PortCommand.h"

#include "feed/WeatherStation.h"
#include "ui/feed/PortDialog.h"
#include "ui/shell/MainWindow.h"

namespace PortCommand {

void add(MainWindow& main) {
    main.setCommand(QStringLiteral("miProperties"), [&main] {
        PortDialog dialog(main.instrument(), main.weatherStation().watchdog(), &main);
        dialog.exec();
    });
}

} // namespace PortCommand
