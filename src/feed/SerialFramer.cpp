#include "feed/SerialFramer.h"

#include <utility>

SerialFramer::SerialFramer(LineHandler onLine) : onLine(std::move(onLine)) {}

void SerialFramer::receive(const QByteArray& bytes) {
    // The instrument writes 8-bit text: each byte is one character.
    sRxBuffer += QString::fromLatin1(bytes);
    if (bReadingInput)
        return;

    bReadingInput = true;
    // The size is read again on every turn: a handler may append (nested receive) or empty
    // the buffer (reset after a comm error).
    while (rxPosition < sRxBuffer.size())
        take(sRxBuffer[rxPosition++]);
    sRxBuffer.clear();
    rxPosition = 0;
    bReadingInput = false;
}

void SerialFramer::take(QChar character) {
    if (skippingToLineEnd) {
        skippingToLineEnd = character != u'\r';
        return;
    }
    if (bInRecord) {
        sRecord += character;
        if (character == u'\r') {
            endLine();
        } else if (sRecord.size() > MaxRecordLength) {
            ++overlong;
            startWaiting();
            skippingToLineEnd = true;
        }
        return;
    }
    if (bWaitForStart && character == u' ') {
        sRecord = character;
        bWaitForStart = false;
        bInRecord = true;
    }
}

void SerialFramer::endLine() {
    // The handler gets its own copy: it may reset the framing while it runs.
    const QString line = sRecord;
    onLine(line);
    startWaiting();
}

void SerialFramer::startWaiting() {
    sRecord.clear();
    bWaitForStart = true;
    bInRecord = false;
}

void SerialFramer::ResetReceiveState() {
    sRxBuffer.clear();
    rxPosition = 0;
    startWaiting();
    skippingToLineEnd = false;
    bReadingInput = false;
}
