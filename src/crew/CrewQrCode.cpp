#include "crew/CrewQrCode.h"

#include <qrencode.h>

#include <memory>

namespace CrewQrCode {

namespace {

constexpr int QuietModules = 4;

struct QrFree {
    void operator()(QRcode* code) const { QRcode_free(code); }
};

} // namespace

// Medium error correction still reads off a phone screen held at an angle, and keeps an
// address with its code to a small symbol.
QImage image(const QString& text, int moduleSize) {
    const QByteArray bytes = text.toUtf8();
    const std::unique_ptr<QRcode, QrFree> code(
        QRcode_encodeString8bit(bytes.constData(), 0, QR_ECLEVEL_M));
    if (!code)
        return {};
    const int side = code->width + 2 * QuietModules;
    QImage modules(side, side, QImage::Format_RGB32);
    modules.fill(Qt::white);
    for (int row = 0; row < code->width; ++row) {
        for (int column = 0; column < code->width; ++column) {
            // The lowest bit of each byte says whether the module is dark.
            if (code->data[row * code->width + column] & 1)
                modules.setPixel(column + QuietModules, row + QuietModules, qRgb(0, 0, 0));
        }
    }
    // Each module grows to a square of pixels, with no blur between them.
    return modules.scaled(side * moduleSize, side * moduleSize, Qt::IgnoreAspectRatio,
                          Qt::FastTransformation);
}

} // namespace CrewQrCode
