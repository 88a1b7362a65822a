#include "ui/shell/WindowArrangement.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace WindowArrangement {

namespace {

// The windows that take part, in the order in which they were opened.
QList<QMdiSubWindow*> arrangedWindows(QMdiArea& area) {
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* window : area.subWindowList(QMdiArea::CreationOrder)) {
        if (window->isHidden() || window->isMinimized())
            continue;
        if (window->isMaximized())
            window->showNormal();
        windows.append(window);
    }
    return windows;
}

// Splits a length into `count` shares that add up to it exactly.
int shareStart(int length, int count, int index) {
    return length * index / count;
}

void tile(QMdiArea& area, Qt::Orientation stacking) {
    const QList<QMdiSubWindow*> windows = arrangedWindows(area);
    const QRect client = area.viewport()->rect();
    const int count = int(windows.size());
    for (int i = 0; i < count; ++i) {
        QRect share = client;
        if (stacking == Qt::Vertical) {
            share.setTop(shareStart(client.height(), count, i));
            share.setBottom(shareStart(client.height(), count, i + 1) - 1);
        } else {
            share.setLeft(shareStart(client.width(), count, i));
            share.setRight(shareStart(client.width(), count, i + 1) - 1);
        }
        windows[i]->setGeometry(share);
    }
}

} // namespace

void tileHorizontally(QMdiArea& area) {
    tile(area, Qt::Vertical);
}

void tileVertically(QMdiArea& area) {
    tile(area, Qt::Horizontal);
}

void cascade(QMdiArea& area) {
    area.cascadeSubWindows();
}

} // namespace WindowArrangement
