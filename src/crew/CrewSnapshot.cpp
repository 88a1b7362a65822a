#include "crew/CrewSnapshot.h"

#include "core/NumberText.h"
#include "feed/WeatherQuantities.h"
#include "feed/WeatherStation.h"
#include "prediction/TrustTexts.h"
#include "racelog/RaceLog.h"
#include "racelog/RaceLogSlots.h"

#include <utility>

namespace CrewSnapshot {

namespace {

// JSON's escape of a character it does not read as it is: by name for the quote, the
// backslash and five control characters, by number for the other control characters.
QString escaped(char16_t c) {
    static constexpr std::pair<char16_t, char16_t> Named[] = {
        {u'"', u'"'},  {u'\\', u'\\'}, {u'\b', u'b'}, {u'\f', u'f'},
        {u'\n', u'n'}, {u'\r', u'r'},  {u'\t', u't'}};
    for (const auto& [character, name] : Named) {
        if (c == character)
            return QString(QChar(u'\\')) + QChar(name);
    }
    return QStringLiteral("\\u%1").arg(int(c), 4, 16, QChar(u'0'));
}

// The message written out as text as it is made. It is made once for every line the feed
// brings while a phone is connected; QJsonObject takes each value through its CBOR form and
// was most of the message's cost. Keys come in the order QJsonDocument writes them (sorted
// within each object), so the text is the same as it was.
class JsonText {
public:
    JsonText() { text.reserve(4096); }

    void open(char16_t bracket) {
        separate();
        text += QChar(bracket);
        fresh = true;
    }
    void close(char16_t bracket) {
        text += QChar(bracket);
        fresh = false;
    }
    void key(QStringView name) {
        separate();
        quoted(name);
        text += u':';
        fresh = true;
    }
    void value(QStringView string) {
        separate();
        quoted(string);
    }
    void value(bool yes) {
        separate();
        text += yes ? QStringView(u"true") : QStringView(u"false");
    }
    void value(int number) {
        separate();
        text += QString::number(number);
    }
    template <typename Value> void field(QStringView name, const Value& value) {
        key(name);
        this->value(value);
    }

    QByteArray utf8() const { return text.toUtf8(); }

private:
    void separate() {
        if (!fresh)
            text += u',';
        fresh = false;
    }
    // A phone's JSON parser reads every character but the quote, the backslash and the
    // control characters as it is.
    void quoted(QStringView string) {
        text += u'"';
        for (const QChar c : string) {
            if (c.unicode() >= 0x20 && c != u'"' && c != u'\\')
                text += c;
            else
                text += escaped(c.unicode());
        }
        text += u'"';
    }

    QString text;
    bool fresh = true;
};

void status(JsonText& out, const WeatherStation& station) {
    const FeedWatchdog& watchdog = station.watchdog();
    out.open(u'{');
    out.field(u"live", !watchdog.isStale());
    if (watchdog.isStale())
        out.field(u"text", QStringLiteral("No weather for %1 s").arg(watchdog.secondsSinceLast()));
    else
        out.field(u"text", station.statusLine());
    out.close(u'}');
}

void quantities(JsonText& out, const WeatherStation& station) {
    const ReadingTexts texts = readingTexts(station.reading());
    out.open(u'[');
    for (size_t i = 0; i < WeatherQuantities.size(); ++i) {
        out.open(u'{');
        out.field(u"label", QString::fromLatin1(WeatherQuantities[i].label));
        out.field(u"name", QString::fromLatin1(WeatherQuantities[i].name));
        out.field(u"value", texts[i]);
        out.close(u'}');
    }
    out.close(u']');
}

// A number of the line as the caption writes it; empty when the line has none.
QString numberText(const std::optional<double>& value, const QString& pattern) {
    return value ? NumberText::format(*value, pattern) : QString();
}

QString isoTime(const QDateTime& time) {
    return time.isValid() ? time.toString(Qt::ISODateWithMs) : QString();
}

void log(JsonText& out, const RaceLog& raceLog, const PublishTimes& published) {
    const RaceLogData& content = raceLog.content();
    const PublishedPrediction& prediction = raceLog.prediction();
    const PredictionLine& line = prediction.line();
    out.open(u'{');
    out.field(u"aa", content.aa);
    out.field(u"likelyMiss", TrustTexts::plusMinus(raceLog.trust().likelyMiss()));
    out.field(u"line", line.pagerMessage);
    out.field(u"name", content.pageIdentifier.isEmpty()
                           ? RaceLogSlots::numberedCaption(raceLog.slot())
                           : content.pageIdentifier);
    out.field(u"outlook", raceLog.trust().outlook());
    out.field(u"predictedEt", numberText(line.predictedEt, QStringLiteral("##.0000")));
    out.field(u"referenceRun", content.refRunIndex);
    out.field(u"slot", raceLog.slot());
    out.field(u"stale", prediction.isStale());
    out.field(u"targetEt", content.targetET);
    out.field(u"throttleStop", numberText(line.throttleStop, QStringLiteral("##.0000")));
    out.field(u"updated", isoTime(published.value(&prediction)));
    out.field(u"vp", content.vp);
    out.close(u'}');
}

void logs(JsonText& out, const WeatherStation& station, const PublishTimes& published) {
    out.open(u'[');
    for (const RaceLog* raceLog : station.raceLogs().bySlot()) {
        if (raceLog)
            log(out, *raceLog, published);
    }
    out.close(u']');
}

} // namespace

QByteArray json(const WeatherStation& station, const PublishTimes& published,
                const QDateTime& now) {
    JsonText out;
    out.open(u'{');
    out.key(u"logs");
    logs(out, station, published);
    out.key(u"quantities");
    quantities(out, station);
    out.key(u"status");
    status(out, station);
    out.field(u"time", isoTime(now));
    out.close(u'}');
    return out.utf8();
}

} // namespace CrewSnapshot
