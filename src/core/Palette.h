#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <optional>

// The colours the main window offers for the background of its client area, and the colour
// numbers the settings keep. A colour number holds blue, green and red as one number, red in
// the lowest byte (000080 is dark red). A number whose top byte is 80 names a colour of the
// system instead of a colour of its own.
namespace Palette {

struct Entry {
    QString name;    // the tool's name in the Color menu
    QString caption; // what the menu shows
    quint32 color;   // colour number
};

// The system's desktop colour: "No Fill" leaves the client area to the system.
inline constexpr quint32 DesktopColor = 0x80000001u;
// The colour the client area has before the user picks one: the system's workspace colour.
inline constexpr quint32 WorkspaceColor = 0x8000000Cu;

// The palette, in the order of the menu.
const QList<Entry>& entries();

bool isSystemColor(quint32 color);
// The colour of a number that is not a system colour.
QColor toColor(quint32 color);
// The number of a colour the user picked.
quint32 fromColor(const QColor& color);

// The colour number of a stored value. nullopt when the value is not a whole number, lies
// outside 32 bits, or is no colour (a top byte other than 00 or 80). Negative values are
// taken as the signed form of the same 32 bits, as older settings may hold them.
std::optional<quint32> fromValue(double value);
// The text a colour number is stored as.
QString toText(quint32 color);

} // namespace Palette
