#pragma once

#include <QColor>
#include <QtGlobal>

// Colours of run table cells as the program keeps them: a number in blue-green-red order
// (0xC0FFFF is a light yellow), or, with the top bit set, one of the system's colours
// (0x8000000F is the face of a button), which the view draws from its own palette.
namespace CellColor {

constexpr quint32 WindowBackground = 0x80000005; // a run cell's own background
constexpr quint32 WindowText = 0x80000008;       // a run cell's own text colour
constexpr quint32 ButtonFace = 0x8000000F;       // background of the header row and number column
constexpr quint32 ButtonText = 0x80000012;       // text of the header row and number column
constexpr quint32 Band = 0xC0FFFF;               // every second run row, for reading across
constexpr quint32 ReferenceRun = 0x20CD12;       // the number cell of the reference run (2149650)
constexpr quint32 Link = 0xFF0000;               // the blue of the side panel handle ">>>"

constexpr bool isSystemColor(quint32 value) {
    return (value & 0x80000000u) != 0;
}

// The colour to paint. A system colour gives an invalid QColor: the view's palette decides.
QColor toQColor(quint32 value);

} // namespace CellColor
