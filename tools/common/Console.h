#pragma once

#include <QByteArray>
#include <QString>

// What the companion programs tell the person or the script that started them.
namespace Console {

// One line on standard output, flushed at once: scripts and tests wait for these lines.
void say(const QByteArray& line);

// One line on standard error, behind the program's name.
void complain(const QString& text);

} // namespace Console
