#include "ui/shell/SingleWindows.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace SingleWindows {

namespace {

QMdiSubWindow* openFrame(QMdiArea& area, const QString& objectName) {
    for (QMdiSubWindow* frame : area.subWindowList())
        if (frame->widget() && frame->widget()->objectName() == objectName)
            return frame;
    return nullptr;
}

} // namespace

void show(QMdiArea& area, const QString& objectName, const std::function<QWidget*()>& make) {
    if (QMdiSubWindow* open = openFrame(area, objectName)) {
        area.setActiveSubWindow(open);
        return;
    }
    QWidget* window = make();
    QMdiSubWindow* frame = area.addSubWindow(window);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    frame->show();
    window->show();
}

} // namespace SingleWindows
