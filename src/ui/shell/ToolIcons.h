#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>

// The pictures of the tools. A tool whose command the freedesktop icon naming has a name for
// shows the desktop theme's icon of that name; every tool with a picture also has one of the
// program's own, drawn for it, which shows where the theme has none or there is no theme.
namespace ToolIcons {

// The tools that have a picture, in the order of the tool bar.
QStringList tools();

// The freedesktop name of the tool's icon; empty when the naming has none for its command.
QString themeName(const QString& tool);

// The program's own drawing of the tool, a Qt resource.
QString ownPicture(const QString& tool);

// The tool's icon: the theme's, or else the program's own; a null icon for a tool without one.
QIcon icon(const QString& tool);

// The program's icon, which every window and dialog shows in its title bar.
QIcon programIcon();

} // namespace ToolIcons
