#pragma once

#include <QImage>
#include <QString>

// The page's address as a QR code for a phone's camera: black modules on white with the quiet
// border of four modules that readers need, each module `moduleSize` pixels square.
namespace CrewQrCode {

// A null image when the text cannot be encoded.
QImage image(const QString& text, int moduleSize);

} // namespace CrewQrCode
