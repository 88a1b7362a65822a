#pragma once

#include <QList>
#include <QPair>
#include <QString>

class QScreen;
class QWindow;

// One monitor as the system reports it, in pixels. right and bottom lie one past the last
// pixel, so right - left is the width.
class Monitor {
public:
    qint32 handle = 0;
    qint32 height = 0;
    qint32 width = 0;
    qint32 left = 0;
    qint32 right = 0;
    qint32 top = 0;
    qint32 bottom = 0;
    // The work area: the monitor without the task bar and docked panels.
    qint32 workLeft = 0;
    qint32 workRight = 0;
    qint32 workTop = 0;
    qint32 workBottom = 0;
};

// The monitors in the order they were found, counted from 1, each once under its handle.
class MonitorCollection {
public:
    int count() const { return int(items.size()); }
    const Monitor& item(int index) const { return items.at(index - 1).second; }
    // Refuses, with false, a monitor whose key is already there.
    bool add(const Monitor& monitor, const QString& key);
    void clear() { items.clear(); }

private:
    QList<QPair<QString, Monitor>> items;
};

// The monitors of the machine. They are found when the object is made and again by refresh().
class MonitorList {
public:
    // What a question about a point or a window answers when it lies off every monitor.
    enum Flags { DefaultToNone = 0, DefaultToNearest = 1 };

    MonitorList();

    MonitorCollection monitors;

    // The virtual desktop that holds every monitor.
    qint32 desktopLeft() const;
    qint32 desktopTop() const;
    qint32 desktopWidth() const;
    qint32 desktopHeight() const;

    void refresh();

    // The handle of the monitor, or -1 when there is none.
    qint32 monitorFromPoint(int x, int y, Flags flags) const;
    qint32 monitorFromWindow(const QWindow* window, Flags flags) const;

    // Centres form in the work area of otherForm's monitor, or without otherForm of the
    // monitor nearest the desktop's top left corner. False when that monitor can't be read.
    bool centerFormOnMonitor(QWindow& form, const QWindow* otherForm = nullptr) const;
};
