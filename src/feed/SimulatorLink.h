#pragma once

#include "feed/PortLink.h"
#include "feed/SimulatedInstrument.h"

#include <QByteArrayList>
#include <QTimer>

// The instrument built into the program, in the serial port's place: it sends a weather line
// every interval and one more for each poll ("l" and a CR), and keeps the pages ("f", the
// text, a CR) it is sent, so a demonstration runs without the instrument and a test can see
// what the pager sent.
class SimulatorLink : public PortLink {
    Q_OBJECT
public:
    explicit SimulatorLink(SimulatedInstrument::Options options = {}, QObject* parent = nullptr);

    void setInterval(int milliseconds) { timer.setInterval(milliseconds); }
    // Every page received, in order: the text after the "f", as sent, without the CR.
    const QByteArrayList& pages() const { return receivedPages; }

    // Always opens: the line settings play no part.
    bool open(const PortOptions& options) override;
    bool discardInput() override { return true; }
    bool isOpen() const override { return portOpen; }
    bool write(const QByteArray& bytes) override;
    void close() override;

private:
    SimulatedInstrument instrument;
    QTimer timer;
    bool portOpen = false;
    QByteArray command; // received since the last CR
    QByteArrayList receivedPages;

    void sendLine();
    void obey(const QByteArray& received);
};
