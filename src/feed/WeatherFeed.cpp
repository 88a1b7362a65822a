#include "feed/WeatherFeed.h"

#include "core/OpenViews.h"
#include "feed/CommErrorText.h"
#include "feed/StatusLine.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherParser.h"
#include "prediction/LogPrediction.h"
#include "racelog/OpenRaceLogs.h"

WeatherFeed::WeatherFeed(const Destinations& destinations, QObject* parent)
    : QObject(parent), to(destinations), framer([this](const QString& line) { serialLine(line); }) {
}

void WeatherFeed::serialBytes(const QByteArray& bytes) {
    framer.receive(bytes);
}

void WeatherFeed::serialLine(const QString& line) {
    processWeatherRecord(line);
    // The relay is how a display instance gets the feed; it goes out after this instance has
    // handled the line.
    emit relayLine(line.toLatin1());
}

void WeatherFeed::tcpBytes(const QByteArray& bytes) {
    for (const QString& line : splitter.take(bytes))
        processWeatherRecord(line);
}

void WeatherFeed::commError(int code, const QString& linkText) {
    resetReceiveState();
    const QString text = commErrorText(code);
    emit statusText(QStringLiteral("Comm Error: ") + (text.isEmpty() ? linkText : text));
}

void WeatherFeed::resetReceiveState() {
    framer.resetReceiveState();
}

void WeatherFeed::resetRelayLine() {
    splitter.reset();
}

quint64 WeatherFeed::overlongLines() const {
    return framer.overlongLines() + splitter.overlongLines();
}

void WeatherFeed::processWeatherRecord(const QString& line) {
    const bool wholeRecord = parseWeatherLine(line, current);
    const ReadingTexts texts = readingTexts(current);

    updateRaceLogs(texts);

    emit onlineMarkEnabled();

    status = buildStatusLine(texts);
    emit statusText(status);

    to.views.showReading(current, status);

    if (to.weatherLog)
        to.weatherLog->writeRow(texts);

    if (wholeRecord)
        emit recordRead();
}

void WeatherFeed::updateRaceLogs(const ReadingTexts& texts) {
    const QString& adjustedAltitude = texts[quantityIndex("AA")];
    const QString& vaporPressure = texts[quantityIndex("VP")];
    // By index, reading the slot each time: a log may close while another one predicts.
    for (int slot = 0; slot < to.raceLogs.slotCount(); ++slot) {
        if (RaceLog* log = to.raceLogs.at(slot))
            LogPrediction::takeReading(*log, adjustedAltitude, vaporPressure, to.prediction);
    }
}
