#pragma once

#include "feed/PortLink.h"

#include <QTimer>

// A link in the serial port's place that needs no device: while it is open it hands on a
// line every interval. The built-in simulator and the replay of a recorded feed are such
// links; the line settings play no part in them.
class PacedLink : public PortLink {
    Q_OBJECT
public:
    explicit PacedLink(QObject* parent = nullptr);

    void setInterval(int milliseconds) { timer.setInterval(milliseconds); }

    bool discardInput() override { return true; }
    bool isOpen() const override { return portOpen; }
    void close() override;

protected:
    // The link is open from here on and its lines begin.
    void startPacing();
    // No more lines come, though the link stays open.
    void stopPacing() { timer.stop(); }
    // The line of this interval.
    virtual void tick() = 0;

private:
    QTimer timer;
    bool portOpen = false;
};
