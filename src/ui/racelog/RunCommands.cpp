#include "ui/racelog/RunCommands.h"

#include "core/Dialogs.h"
#include "core/Hourglass.h"
#include "feed/WeatherLog.h"
#include "racelog/RaceLog.h"
#include "racelog/RunCellText.h"
#include "racelog/RunEdits.h"

namespace RunCommands {

namespace {

enum Column { TimeColumn = 1, DateColumn = 2 };

const QString LoggedWeatherTitle = QStringLiteral("Log Weather Import");

} // namespace

std::optional<int> deleteRun(RaceLog& log, int row) {
    const Dialogs::Answer answer =
        Dialogs::Show({QStringLiteral("QUESTION:\r\n  Do you want to delete run# ") +
                           QString::number(row) + QStringLiteral(" ?"),
                       QStringLiteral("Race Log"), Dialogs::Icon::None, Dialogs::Buttons::YesNo,
                       Dialogs::Answer::Yes});
    const bool listShrinks = log.content().refRunItems.size() > 1;
    RunEdits::deleteRun(log, row, answer == Dialogs::Answer::Yes);
    return listShrinks ? std::optional(1) : std::nullopt;
}

void importCurrentWeather(RaceLog& log, int row, const WeatherRecord& live) {
    RunEdits::importWeather(log, row, &live, {});
    Dialogs::Inform(QStringLiteral("Weather data imported!"),
                    QStringLiteral("Pellamor Weather Import"), Dialogs::Icon::Information);
}

void importLoggedWeather(RaceLog& log, int row, AppState& state) {
    LoggedWeather found;
    {
        Hourglass busy;
        const QDateTime now = QDateTime::currentDateTime();
        const RunTable& table = log.runs();
        const std::optional<QDateTime> time = RunCellText::Moment(table.cell(row, TimeColumn));
        const std::optional<QDateTime> date = RunCellText::Moment(table.cell(row, DateColumn));
        RunEdits::RunMoment stamp;
        if (!time)
            stamp.time = now.time();
        if (!date)
            stamp.date = now.date();
        found = FindLoggedWeather(state, date.value_or(now).date(), time.value_or(now).time());
        RunEdits::importWeather(log, row, found.ABP != 0 ? &found : nullptr, stamp);
    }
    if (found.ABP == 0)
        Dialogs::Inform(QStringLiteral("No weather data was imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Critical);
    else
        Dialogs::Inform(QStringLiteral("Weather data from log imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Information);
}

} // namespace RunCommands
