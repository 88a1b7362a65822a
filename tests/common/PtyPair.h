#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// Two pseudo-terminals joined back to back by socat: what is written to one end is read at
// the other, as over a null-modem cable. One end stands for the program's COM port, the
// other for the instrument.
class PtyPair {
public:
    PtyPair();
    ~PtyPair();
    PtyPair(const PtyPair&) = delete;
    PtyPair& operator=(const PtyPair&) = delete;

    // False when socat did not come up.
    bool isReady() const { return ready; }
    QString portEnd() const { return dir.path() + QStringLiteral("/port"); }
    QString instrumentEnd() const { return dir.path() + QStringLiteral("/instrument"); }

    // Ends socat: both devices vanish, as an unplugged adapter does.
    void unplug();
    // Starts socat again on the same two names, as an adapter plugged back in; false when it
    // did not come up.
    bool plugIn();

private:
    QTemporaryDir dir;
    QProcess socat;
    bool ready = false;
};
