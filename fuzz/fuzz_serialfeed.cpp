// Random bytes in random chunks through the serial framing and the line parser, with the
// handler now and then feeding bytes or a reset from inside, as a handler that lets events run
// can. Also the same bytes through the TCP line splitter. The buffers must stay bounded, every
// line must be framed as a line, and reading a line twice must give the same reading.
#include "feed/SerialFramer.h"
#include "feed/TcpLineSplitter.h"
#include "feed/WeatherParser.h"

#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

void checkLine(const QString& line, qsizetype maximum) {
    require(line.endsWith(u'\r'));
    require(line.size() <= maximum + 1);
    WeatherRecord once;
    parseWeatherLine(line, once);
    WeatherRecord twice = once;
    parseWeatherLine(line, twice);
    require(once == twice);
    require(once.Time.isEmpty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    SerialFramer* self = nullptr;
    int nested = 0;
    SerialFramer framer([&](const QString& line) {
        require(line.startsWith(u' '));
        checkLine(line, SerialFramer::MaxRecordLength);
        switch (input.ConsumeIntegralInRange<int>(0, 7)) {
        case 0:
            if (nested++ < 8)
                self->receive(QByteArray::fromStdString(input.ConsumeRandomLengthString(64)));
            break;
        case 1:
            self->resetReceiveState();
            break;
        default:
            break;
        }
    });
    self = &framer;
    TcpLineSplitter splitter;

    while (input.remaining_bytes() > 0) {
        const size_t length = input.ConsumeIntegralInRange<size_t>(1, 512);
        const std::string chunk = input.ConsumeBytesAsString(length);
        const QByteArray bytes = QByteArray::fromStdString(chunk);
        framer.receive(bytes);
        require(framer.unreadLength() == 0);
        require(framer.recordLength() <= SerialFramer::MaxRecordLength);
        require(framer.inRecord() != framer.waitingForStart());
        for (const QString& line : splitter.take(bytes))
            checkLine(line, TcpLineSplitter::MaxPendingLength);
        require(splitter.pendingLength() <= TcpLineSplitter::MaxPendingLength);
    }
    return 0;
}
