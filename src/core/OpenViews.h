#pragma once

#include "core/ViewTable.h"

#include <QObject>
#include <array>

class LiveView;
struct WeatherRecord;

// The live views that are open, one at most of each kind. A view registers itself when its
// window loads and leaves when it closes. A reading, a replayed row and "Clear Views" reach the
// open views through here alone, each in the order the view table gives.
class OpenViews : public QObject {
    Q_OBJECT
public:
    using View = ViewTable::View;

    void open(View view, LiveView* window);
    // Only the window that is open for the view leaves; another one changes nothing.
    void close(View view, LiveView* window);
    void close(View view);

    LiveView* at(View view) const { return windows[std::size_t(view)]; }
    bool isOpen(View view) const { return at(view) != nullptr; }

    void showReading(const WeatherRecord& reading, const QString& statusLine) const;
    void addLoggedRow(const WeatherRecord& row, float t, float correctionFactor) const;
    void endOfReplay() const;
    void clear() const;

signals:
    void opened(ViewTable::View view);
    void closed(ViewTable::View view);

private:
    std::array<LiveView*, ViewTable::Count> windows{};
};
