#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

class QIODevice;

// Gathers what a device receives and cuts it into lines that each end in a CR, as the
// instrument and the relay send them.
class CrLineReader {
public:
    explicit CrLineReader(QIODevice& device);

    // Waits until at least this many lines have come; false when they did not in time.
    bool waitForLines(qsizetype count, int timeoutMs = 10000);

    QByteArray received;     // every byte so far
    QList<QByteArray> lines; // the complete lines so far, each with its CR

private:
    void read();

    QIODevice& device;
    QObject context; // ends the connection to the device with the reader
    qsizetype lineStart = 0;
};
