#include "pager/PagerSchedule.h"

#include "racelog/RaceLogDefaults.h"

#include "core/Registry.h"

qint32 PagerSchedule::frequencyFromText(const QString& text) {
    // One rule for the main window, the pager and the configuration: a number too large for
    // a whole number is as good as none here.
    return RaceLogDefaults::PagerFrequencyFromText(text).value_or(DefaultFrequency);
}

qint32 PagerSchedule::loadFrequency() {
    return frequencyFromText(Registry::Get(QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\"),
                                           QStringLiteral("PagerFrequency")));
}

bool PagerSchedule::tick() {
    ++counter;
    if (counter <= iPagerFrequency)
        return false;
    counter = 0;
    return true;
}
