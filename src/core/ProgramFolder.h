#pragma once

#include <QString>

// Where the program puts or looks for the user's files when nothing better is known: the save
// dialogs that have no remembered folder, and the weather log when its data folder can't be
// made. That is the program's own folder, as the teams know it, while it can be written; the
// folder of an installed program (/usr/bin) cannot, and the user's documents folder serves.
namespace ProgramFolder {

// programFolder when it is a folder that can be written, else the user's documents folder,
// else the home folder.
QString forUserFiles(const QString& programFolder);

// The same for this running program.
QString forUserFiles();

} // namespace ProgramFolder
