#include "core/OpenViews.h"

#include "core/LiveView.h"

void OpenViews::open(View view, LiveView* window) {
    windows[std::size_t(view)] = window;
    emit opened(view);
}

void OpenViews::close(View view, LiveView* window) {
    if (at(view) == window)
        close(view);
}

void OpenViews::close(View view) {
    if (!isOpen(view))
        return;
    windows[std::size_t(view)] = nullptr;
    emit closed(view);
}

// The table is read afresh for each view: a view may close while another one draws.
void OpenViews::showReading(const WeatherRecord& reading, const QString& statusLine) const {
    for (const View view : ViewTable::readingOrder()) {
        if (LiveView* window = at(view))
            window->showReading(reading, statusLine);
    }
}

void OpenViews::addLoggedRow(const WeatherRecord& row, float t, float correctionFactor) const {
    for (const View view : ViewTable::replayOrder()) {
        if (LiveView* window = at(view))
            window->addLoggedPoint(t, ViewTable::entry(view).samples(row, correctionFactor));
    }
}

void OpenViews::endOfReplay() const {
    for (const View view : ViewTable::replayOrder()) {
        if (LiveView* window = at(view))
            window->endOfReplay();
    }
}

void OpenViews::clear() const {
    for (const View view : ViewTable::clearOrder()) {
        if (LiveView* window = at(view))
            window->clear();
    }
}
