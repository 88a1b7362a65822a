#pragma once

#include <QList>
#include <QPair>
#include <QString>

class QScreen;
class QWindow;

// One monitor as the system reports it, in pixels. Right and Bottom lie one past the last
// pixel, so Right - Left is the width.
class Monitor {
public:
    qint32 Handle = 0;
    qint32 Height = 0;
    qint32 Width = 0;
    qint32 Left = 0;
    qint32 Right = 0;
    qint32 Top = 0;
    qint32 Bottom = 0;
    // The work area: the monitor without the task bar and docked panels.
    qint32 WorkLeft = 0;
    qint32 WorkRight = 0;
    qint32 WorkTop = 0;
    qint32 WorkBottom = 0;
};

// The monitors in the order they were found, counted from 1, each once under its handle.
class MonitorCollection {
public:
    int Count() const { return int(items.size()); }
    const Monitor& Item(int index) const { return items.at(index - 1).second; }
    // Refuses, with false, a monitor whose key is already there.
    bool Add(const Monitor& monitor, const QString& key);
    void Clear() { items.clear(); }

private:
    QList<QPair<QString, Monitor>> items;
};

// The monitors of the machine. They are found when the object is made and again by Refresh.
class MonitorList {
public:
    // What a question about a point or a window answers when it lies off every monitor.
    enum Flags { DefaultToNone = 0, DefaultToNearest = 1 };

    MonitorList();

    MonitorCollection Monitors;

    // The virtual desktop that holds every monitor.
    qint32 DesktopLeft() const;
    qint32 DesktopTop() const;
    qint32 DesktopWidth() const;
    qint32 DesktopHeight() const;

    void Refresh();

    // The handle of the monitor, or -1 when there is none.
    qint32 GetMonitorFromXYPoint(int x, int y, Flags flags) const;
    qint32 GetMonitorFromWindow(const QWindow* window, Flags flags) const;

    // Centres form in the work area of otherForm's monitor, or without otherForm of the
    // monitor nearest the desktop's top left corner. False when that monitor can't be read.
    bool CenterFormOnMonitor(QWindow& form, const QWindow* otherForm = nullptr) const;
};
