#pragma once

#include "feed/InstrumentLink.h"

class QSocketNotifier;

// The simulator's end of a pseudo-terminal pair, standing in for the instrument's serial
// cable. The terminal end is reached through a symbolic link at a path of the user's
// choosing, which Tarnwick opens like any serial port; the link goes away with the pair.
class PtyLink : public InstrumentLink {
public:
    explicit PtyLink(const QString& linkPath, QObject* parent = nullptr);
    ~PtyLink() override;

    // Opens the pair and makes the link; emits opened(), or errorOccurred() when it fails.
    void open();

    bool isOpen() const override { return controller >= 0; }
    bool write(const QByteArray& bytes) override;
    void close() override;

private:
    void readAvailable();
    void release();

    QString linkPath;
    QString terminalPath;
    int controller = -1; // the simulator's side
    int terminal = -1;   // held open so the pair lives while no program has it open
    QSocketNotifier* notifier = nullptr;
};
