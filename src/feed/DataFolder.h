#pragma once

#include <QString>

// The answer of dataFolder when it has no folder to give.
inline const QString FolderNotValid = QStringLiteral("Folder Not Valid");

// The program's folder under the machine's shared data folder, for instance
// dataFolder("\\Tarnwick"); on Linux $XDG_DATA_HOME/Tarnwick. The last level is created
// when it does not exist. An empty argument, or a folder that cannot be made, answers
// FolderNotValid; callers then use the application folder.
QString dataFolder(const QString& subFolder);
