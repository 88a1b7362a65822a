#pragma once

#include "feed/SimulatedInstrument.h"

#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QTimer>

class InstrumentLink;

// What the instrument does on its link: a weather line every interval, one more at once for
// each poll ("l" and a CR), and each page ("f", the text, a CR) shown on standard output as
// the pager would show it.
class InstrumentSession : public QObject {
public:
    struct Settings {
        SimulatedInstrument::Options weather;
        int intervalMs = 2000;
        // When valid, lines are stamped from this moment on, one interval further for each
        // timed line, instead of with the clock's time: the same seed then repeats a run.
        QDateTime start;
    };

    InstrumentSession(InstrumentLink& link, const Settings& settings, QObject* parent = nullptr);

    // Starts the timed lines; the link must be open.
    void startTimedLines();

private:
    void sendTimedLine();
    void sendLine();
    QDateTime now() const;
    void takeBytes(const QByteArray& bytes);
    void obey(const QByteArray& command);

    InstrumentLink& link;
    Settings settings;
    SimulatedInstrument instrument;
    QTimer timer;
    qint64 timedLines = 0;
    QByteArray command; // received since the last CR
};
