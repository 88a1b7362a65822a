#include "ui/racelog/RunCommands.h"

#include "core/DateText.h"
#include "core/Dialogs.h"
#include "core/Hourglass.h"
#include "exchange/TimeSlip.h"
#include "feed/WeatherLog.h"
#include "racelog/RaceLog.h"
#include "racelog/RunCellText.h"
#include "racelog/RunEdits.h"

namespace RunCommands {

namespace {

enum Column { TimeColumn = 1, DateColumn = 2 };

const QString LoggedWeatherTitle = QStringLiteral("Log Weather Import");

// A record of the receiver's log as the run takes it. The record was matched by its run time,
// so that time is readable.
RunTimeSlip runSlip(const QStringList& record) {
    RunTimeSlip slip;
    if (const auto moment = DateText::parse(record[SlipRunTime]))
        slip.time = moment->time.value_or(QTime(0, 0));
    slip.lane = record[SlipLane];
    for (const TimeSlipField field : {SlipReactionTime, Slip60ft, Slip330ft, Slip660ft, Slip660Mph,
                                      Slip1000ft, Slip1000Mph, Slip1320ft, Slip1320Mph})
        slip.timing << record[field];
    return slip;
}

void tellLoggedWeather(bool found) {
    if (found)
        Dialogs::inform(QStringLiteral("Weather data from log imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Information);
    else
        Dialogs::inform(QStringLiteral("No weather data was imported!"), LoggedWeatherTitle,
                        Dialogs::Icon::Critical);
}

} // namespace

std::optional<int> deleteRun(RaceLog& log, int row) {
    const Dialogs::Answer answer =
        Dialogs::show({QStringLiteral("QUESTION:\r\n  Do you want to delete run# ") +
                           QString::number(row) + QStringLiteral(" ?"),
                       QStringLiteral("Race Log"), Dialogs::Icon::None, Dialogs::Buttons::YesNo,
                       Dialogs::Answer::Yes});
    const bool listShrinks = log.content().refRunItems.size() > 1;
    RunEdits::deleteRun(log, row, answer == Dialogs::Answer::Yes);
    return listShrinks ? std::optional(1) : std::nullopt;
}

void importCurrentWeather(RaceLog& log, int row, const WeatherRecord& live) {
    RunEdits::importWeather(log, row, &live, {});
    Dialogs::inform(QStringLiteral("Weather data imported!"),
                    QStringLiteral("Pellamor Weather Import"), Dialogs::Icon::Information);
}

void importLoggedWeather(RaceLog& log, int row, WeatherLog& weatherLog) {
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
        found = weatherLog.find(date.value_or(now).date(), time.value_or(now).time());
        RunEdits::importWeather(log, row, found.ABP != 0 ? &found : nullptr, stamp);
    }
    tellLoggedWeather(found.ABP != 0);
}

void importTimeSlip(RaceLog& log, int row, WeatherLog& weatherLog) {
    const QString carNumber = log.field(RaceLog::Field::CarNumber);
    if (carNumber.isEmpty()) {
        Dialogs::inform(QStringLiteral("You must have a car number entered for this feature!"),
                        QStringLiteral("Tarnwick - iCard Import"), Dialogs::Icon::Information);
        return;
    }
    const QDateTime now = QDateTime::currentDateTime();
    const RunTable& table = log.runs();
    const std::optional<QDateTime> time = RunCellText::Moment(table.cell(row, TimeColumn));
    const std::optional<QDateTime> date = RunCellText::Moment(table.cell(row, DateColumn));
    const QDate runDate = date.value_or(now).date();
    // A run taken as made now is dated at once; that date stays whatever the search finds.
    RunEdits::RunMoment stamp;
    if (!time)
        stamp.date = runDate;

    TimeSlipLog slips;
    const TimeSlipSearch search =
        findTimeSlip(slips, QDateTime(runDate, time.value_or(now).time()), carNumber);
    if (search.load == TimeSlipLoad::Unreadable) {
        const TimeSlipMessage unreadable = timeSlipLogUnreadable();
        Dialogs::inform(unreadable.text, unreadable.title, Dialogs::Icon::Critical);
    }
    if (search.row < 0) {
        RunEdits::importTimeSlip(log, row, nullptr, nullptr, stamp);
        Dialogs::inform(QStringLiteral("No iCard information was imported!"),
                        QStringLiteral("iCard + Log Weather Import"), Dialogs::Icon::Critical);
        return;
    }

    // The weather is that of the slip's minute on the run's day, as the logged weather
    // command would read it from the cells the slip has just filled.
    const RunTimeSlip slip = runSlip(slips.rows[search.row]);
    LoggedWeather found;
    {
        Hourglass busy;
        if (!date)
            stamp.date = runDate;
        found = weatherLog.find(runDate, slip.time);
        RunEdits::importTimeSlip(log, row, &slip, found.ABP != 0 ? &found : nullptr, stamp);
    }
    tellLoggedWeather(found.ABP != 0);
}

} // namespace RunCommands
