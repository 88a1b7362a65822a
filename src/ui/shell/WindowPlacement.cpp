#include "ui/shell/WindowPlacement.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QWidget>
#include <QWindow>

namespace {

constexpr Qt::WindowStates sizedStates = Qt::WindowMinimized | Qt::WindowMaximized;

} // namespace

int WidgetPlacement::windowState() const {
    if (widget.isMinimized())
        return 1;
    if (widget.isMaximized())
        return 2;
    return 0;
}

void WidgetPlacement::setWindowState(int state) {
    Qt::WindowStates states = widget.windowState() & ~sizedStates;
    if (state == 1)
        states |= Qt::WindowMinimized;
    else if (state == 2)
        states |= Qt::WindowMaximized;
    widget.setWindowState(states);
}

int WidgetPlacement::placement(Settings::PlacementField field) const {
    switch (field) {
    case Settings::PlacementField::Width:
        return widget.width();
    case Settings::PlacementField::Height:
        return widget.height();
    case Settings::PlacementField::Top:
        return widget.y();
    case Settings::PlacementField::Left:
        return widget.x();
    }
    return 0;
}

void WidgetPlacement::setPlacement(Settings::PlacementField field, int value) {
    // A minimised or maximised window takes no size of its own; the value belongs to its
    // normal state, so the window goes there for the change and back.
    const Qt::WindowStates states = widget.windowState();
    if (states & sizedStates)
        widget.setWindowState(states & ~sizedStates);
    switch (field) {
    case Settings::PlacementField::Width:
        widget.resize(value, widget.height());
        break;
    case Settings::PlacementField::Height:
        widget.resize(widget.width(), value);
        break;
    case Settings::PlacementField::Top:
        widget.move(widget.x(), value);
        break;
    case Settings::PlacementField::Left:
        widget.move(value, widget.y());
        break;
    }
    if (states & sizedStates) {
        // A hidden window gives its place to the system only when it is shown, and by then
        // the system takes no place from a maximised window; so the system window gets the
        // normal place now, while it is normal.
        if (QWindow* system = widget.windowHandle(); system && !widget.isVisible()) {
            system->setFramePosition(widget.pos());
            system->resize(widget.size());
        }
        widget.setWindowState(states);
    }
}

namespace Settings {

void saveWindowPlacement(const QString& keyPath, QWidget* window) {
    saveWindowPlacement(keyPath, WidgetPlacement(*window));
}

void loadWindowPlacement(const QString& keyPath, QWidget* window) {
    WidgetPlacement placed(*window);
    loadWindowPlacement(keyPath, placed);
}

} // namespace Settings

KeptPlacement::KeptPlacement(QWidget& placed, QString key)
    : QObject(&placed), window(placed), keyPath(std::move(key)) {
    window.installEventFilter(this);
}

bool KeptPlacement::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window) {
        if (event->type() == QEvent::Show && !restored) {
            restored = true;
            Settings::loadWindowPlacement(keyPath, placedWindow());
        } else if (event->type() == QEvent::Close) {
            Settings::saveWindowPlacement(keyPath, placedWindow());
        }
    }
    return QObject::eventFilter(watched, event);
}

// The frame holds the place of a window in the MDI area.
QWidget* KeptPlacement::placedWindow() const {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(window.parentWidget()))
        return frame;
    return &window;
}
