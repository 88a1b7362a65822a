#include "ui/charts/LiveViewWindow.h"

#include "core/OpenViews.h"
#include "ui/shell/WindowPlacement.h"

#include <QCloseEvent>
#include <QMdiSubWindow>

LiveViewWindow::LiveViewWindow(ViewTable::View view, OpenViews& openViews, QWidget* parent)
    : QWidget(parent), kind(view), views(openViews) {
    const ViewTable::Entry& entry = ViewTable::entry(view);
    setObjectName(entry.objectName.toString());
    setWindowTitle(entry.caption.toString());
    setAttribute(Qt::WA_DeleteOnClose);
}

LiveViewWindow::~LiveViewWindow() {
    leaveViews();
}

void LiveViewWindow::joinViews() {
    views.open(kind, this);
}

// The view stops taking readings before its window goes, and keeps its place for next time.
void LiveViewWindow::closeEvent(QCloseEvent* event) {
    leaveViews();
    Settings::SaveWindowPlacement(ViewTable::placementKey(kind), placedWindow());
    event->accept();
}

void LiveViewWindow::leaveViews() {
    views.close(kind, this);
}

QWidget* LiveViewWindow::placedWindow() {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        return frame;
    return this;
}
