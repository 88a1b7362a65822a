#pragma once

#include <QCursor>
#include <QGuiApplication>

// The busy pointer for a long operation: shown while the object lives, and the pointer before
// it comes back however the operation ends.
class Hourglass {
public:
    Hourglass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QGuiApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};
