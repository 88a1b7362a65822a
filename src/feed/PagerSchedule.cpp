#include "feed/PagerSchedule.h"

#include "core/NumberText.h"
#include "core/Registry.h"

std::optional<qint32> PagerSchedule::storedFrequency(const QString& text) {
    const std::optional<qint32> whole =
        NumberText::roundToInt32(NumberText::toDouble(text).value_or(DefaultFrequency));
    if (!whole)
        return std::nullopt;
    if (*whole < 0 || *whole > HighestFrequency)
        return DefaultFrequency;
    return *whole;
}

// One rule for the main window, the pager and the configuration: a number too large for a
// whole number is as good as none here.
qint32 PagerSchedule::frequencyFromText(const QString& text) {
    return storedFrequency(text).value_or(DefaultFrequency);
}

qint32 PagerSchedule::loadFrequency() {
    return frequencyFromText(Registry::get(SettingKeys::PagerFrequency));
}

bool PagerSchedule::tick() {
    ++counter;
    if (counter <= ticksBetweenPages)
        return false;
    counter = 0;
    return true;
}
