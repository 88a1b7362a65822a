#include "feed/TcpLineSplitter.h"

QStringList TcpLineSplitter::take(const QByteArray& chunk) {
    QStringList lines;
    for (const char byte : chunk) {
        // The relay sends the instrument's 8-bit text as it came: each byte is a character.
        const QChar character = QLatin1Char(byte);
        const bool lineFeedOfLineEnd = afterCr && character == u'\n';
        afterCr = character == u'\r';
        if (lineFeedOfLineEnd)
            continue;
        if (character == u'\r') {
            if (!dropping)
                lines.append(pending + character);
            pending.clear();
            dropping = false;
        } else if (!dropping) {
            pending += character;
            if (pending.size() > MaxPendingLength) {
                pending.clear();
                dropping = true;
                ++overlong;
            }
        }
    }
    return lines;
}

void TcpLineSplitter::reset() {
    pending.clear();
    dropping = false;
    afterCr = false;
}
