#pragma once

#include "core/Dialogs.h"

#include <QDate>
#include <QString>
#include <optional>

class RaceLog;

// A race log written into a spreadsheet workbook (.xlsx) made from a template.
//
// With the standard template the runs go into the fixed cells of its run sheet, one sheet
// column per run (run 1 in column 2); with any other template they go into a plain table
// under a row of headings, one sheet row per run and one sheet column per run table column.
// A value meant as a label is always written as text; any other value becomes a number when
// it reads as one and text otherwise. The rest of the template stays as it was.
namespace ExcelExport {

inline const QString StandardTemplateName = QStringLiteral("Bramholdtrack.xlsx");

// The template named in the settings, or the standard one shipped with the program.
QString templatePath();

// Only the end of the path counts: "MyBramholdtrack.xlsx" is the standard template too.
bool isStandardTemplate(const QString& templatePath);

// The save dialogue of the export: it proposes today's date and "log" as the file name and
// starts in the remembered folder or, when none is remembered, in programFolder.
Dialogs::FileRequest saveRequest(const QDate& today, const QString& programFolder);
// The file the export writes: a name typed without an extension gets ".xlsx".
QString withExtension(const QString& chosenPath);

// Writes the log into target, made from the template. The target is replaced only by a
// complete new workbook. nullopt on success, otherwise the reason in a sentence for the user.
std::optional<QString> write(const RaceLog& log, const QString& target,
                             const QString& templatePath);

} // namespace ExcelExport
