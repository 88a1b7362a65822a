#include "feed/SerialFramer.h"

#include <utility>

SerialFramer::SerialFramer(LineHandler onLine) : onLine(std::move(onLine)) {}

void SerialFramer::receive(const QByteArray& bytes) {
    // The instrument writes 8-bit text: each byte is one character.
    unread += QString::fromLatin1(bytes);
    if (readingInput)
        return;

    readingInput = true;
    // The size is read again on every turn: a handler may append (nested receive) or empty
    // the buffer (reset after a comm error).
    while (rxPosition < unread.size())
        take(unread[rxPosition++]);
    unread.clear();
    rxPosition = 0;
    readingInput = false;
}

void SerialFramer::take(QChar character) {
    if (skippingToLineEnd) {
        skippingToLineEnd = character != u'\r';
        return;
    }
    if (collecting) {
        pendingLine += character;
        if (character == u'\r') {
            endLine();
        } else if (pendingLine.size() > MaxRecordLength) {
            ++overlong;
            startWaiting();
            skippingToLineEnd = true;
        }
        return;
    }
    if (skippingToStart && character == u' ') {
        pendingLine = character;
        skippingToStart = false;
        collecting = true;
    }
}

void SerialFramer::endLine() {
    // The handler gets its own copy: it may reset the framing while it runs.
    const QString line = pendingLine;
    onLine(line);
    startWaiting();
}

void SerialFramer::startWaiting() {
    pendingLine.clear();
    skippingToStart = true;
    collecting = false;
}

void SerialFramer::resetReceiveState() {
    unread.clear();
    rxPosition = 0;
    startWaiting();
    skippingToLineEnd = false;
    readingInput = false;
}
