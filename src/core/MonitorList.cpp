#include "core/MonitorList.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <limits>
#include <optional>

namespace {

// A monitor's handle is its place in the system's list of screens, counting from 1, so that
// no monitor has the handle 0 and -1 can stand for none.
qint32 handleOf(const QScreen* screen) {
    return qint32(QGuiApplication::screens().indexOf(screen)) + 1;
}

QScreen* screenOf(qint32 handle) {
    return QGuiApplication::screens().value(handle - 1, nullptr);
}

std::optional<Monitor> monitorInfo(qint32 handle) {
    const QScreen* screen = screenOf(handle);
    if (!screen)
        return std::nullopt;
    const QRect area = screen->geometry();
    const QRect work = screen->availableGeometry();
    Monitor monitor;
    monitor.handle = handle;
    monitor.width = area.width();
    monitor.height = area.height();
    monitor.left = area.x();
    monitor.top = area.y();
    monitor.right = area.x() + area.width();
    monitor.bottom = area.y() + area.height();
    monitor.workLeft = work.x();
    monitor.workTop = work.y();
    monitor.workRight = work.x() + work.width();
    monitor.workBottom = work.y() + work.height();
    return monitor;
}

// With more than one monitor the system joins them into one desktop; with one there is
// nothing beyond the primary screen.
bool desktopSpansMonitors() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary && primary->virtualSiblings().size() > 1;
}

QRect desktop() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (desktopSpansMonitors())
        return primary->virtualGeometry();
    return QRect(QPoint(0, 0), primary ? primary->size() : QSize());
}

// How far a rectangle lies from a screen; 0 when they touch or overlap.
qint64 distanceBetween(const QRect& rect, const QRect& screen) {
    const qint64 dx = std::max({0, screen.left() - rect.right(), rect.left() - screen.right()});
    const qint64 dy = std::max({0, screen.top() - rect.bottom(), rect.top() - screen.bottom()});
    return dx * dx + dy * dy;
}

// The monitor that shares the most of rect, or with DefaultToNearest when it lies off every
// monitor, the closest one.
qint32 monitorFromRect(const QRect& rect, MonitorList::Flags flags) {
    const QScreen* best = nullptr;
    qint64 bestOverlap = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect shared = screen->geometry().intersected(rect);
        const qint64 overlap = qint64(shared.width()) * shared.height();
        if (!shared.isEmpty() && overlap > bestOverlap) {
            best = screen;
            bestOverlap = overlap;
        }
    }
    if (!best && flags == MonitorList::DefaultToNearest) {
        qint64 bestDistance = std::numeric_limits<qint64>::max();
        for (const QScreen* screen : QGuiApplication::screens()) {
            if (const qint64 distance = distanceBetween(rect, screen->geometry());
                distance < bestDistance) {
                best = screen;
                bestDistance = distance;
            }
        }
    }
    return best ? handleOf(best) : -1;
}

} // namespace

bool MonitorCollection::add(const Monitor& monitor, const QString& key) {
    for (const auto& item : items) {
        if (item.first == key)
            return false;
    }
    items.append({key, monitor});
    return true;
}

MonitorList::MonitorList() {
    refresh();
}

qint32 MonitorList::desktopLeft() const {
    return desktop().x();
}

qint32 MonitorList::desktopTop() const {
    return desktop().y();
}

qint32 MonitorList::desktopWidth() const {
    return desktop().width();
}

qint32 MonitorList::desktopHeight() const {
    return desktop().height();
}

void MonitorList::refresh() {
    monitors.clear();
    if (!desktopSpansMonitors()) {
        if (auto monitor = monitorInfo(handleOf(QGuiApplication::primaryScreen())))
            monitors.add(*monitor, QString::number(monitor->handle));
        return;
    }
    // Monitors are found by sampling the desktop on a grid of 640 by 480 and asking which
    // monitor holds the centre of each cell. The loops run up to the desktop's width and
    // height as they stand, not to its right and bottom edges, and a monitor smaller than a
    // cell can be missed; both are accepted.
    const int left = desktopLeft(), top = desktopTop();
    const int width = desktopWidth(), height = desktopHeight();
    for (int y = top; y <= height; y += 480) {
        for (int x = left; x <= width; x += 640) {
            const qint32 handle = monitorFromPoint(x + 320, y + 240, DefaultToNone);
            if (auto monitor = monitorInfo(handle))
                monitors.add(*monitor, QString::number(handle)); // a monitor already found stays
        }
    }
}

qint32 MonitorList::monitorFromPoint(int x, int y, Flags flags) const {
    return monitorFromRect(QRect(x, y, 1, 1), flags);
}

qint32 MonitorList::monitorFromWindow(const QWindow* window, Flags flags) const {
    if (!window)
        return -1;
    return monitorFromRect(window->frameGeometry(), flags);
}

bool MonitorList::centerFormOnMonitor(QWindow& form, const QWindow* otherForm) const {
    const qint32 handle = otherForm ? monitorFromWindow(otherForm, DefaultToNearest)
                                    : monitorFromPoint(1, 1, DefaultToNearest);
    const auto monitor = monitorInfo(handle);
    if (!monitor)
        return false;
    const QSize size = form.frameGeometry().size();
    const int workWidth = monitor->workRight - monitor->workLeft;
    const int workHeight = monitor->workBottom - monitor->workTop;
    form.setFramePosition(QPoint(monitor->workLeft + (workWidth - size.width()) / 2,
                                 monitor->workTop + (workHeight - size.height()) / 2));
    return true;
}
