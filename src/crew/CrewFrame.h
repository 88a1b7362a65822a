#pragma once

#include <QByteArray>

// A message of the live socket as it goes on the wire: one final, unmasked text frame, made
// once for every phone. A server never masks what it sends, so the same bytes suit them all.
namespace CrewFrame {

QByteArray text(const QByteArray& utf8);

} // namespace CrewFrame
