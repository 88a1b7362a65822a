#include "exchange/ExcelExport.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "core/ShippedFiles.h"
#include "exchange/Workbook.h"
#include "racelog/RaceLog.h"
#include "racelog/RunTable.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <array>
#include <utility>

namespace ExcelExport {

namespace {

// The standard template's run sheet: the sheet row each run table column goes to. The date,
// time and lane are labels; the weather and timing marks are written as they stand.
struct StandardRow {
    int sheetRow;
    int column;
    bool label;
};
constexpr std::array<StandardRow, 24> StandardRows{{
    {4, 2, true},    // date
    {5, 1, true},    // time
    {6, 3, true},    // lane
    {8, 22, false},  // ABP
    {9, 23, false},  // temperature
    {10, 24, false}, // RH
    {11, 19, false}, // AA
    {12, 21, false}, // VP
    {13, 20, false}, // DA
    {14, 30, false}, // wind direction
    {21, 15, false}, // Timer 1
    {22, 14, false}, // Timer 2
    {23, 16, false}, // shift time
    {26, 5, false},  // delay box
    {27, 4, false},  // RT
    {28, 6, false},  // 60 ft
    {29, 7, false},  // 330 ft
    {30, 8, false},  // 660 ft
    {31, 9, false},  // 660 MPH
    {32, 10, false}, // 1000 ft
    {33, 11, false}, // 1000 MPH
    {34, 12, false}, // 1320 ft
    {35, 13, false}, // 1320 MPH
    {36, 17, false}, // dial-in
}};
constexpr int TrackRow = 3;
constexpr int NotesRow = 38;
constexpr int LogColumn = 2;

// The plain table's headings, each over the sheet column of its run table column. Column 18
// has none.
const std::array<std::pair<int, const char*>, 32> Headings{{
    {1, "Time"},        {2, "Date"},     {3, "Lane"},      {4, "RT"},       {5, "Delay Box"},
    {6, "60 ft"},       {7, "330 ft"},   {8, "660 ft"},    {9, "660 MPH"},  {10, "1000 ft"},
    {11, "1000 MPH"},   {12, "1320 ft"}, {13, "1320 MPH"}, {14, "Timer 2"}, {15, "Timer 1"},
    {16, "Shift Time"}, {17, "Dial-In"}, {19, "AA"},       {20, "DA"},      {21, "VP"},
    {22, "ABP"},        {23, "Temp"},    {24, "RH"},       {25, "AH"},      {26, "GR"},
    {27, "DP"},         {28, "ADR"},     {29, "PA"},       {30, "WD"},      {31, "WS"},
    {32, "WG"},         {33, "AL"},
}};

void writeLabel(Workbook& book, int row, int column, const QString& text) {
    if (text.isEmpty())
        book.clear(row, column);
    else
        book.setText(row, column, text);
}

// A value written as it stands: a number when it reads as one, text otherwise.
void writeValue(Workbook& book, int row, int column, const QString& text) {
    if (const std::optional<double> number = NumberText::toDouble(text))
        book.setNumber(row, column, *number);
    else
        writeLabel(book, row, column, text);
}

void writeStandard(Workbook& book, const RaceLog& log) {
    const RunTable& runs = log.runs();
    writeLabel(book, TrackRow, LogColumn, log.field(RaceLog::Field::RaceTrack));
    for (int run = 1; run < runs.tableRows(); ++run) {
        const int sheetColumn = run + 1;
        for (const StandardRow& entry : StandardRows) {
            const QString text = runs.cell(run, entry.column);
            if (entry.label)
                writeLabel(book, entry.sheetRow, sheetColumn, text);
            else
                writeValue(book, entry.sheetRow, sheetColumn, text);
        }
    }
    writeLabel(book, NotesRow, LogColumn, log.field(RaceLog::Field::Notes));
}

void writePlain(Workbook& book, const RaceLog& log) {
    for (const auto& [column, heading] : Headings)
        book.setText(1, column, QString::fromLatin1(heading));
    const RunTable& runs = log.runs();
    for (int run = 1; run < runs.tableRows(); ++run)
        for (int column = 1; column < RunTable::ColumnCount; ++column)
            writeValue(book, run + 1, column, runs.cell(run, column));
}

} // namespace

Dialogs::FileRequest saveRequest(const QDate& today, const QString& programFolder) {
    Dialogs::FileRequest request;
    request.save = true;
    request.title = QStringLiteral("Save Excel File");
    request.fileName = DateText::fileStamp(today) + QStringLiteral("log.xlsx");
    request.filter = QStringLiteral("Microsoft Excel Files (*.xlsx) |*.xlsx|") +
                     QStringLiteral("All Files (*.*) |*.*|");
    request.filterIndex = 1;
    const QString folder = Registry::get(SettingKeys::FileDialogFolder);
    request.initialFolder = folder == Registry::NoKeyValue ? programFolder : folder;
    return request;
}

QString withExtension(const QString& chosenPath) {
    return QFileInfo(chosenPath).suffix().isEmpty() ? chosenPath + QStringLiteral(".xlsx")
                                                    : chosenPath;
}

QString templatePath() {
    const QString chosen = Registry::get(SettingKeys::MasterTemplate);
    if (chosen != Registry::NoKeyValue && !chosen.isEmpty())
        return chosen;
    return ShippedFiles::find(StandardTemplateName);
}

bool isStandardTemplate(const QString& templatePath) {
    return templatePath.right(StandardTemplateName.size()) == StandardTemplateName;
}

std::optional<QString> write(const RaceLog& log, const QString& target,
                             const QString& templatePath) {
    QFile templateFile(templatePath);
    if (!templateFile.open(QIODevice::ReadOnly))
        return QStringLiteral("The template %1 cannot be read: %2.")
            .arg(templatePath, templateFile.errorString());
    std::optional<Workbook> book = Workbook::fromTemplate(templateFile.readAll());
    if (!book)
        return QStringLiteral("The template %1 is not an Excel workbook (.xlsx).")
            .arg(templatePath);

    if (isStandardTemplate(templatePath))
        writeStandard(*book, log);
    else
        writePlain(*book, log);

    const std::optional<QByteArray> bytes = book->bytes();
    if (!bytes)
        return QStringLiteral("The workbook made from %1 could not be put together.")
            .arg(templatePath);
    // The new workbook goes to a file beside the target and takes its place only when it is
    // complete, so a failed export leaves the old file as it was.
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit())
        return QStringLiteral("%1 could not be written: %2.").arg(target, file.errorString());
    return std::nullopt;
}

} // namespace ExcelExport
