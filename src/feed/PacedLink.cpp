#include "feed/PacedLink.h"

PacedLink::PacedLink(QObject* parent) : PortLink(parent) {
    timer.setInterval(2000);
    connect(&timer, &QTimer::timeout, this, [this] { tick(); });
}

void PacedLink::startPacing() {
    portOpen = true;
    timer.start();
    emit opened();
}

void PacedLink::close() {
    if (!portOpen)
        return;
    timer.stop();
    portOpen = false;
    emit closed();
}
