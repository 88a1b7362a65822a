#include "core/Palette.h"

#include <cmath>

namespace Palette {

const QList<Entry>& entries() {
    // Both reds and "Violiet" are what users of the program know; they stay as they are.
    static const QList<Entry> entries = {
        {"miNoFill", "No Fill", DesktopColor},
        {"miBlack", "Black", 0x000000},
        {"miGray50", "Gray 50%", 0x808080},
        {"miDarkRed", "Dark Red", 0x000080},
        {"miDarkYellow", "Dark Yellow", 0x008080},
        {"miGreen", "Green", 0x008000},
        {"miTeal", "Teal", 0x808000},
        {"miDarkBlue", "Dark Blue", 0x800000},
        {"miVioliet", "Violiet", 0x800080},
        {"miWhite", "White", 0xFFFFFF},
        {"miGray25", "Gray 25%", 0xC0C0C0},
        {"miRed", "Red", 0x0000C0},
        {"miYellow", "Yellow", 0x00FFFF},
        {"miBrightGreen", "Bright Green", 0x00FF00},
        {"miTurquoise", "Turquoise", 0xFFFF00},
        {"miBlue", "Blue", 0xC00000},
        {"miPink", "Pink", 0xC000C0},
    };
    return entries;
}

bool isSystemColor(quint32 color) {
    return (color & 0xFF000000u) == 0x80000000u;
}

QColor toColor(quint32 color) {
    return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

quint32 fromColor(const QColor& color) {
    const QColor rgb = color.toRgb();
    return quint32(rgb.red()) | quint32(rgb.green()) << 8 | quint32(rgb.blue()) << 16;
}

std::optional<quint32> fromValue(double value) {
    if (value != std::floor(value) || value < -2147483648.0 || value > 4294967295.0)
        return std::nullopt;
    const quint32 color = value < 0 ? quint32(qint32(value)) : quint32(value);
    const quint32 topByte = color >> 24;
    if (topByte != 0x00 && topByte != 0x80)
        return std::nullopt;
    return color;
}

QString toText(quint32 color) {
    return QString::number(color);
}

} // namespace Palette
