#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

// Cuts the instrument's serial byte stream into lines. A line starts at a space and ends at a
// CR, both kept; whatever comes before the space that starts a line (a line feed, noise
// after a reconnect) is dropped.
//
// A handler that lets pending events run can bring more bytes in while a line is being
// handled. Such a nested receive only appends to the buffer; the loop that is already
// running picks the bytes up, so lines are handled one at a time and in order.
class SerialFramer {
public:
    // Called once for each complete line, leading space and CR included.
    using LineHandler = std::function<void(const QString& line)>;

    // A feed that never sends a CR must not grow the line without end: a line that holds
    // more than this many characters before its CR is dropped whole, up to and with its CR,
    // and counted. No tail of it is ever taken for a line.
    static constexpr qsizetype MaxRecordLength = 4096;

    explicit SerialFramer(LineHandler onLine);

    void receive(const QByteArray& bytes);

    // Loses the partial line and every buffered byte and waits for the next space. Used
    // after the port starts and after a comm error.
    void resetReceiveState();

    // The state, for tests and for checks that the buffers stay bounded.
    bool waitingForStart() const { return skippingToStart; }
    bool inRecord() const { return collecting; }
    // Lines dropped for being longer than MaxRecordLength.
    quint64 overlongLines() const { return overlong; }
    qsizetype recordLength() const { return pendingLine.size(); }
    qsizetype unreadLength() const { return unread.size() - rxPosition; }

private:
    void take(QChar character);
    void endLine();
    void startWaiting();

    LineHandler onLine;
    QString unread;                 // bytes received and not yet examined, from rxPosition on
    qsizetype rxPosition = 0;       // the next character of unread to examine
    QString pendingLine;            // the line being put together
    bool skippingToStart = true;    // dropping characters until a space
    bool collecting = false;        // adding characters to pendingLine until a CR
    bool readingInput = false;      // a receive further up the stack is in its loop
    bool skippingToLineEnd = false; // the line in hand grew too long; dropped up to its CR
    quint64 overlong = 0;
};
