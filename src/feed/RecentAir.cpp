#include "feed/RecentAir.h"

void RecentAir::add(qint64 at, double aa) {
    kept.append({at, aa});
    forgetBefore(at);
}

void RecentAir::forgetBefore(qint64 now) {
    const qint64 oldest = now - KeptMinutes * 60 * 1000;
    qsizetype gone = 0;
    while (gone < kept.size() && kept[gone].at < oldest)
        ++gone;
    kept.remove(0, gone);
}
