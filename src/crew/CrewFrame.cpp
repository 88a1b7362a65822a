#include "crew/CrewFrame.h"

#include <QtEndian>

namespace {

constexpr char FinalTextFrame = char(0x81);
// The length fits the second byte up to 125; 126 and 127 say a 16-bit or 64-bit length follows.
constexpr quint64 LongestShortLength = 125;
constexpr char SixteenBitLength = 126;
constexpr char SixtyFourBitLength = 127;

template <typename Length> void appendBigEndian(QByteArray& frame, Length length) {
    const Length wire = qToBigEndian(length);
    frame.append(reinterpret_cast<const char*>(&wire), sizeof(wire));
}

} // namespace

QByteArray CrewFrame::text(const QByteArray& utf8) {
    const auto length = quint64(utf8.size());
    QByteArray frame;
    frame.reserve(utf8.size() + 10);
    frame.append(FinalTextFrame);
    if (length <= LongestShortLength) {
        frame.append(char(length));
    } else if (length <= 0xFFFF) {
        frame.append(SixteenBitLength);
        appendBigEndian(frame, quint16(length));
    } else {
        frame.append(SixtyFourBitLength);
        appendBigEndian(frame, length);
    }
    frame.append(utf8);
    return frame;
}
