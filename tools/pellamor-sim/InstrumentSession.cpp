#include "pellamor-sim/InstrumentSession.h"

#include "common/Console.h"
#include "feed/InstrumentLink.h"

namespace {

// A host that never sends a CR must not grow the command without end.
constexpr qsizetype longestCommand = 64 * 1024;

} // namespace

InstrumentSession::InstrumentSession(InstrumentLink& link, const Settings& settings,
                                     QObject* parent)
    : QObject(parent), link(link), settings(settings), instrument(settings.weather) {
    timer.setInterval(settings.intervalMs);
    connect(&timer, &QTimer::timeout, this, &InstrumentSession::sendTimedLine);
    connect(&link, &InstrumentLink::bytesReceived, this, &InstrumentSession::takeBytes);
}

void InstrumentSession::startTimedLines() {
    timer.start();
}

void InstrumentSession::sendTimedLine() {
    sendLine();
    ++timedLines;
}

void InstrumentSession::sendLine() {
    link.write(instrument.nextLine(now()));
}

QDateTime InstrumentSession::now() const {
    if (!settings.start.isValid())
        return QDateTime::currentDateTime();
    return settings.start.addMSecs(timedLines * settings.intervalMs);
}

// Commands end in a CR. Line feeds are ignored, so a host that ends its commands with CR LF
// is understood as well.
void InstrumentSession::takeBytes(const QByteArray& bytes) {
    for (const char byte : bytes) {
        if (byte == '\r') {
            obey(command);
            command.clear();
        } else if (byte != '\n' && command.size() < longestCommand) {
            command += byte;
        }
    }
}

// "l" asks for a line now. "f" and a text is a page: everything after the "f" is shown as it
// came, so the custom message "f hello" shows as "PAGE:  hello", with the blank it was sent
// with. Anything else is not for this instrument and is ignored.
void InstrumentSession::obey(const QByteArray& received) {
    if (received == "l") {
        Console::say("POLL");
        sendLine();
    } else if (received.startsWith('f')) {
        Console::say("PAGE: " + received.mid(1));
    }
}
