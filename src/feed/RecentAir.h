#pragma once

#include "prediction/AirOutlook.h"

#include <QList>

// The live adjusted altitude of the last half hour, kept in memory whatever the weather log
// keeps on disk: the outlook of the next rounds is drawn through it.
class RecentAir {
public:
    static constexpr qint64 KeptMinutes = 30;

    // A reading at a moment in milliseconds since the epoch; readings more than half an hour
    // older go.
    void add(qint64 at, double aa);
    // Readings more than half an hour before now go: a feed that stopped leaves no old air.
    void forgetBefore(qint64 now);

    const QList<AirOutlook::Sample>& samples() const { return kept; }

private:
    QList<AirOutlook::Sample> kept; // oldest first
};
