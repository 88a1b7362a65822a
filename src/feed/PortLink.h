#pragma once

#include "feed/InstrumentLink.h"
#include "feed/LineSettings.h"

#include <QString>

// What a link in the serial port's place is opened with.
struct PortOptions {
    QString device; // the system's name for the port: "COM3", "/dev/ttyUSB0"
    LineSettings line;
    Handshaking handshaking = Handshaking::None;
};

// A link that stands where the instrument's serial port stands: opened with the port's
// settings, polled with "l" and a CR, and sent the pager's pages. The real serial port is
// one; the simulator and the replay of a recorded feed take its place for demos and tests.
class PortLink : public InstrumentLink {
    Q_OBJECT
public:
    using InstrumentLink::InstrumentLink;

    // False when the port can't be opened; the link then stays closed and reports nothing.
    virtual bool open(const PortOptions& options) = 0;
    // Drops bytes that arrived and were not yet handed on; false when the port refuses.
    virtual bool discardInput() = 0;
};
