#pragma once

#include "feed/PacedLink.h"
#include "feed/SimulatedInstrument.h"

#include <QByteArrayList>

// The instrument built into the program, in the serial port's place: it sends a weather line
// every interval and one more for each poll ("l" and a CR), and keeps the pages ("f", the
// text, a CR) it is sent, so a demonstration runs without the instrument and a test can see
// what the pager sent.
class SimulatorLink : public PacedLink {
    Q_OBJECT
public:
    explicit SimulatorLink(SimulatedInstrument::Options options = {}, QObject* parent = nullptr);

    // Every page received, in order: the text after the "f", as sent, without the CR.
    const QByteArrayList& pages() const { return receivedPages; }

    // Always opens.
    bool open(const PortOptions& options) override;
    bool write(const QByteArray& bytes) override;

private:
    void tick() override;
    void obey(const QByteArray& received);

    SimulatedInstrument instrument;
    QByteArray command; // received since the last CR
    QByteArrayList receivedPages;
};
