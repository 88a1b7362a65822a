// The commands of the run table's menus and keys: adding and deleting runs, moving runs
// through the run clipboard, and fetching the weather of a run.
#include "core/AppState.h"
#include "core/Dialogs.h"
#include "core/Hourglass.h"
#include "feed/WeatherLog.h"
#include "racelog/RunCellText.h"
#include "racelog/RunEdits.h"
#include "racelog/RunTable.h"
#include "ui/racelog/RunGrid.h"
#include "ui/racelog/RunGridPrivate.h"

#include <QItemSelectionModel>

namespace {

enum Column { TimeColumn = 1, DateColumn = 2 };

const QString LoggedWeatherTitle = QStringLiteral("Log Weather Import");

} // namespace

// The new run can be the reference run at once; it starts where the user will look at it.
void RunGrid::newRun() {
    const int row = RunEdits::newRun(d->log, QDateTime::currentDateTime());
    setCurrentRunCell(row, 0);
}

// The reference run list loses its last item whatever the answer, and run 1 becomes the
// reference run, with the current cell on it.
void RunGrid::deleteRun() {
    const int row = currentRunRow();
    if (row < 1)
        return;
    const Dialogs::Answer answer =
        Dialogs::Show({QStringLiteral("QUESTION:\r\n  Do you want to delete run# ") +
                           QString::number(row) + QStringLiteral(" ?"),
                       QStringLiteral("Race Log"), Dialogs::Icon::None, Dialogs::Buttons::YesNo,
                       Dialogs::Answer::Yes});
    const bool listShrinks = d->log.content().refRunItems.size() > 1;
    RunEdits::deleteRun(d->log, row, answer == Dialogs::Answer::Yes);
    if (listShrinks)
        setCurrentRunCell(1, 1);
}

// The runs the selection spans when it holds the current cell, else the current run alone.
std::pair<int, int> RunGrid::selectedRuns() const {
    const int row = currentRunRow();
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    if (!selectionModel()->isSelected(currentIndex()) || selected.isEmpty())
        return {row, row};
    int first = row;
    int last = row;
    for (const QModelIndex& cell : selected) {
        first = qMin(first, cell.row() + 1);
        last = qMax(last, cell.row() + 1);
    }
    return {first, last};
}

void RunGrid::cutRun() {
    if (const auto [first, last] = selectedRuns(); first >= 1)
        RunEdits::cutRuns(d->log, first, last, d->state.runClipboard);
}

void RunGrid::copyRun() {
    if (const auto [first, last] = selectedRuns(); first >= 1)
        d->state.runClipboard = RunClipboard::copy(d->table, first, last);
}

void RunGrid::pasteRun() {
    if (const int row = currentRunRow(); row >= 1)
        RunEdits::pasteRuns(d->log, row, d->state.runClipboard);
}

// Whether the feed is alive is not asked: a silent instrument gives its last values, or
// zeros.
void RunGrid::getCurrentWeather() {
    const int row = currentRunRow();
    if (row < 1)
        return;
    RunEdits::importWeather(d->log, row, &d->state.currentWeather, {});
    Dialogs::Inform(QStringLiteral("Weather data imported!"),
                    QStringLiteral("Pellamor Weather Import"), Dialogs::Icon::Information);
}

// The weather log row of the run's minute. A run with no readable time or date is taken as
// made now, and its cell says so from then on, whether weather is found or not.
void RunGrid::getLoggedWeather() {
    const int row = currentRunRow();
    if (row < 1)
        return;
    LoggedWeather found;
    {
        Hourglass busy;
        const QDateTime now = QDateTime::currentDateTime();
        const std::optional<QDateTime> time = RunCellText::Moment(d->table.cell(row, TimeColumn));
        const std::optional<QDateTime> date = RunCellText::Moment(d->table.cell(row, DateColumn));
        RunEdits::RunMoment stamp;
        if (!time)
            stamp.time = now.time();
        if (!date)
            stamp.date = now.date();
        found = FindLoggedWeather(d->state, date.value_or(now).date(), time.value_or(now).time());
        RunEdits::importWeather(d->log, row, found.ABP != 0 ? &found : nullptr, stamp);
    }
    if (found.ABP == 0)
        Dialogs::Inform(QStringLiteral("No weather data was imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Critical);
    else
        Dialogs::Inform(QStringLiteral("Weather data from log imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Information);
}
