// The commands of the run table's menus and keys: adding and deleting runs, moving a run
// through the run clipboard, and fetching the weather of a run.
#include "core/AppState.h"
#include "core/DateText.h"
#include "core/Dialogs.h"
#include "core/Hourglass.h"
#include "feed/WeatherLog.h"
#include "racelog/RunCellText.h"
#include "racelog/RunClipboard.h"
#include "racelog/RunRows.h"
#include "racelog/RunTable.h"
#include "racelog/RunWeather.h"
#include "ui/racelog/RunGrid.h"
#include "ui/racelog/RunGridPrivate.h"

#include <QComboBox>

namespace {

enum Column { TimeColumn = 1, DateColumn = 2 };

const QString LoggedWeatherTitle = QStringLiteral("Log Weather Import");

} // namespace

// The new run can be the reference run at once; it starts where the user will look at it.
void RunGrid::newRun() {
    const int row = RunRows::appendRun(d->table, QDateTime::currentDateTime());
    d->cboRefRun.addItem(QString::number(d->cboRefRun.count() + 1));
    setCurrentRunCell(row, 0);
}

// The reference run list loses its last item whatever the answer, and run 1 becomes the
// reference run: on No the list is then one short of the runs until the next New Run or load
// brings the missing number back.
void RunGrid::deleteRun() {
    const int row = currentRunRow();
    if (row < 1)
        return;
    const Dialogs::Answer answer =
        Dialogs::Show({QStringLiteral("QUESTION:\r\n  Do you want to delete run# ") +
                           QString::number(row) + QStringLiteral(" ?"),
                       QStringLiteral("Race Log"), Dialogs::Icon::None, Dialogs::Buttons::YesNo,
                       Dialogs::Answer::Yes});
    if (answer == Dialogs::Answer::Yes)
        RunRows::deleteRun(d->table, row);
    if (d->cboRefRun.count() > 1) {
        d->cboRefRun.removeItem(d->cboRefRun.count() - 1);
        moveReferenceToFirstRun();
    }
}

// A new index is handled by the list's own signal; when run 1 was the reference already, the
// window is asked to mark it again, since its row may have moved.
void RunGrid::moveReferenceToFirstRun() {
    if (d->cboRefRun.currentIndex() != 0)
        d->cboRefRun.setCurrentIndex(0);
    else
        emit referenceRunRequested(1);
}

void RunGrid::cutRun() {
    if (const int row = currentRunRow(); row >= 1)
        RunClipboard::cut(d->table, row, d->state.runClipboard);
}

void RunGrid::copyRun() {
    if (const int row = currentRunRow(); row >= 1)
        RunClipboard::copy(d->table, row, d->state.runClipboard);
}

void RunGrid::pasteRun() {
    if (const int row = currentRunRow(); row >= 1)
        RunClipboard::paste(d->table, row, d->state.runClipboard);
}

// Whether the feed is alive is not asked: a silent instrument gives its last values, or
// zeros.
void RunGrid::getCurrentWeather() {
    const int row = currentRunRow();
    if (row < 1)
        return;
    WriteRunWeather(d->table, row, d->state.CurrentWeather);
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
        RunTable& table = d->table;
        const std::optional<QDateTime> time =
            RunCellText::Moment(table.TextMatrix(row, TimeColumn));
        if (!time)
            table.setTextMatrix(row, TimeColumn, DateText::TimeText(now.time()));
        const std::optional<QDateTime> date =
            RunCellText::Moment(table.TextMatrix(row, DateColumn));
        if (!date)
            table.setTextMatrix(row, DateColumn, DateText::RunDateText(now.date()));
        found = FindLoggedWeather(d->state, date.value_or(now).date(), time.value_or(now).time());
        if (found.ABP != 0)
            WriteRunWeather(table, row, found);
    }
    if (found.ABP == 0)
        Dialogs::Inform(QStringLiteral("No weather data was imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Critical);
    else
        Dialogs::Inform(QStringLiteral("Weather data from log imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Information);
}
