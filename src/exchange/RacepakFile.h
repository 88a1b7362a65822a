#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <optional>

class RunTable;

// The hand-over file of the Racepak data logger software: the weather of one run, which that
// software reads from a fixed place. The file holds one record and each hand-over replaces it.
//
// Two lines, each ended by CR LF, fields separated by a comma and a blank. The first names the
// fields; the second holds the moment of the hand-over ("MM/dd/yyyy hh:mm:ss", not the run's
// time), the run's weather cells as they are written in the run table, the correction factor
// worked out from its Temp, ABP and VP, and two fields the program does not measure (dry
// barometer, wet bulb temperature), always 0.
namespace RacepakFile {

inline const QString FileName = QStringLiteral("zorvaneracepak.dat");

// The folder the file goes to: the Racepak folder setting when there is one; otherwise
// Zorvane\Racepak in the program files folder on Windows, and
// $XDG_DATA_HOME/Zorvane/Racepak elsewhere. Empty when there is no folder to give. Nothing is
// created here.
QString folder();

// The correction factor of a run rounded to 4 decimals and written in the general number
// form ("1", "1.0123"). nullopt when Temp, ABP or VP is not a number or the factor cannot be
// worked out (ABP of 0, ABP equal to VP).
std::optional<QString> correctionFactorText(const RunTable& runs, int row);

// The two lines for a row of the run table at a moment. nullopt when the row gives no factor.
std::optional<QByteArray> contents(const RunTable& runs, int row, const QDateTime& now);

// Writes the file for a row into folder(), creating the folders that are missing. The old file
// is replaced only by a complete new one: a row without a factor, a folder that cannot be made
// or a write that fails leave it as it was, and answer false.
bool write(const RunTable& runs, int row, const QDateTime& now);

} // namespace RacepakFile
