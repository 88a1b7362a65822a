#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// TCP keeps no message boundaries: the relay's lines can arrive two in one chunk or one cut
// across two. This puts them back together, cutting at each CR and keeping it, so every
// line reaches the parser whole and alone. An LF right after a CR belongs to that line's
// end, so a relay that ends its lines with CR LF feeds the same lines.
class TcpLineSplitter {
public:
    // A relay that never sends a CR must not grow the pending text without end: a line that
    // holds more than this many characters before its CR is dropped, up to and with its CR.
    static constexpr qsizetype MaxPendingLength = 4096;

    // The lines that this chunk completes, in order, each ending in its CR. What follows the
    // last CR waits for the next chunk.
    QStringList take(const QByteArray& chunk);

    qsizetype pendingLength() const { return pending.size(); }
    // Lines dropped for being longer than MaxPendingLength.
    quint64 overlongLines() const { return overlong; }
    // Forgets the line in hand: the connection it came on is gone.
    void reset();

private:
    QString pending;       // the start of a line whose CR has not arrived yet
    bool dropping = false; // the line in hand grew too long; skip to its CR
    bool afterCr = false;  // the last character was a CR
    quint64 overlong = 0;
};
