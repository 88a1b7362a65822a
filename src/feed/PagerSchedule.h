#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

// When the periodic page is due. The send timer ticks every 4 seconds; a page goes out on
// the first tick after ticksBetweenPages ticks have passed, so pages come every
// (ticksBetweenPages + 1) x 4 seconds: 304 seconds for the default of 75 ("5min").
class PagerSchedule {
public:
    static constexpr qint32 DefaultFrequency = 75;
    static constexpr qint32 HighestFrequency = 135;

    explicit PagerSchedule(qint32 frequency = DefaultFrequency) : ticksBetweenPages(frequency) {}

    // The stored frequency made usable: text that is no number is 75, a whole number out of
    // 0 to 135 is 75. nullopt for a number too large to be taken as a whole number.
    static std::optional<qint32> storedFrequency(const QString& text);
    // A stored frequency as text; anything not a number or outside 0 to 135 is the default.
    static qint32 frequencyFromText(const QString& text);
    // The PagerFrequency setting, as the main window loads it.
    static qint32 loadFrequency();

    qint32 frequency() const { return ticksBetweenPages; }
    // A new frequency takes effect at once; the ticks already counted stay.
    void setFrequency(qint32 frequency) { ticksBetweenPages = frequency; }

    // One send timer tick; true when a page is due now, which starts a new period.
    bool tick();
    // The user asked for a page: the next tick sends it and starts a new period.
    void forcePage() { counter = ticksBetweenPages + 1; }

private:
    qint32 ticksBetweenPages;
    qint32 counter = 0;
};
