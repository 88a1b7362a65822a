#include "racelog/CellColor.h"

namespace CellColor {

QColor toQColor(quint32 value) {
    if (isSystemColor(value))
        return QColor();
    return QColor(int(value & 0xFF), int((value >> 8) & 0xFF), int((value >> 16) & 0xFF));
}

} // namespace CellColor
