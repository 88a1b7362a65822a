#pragma once

#include <QString>

// The files that come with the program, such as the standard spreadsheet template.
//
// In the build tree they lie beside the program; once installed under a prefix the program is
// <prefix>/bin/tarnwick and they lie in <prefix>/share/tarnwick. The place beside the program
// is asked first, so a copy put there (as the Windows build ships it) still wins.
namespace ShippedFiles {

// The file of that name beside the program in programFolder or, when there is none there, in
// the shared data folder of its prefix. When neither exists, the place beside the program, so
// that a message about a missing file names where it was looked for first.
QString find(const QString& programFolder, const QString& name);

// The same for this running program.
QString find(const QString& name);

} // namespace ShippedFiles
