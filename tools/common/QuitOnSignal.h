#pragma once

#include <QObject>

class QSocketNotifier;

// Ends the event loop on SIGINT or SIGTERM, so that the program leaves by its normal way out
// and cleans up behind itself (closes its connections, removes its links). A signal handler
// may do next to nothing, so it only writes a byte into a pipe, and the event loop, which
// watches the other end, quits with status 0.
class QuitOnSignal : public QObject {
public:
    explicit QuitOnSignal(QObject* parent = nullptr);
    ~QuitOnSignal() override;

private:
    QSocketNotifier* notifier = nullptr;
};
