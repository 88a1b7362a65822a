#include "prediction/PagerSchedule.h"

#include "shell/NumberText.h"
#include "shell/Registry.h"

qint32 PagerSchedule::frequencyFromText(const QString& text) {
    const auto whole =
        NumberText::RoundToInt32(NumberText::ToDouble(text).value_or(DefaultFrequency));
    if (!whole || *whole > MaxFrequency || *whole < 0)
        return DefaultFrequency;
    return *whole;
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
