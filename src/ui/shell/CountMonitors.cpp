#include "ui/shell/CountMonitors.h"

#include "core/MonitorList.h"

#include <QWidget>

bool countMonitors(QWidget& mainWindow) {
    const MonitorList monitors;
    // Every desktop has a monitor; finding none means they could not be examined.
    if (monitors.monitors.count() == 0)
        return false;
    if (monitors.monitors.count() >= 2) {
        const Monitor& second = monitors.monitors.item(2);
        mainWindow.setWindowState(mainWindow.windowState() &
                                  ~(Qt::WindowMinimized | Qt::WindowMaximized));
        const QSize size = mainWindow.frameGeometry().size();
        mainWindow.move(second.left + (second.width - size.width()) / 2,
                        second.top + (second.height - size.height()) / 2);
        mainWindow.setWindowState(mainWindow.windowState() | Qt::WindowMaximized);
    }
    return true;
}
