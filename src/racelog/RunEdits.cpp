#include "racelog/RunEdits.h"

#include "core/DateText.h"
#include "core/WeatherRecord.h"
#include "racelog/ColumnTable.h"
#include "racelog/RaceLog.h"
#include "racelog/RunRows.h"
#include "racelog/RunTimeSlip.h"
#include "racelog/RunWeather.h"

namespace RunEdits {

namespace {

enum Column { TimeColumn = 1, DateColumn = 2 };

// "Run 4" for one run, "3 Runs" for more.
QString runsText(const QString& command, int count, int firstRow) {
    return count == 1 ? QStringLiteral("%1 Run %2").arg(command).arg(firstRow)
                      : QStringLiteral("%1 %2 Runs").arg(command).arg(count);
}

// A run added by a command can be chosen as the reference run at once.
int addRun(RaceLogData& log, const std::function<int(RunTable&)>& add) {
    const int row = add(log.grid);
    log.refRunItems << QString::number(log.refRunItems.size() + 1);
    return row;
}

} // namespace

void editCell(RaceLog& log, int row, int column, const QString& text) {
    if (column < 0 || column >= ColumnTable::Count)
        return;
    log.changeCell(QStringLiteral("Edit ") + ColumnTable::Columns[column].caption.toString(), row,
                   column, text);
}

int newRun(RaceLog& log, const QDateTime& now) {
    int row = 0;
    log.change(QStringLiteral("New Run"), [&](RaceLogData& data) {
        row = addRun(data, [&now](RunTable& table) { return RunRows::appendRun(table, now); });
    });
    return row;
}

void deleteRun(RaceLog& log, int row, bool confirmed) {
    const QString text =
        confirmed ? QStringLiteral("Delete Run %1").arg(row) : QStringLiteral("Reference Run 1");
    log.change(text, [&](RaceLogData& data) {
        if (confirmed)
            RunRows::deleteRun(data.grid, row);
        if (data.refRunItems.size() > 1) {
            data.refRunItems.removeLast();
            data.refRunIndex = 0;
            data.grid.markReferenceRun(1);
        }
    });
}

void cutRuns(RaceLog& log, int firstRow, int lastRow, RunClipboard::Runs& clipboard) {
    log.change(
        runsText(QStringLiteral("Cut"), lastRow - firstRow + 1, firstRow),
        [&](RaceLogData& data) { clipboard = RunClipboard::cut(data.grid, firstRow, lastRow); });
}

void pasteRuns(RaceLog& log, int row, const RunClipboard::Runs& clipboard) {
    if (clipboard.isEmpty())
        return;
    const QString text = clipboard.size() == 1
                             ? QStringLiteral("Paste Run")
                             : QStringLiteral("Paste %1 Runs").arg(clipboard.size());
    log.change(text, [&](RaceLogData& data) {
        while (data.grid.tableRows() < row + clipboard.size()) {
            addRun(data, [](RunTable& table) {
                const int added = table.addRun();
                table.paintRowBand(added);
                return added;
            });
        }
        RunClipboard::paste(data.grid, row, clipboard);
    });
}

void importWeather(RaceLog& log, int row, const WeatherRecord* weather, const RunMoment& stamp) {
    log.change(QStringLiteral("Import Weather"), [&](RaceLogData& data) {
        if (stamp.time)
            data.grid.setCell(row, TimeColumn, DateText::timeText(*stamp.time));
        if (stamp.date)
            data.grid.setCell(row, DateColumn, DateText::runDateText(*stamp.date));
        if (weather)
            writeRunWeather(data.grid, row, *weather);
    });
}

void importTimeSlip(RaceLog& log, int row, const RunTimeSlip* slip, const WeatherRecord* weather,
                    const RunMoment& stamp) {
    log.change(QStringLiteral("Get iCard && Weather"), [&](RaceLogData& data) {
        if (stamp.time)
            data.grid.setCell(row, TimeColumn, DateText::timeText(*stamp.time));
        if (stamp.date)
            data.grid.setCell(row, DateColumn, DateText::runDateText(*stamp.date));
        if (slip)
            writeRunTimeSlip(data.grid, row, *slip);
        if (weather)
            writeRunWeather(data.grid, row, *weather);
    });
}

void completeRun(RaceLog& log, int row, int column, const QString& finish, const QString& notes) {
    log.change(QStringLiteral("Complete Run %1").arg(row), [&](RaceLogData& data) {
        data.grid.setCell(row, column, finish);
        data.notes = notes;
    });
}

} // namespace RunEdits
