#include "ui/charts/LiveViewWindow.h"

#include "core/OpenViews.h"
#include "ui/shell/WindowPlacement.h"

#include <QCloseEvent>

LiveViewWindow::LiveViewWindow(ViewTable::View view, OpenViews& openViews, QWidget* parent)
    : QWidget(parent), kind(view), views(openViews) {
    const ViewTable::Entry& entry = ViewTable::entry(view);
    setObjectName(entry.objectName.toString());
    setWindowTitle(entry.caption.toString());
    setAttribute(Qt::WA_DeleteOnClose);
    new KeptPlacement(*this, ViewTable::placementKey(view));
}

LiveViewWindow::~LiveViewWindow() {
    leaveViews();
}

void LiveViewWindow::joinViews() {
    views.open(kind, this);
}

// The view stops taking readings before its window goes.
void LiveViewWindow::closeEvent(QCloseEvent* event) {
    leaveViews();
    event->accept();
}

void LiveViewWindow::leaveViews() {
    views.close(kind, this);
}
