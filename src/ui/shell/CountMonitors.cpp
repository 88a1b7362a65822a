#include "ui/shell/CountMonitors.h"

#include "core/MonitorList.h"

#include <QWidget>

bool CountMonitors(QWidget& mainWindow) {
    const MonitorList monitors;
    // Every desktop has a monitor; finding none means they could not be examined.
    if (monitors.Monitors.Count() == 0)
        return false;
    if (monitors.Monitors.Count() >= 2) {
        const Monitor& second = monitors.Monitors.Item(2);
        mainWindow.setWindowState(mainWindow.windowState() &
                                  ~(Qt::WindowMinimized | Qt::WindowMaximized));
        const QSize size = mainWindow.frameGeometry().size();
        mainWindow.move(second.Left + (second.Width - size.width()) / 2,
                        second.Top + (second.Height - size.height()) / 2);
        mainWindow.setWindowState(mainWindow.windowState() | Qt::WindowMaximized);
    }
    return true;
}
