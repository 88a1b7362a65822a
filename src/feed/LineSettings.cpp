#include "feed/LineSettings.h"

#include <QStringList>

std::optional<LineSettings> parseLineSettings(const QString& text) {
    const QStringList parts = text.split(u',');
    if (parts.size() != 4)
        return std::nullopt;
    bool baudOk = false, dataOk = false, stopOk = false;
    LineSettings line;
    line.baud = parts[0].trimmed().toInt(&baudOk);
    const QString parity = parts[1].trimmed().toUpper();
    line.dataBits = parts[2].trimmed().toInt(&dataOk);
    line.stopBits = parts[3].trimmed().toInt(&stopOk);
    if (!baudOk || line.baud <= 0 || parity.size() != 1 ||
        !QStringLiteral("NOEMS").contains(parity))
        return std::nullopt;
    if (!dataOk || line.dataBits < 4 || line.dataBits > 8 || !stopOk ||
        (line.stopBits != 1 && line.stopBits != 2))
        return std::nullopt;
    line.parity = parity[0];
    return line;
}
