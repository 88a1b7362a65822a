#pragma once

#include "core/Dialogs.h"

#include <QDate>
#include <QString>

// The file dialogs of race logs: what they show, where they start, and the folder they
// remember. Open and save share one remembered folder, the file dialog folder setting.
namespace RaceLogFileRequests {

// "Tarnwick Race Log Files (*.trl) |*.trl|All Files (*.*) |*.*|"
QString filter();

// The save dialogue of a log with the given caption. It proposes today's date, then the race
// track if there is one, as the file name, and starts in the remembered folder or, when none
// is remembered, in programFolder.
Dialogs::FileRequest saveRequest(const QString& caption, const QString& raceTrack,
                                 const QDate& today, const QString& programFolder);
// The open dialogue; without a remembered folder it starts where the dialog likes.
Dialogs::FileRequest openRequest();

// The file a save writes: a name typed without an extension gets ".trl", as the filter says.
Dialogs::FileChoice withExtension(const Dialogs::FileChoice& chosen);

// Keeps the folder of a chosen file for the next dialog.
void rememberFolder(const QString& chosenPath);

// The last three characters of a file name, whatever they are ("report.pdf" -> "pdf").
QString fileExtension(const QString& name);

} // namespace RaceLogFileRequests
