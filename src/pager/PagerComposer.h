#pragma once

#include "core/Dialogs.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTime>
#include <optional>

// The pages the team's pager receives through the instrument: the clock time, the
// predictions of the logs that take part, and the present weather, on one line. Also the
// other texts the program writes to the instrument, byte for byte.
namespace PagerComposer {

// One open race log as the pager sees it.
struct PagerEntry {
    bool inPage = false;  // the log takes part in the page
    QString pagerMessage; // its last published prediction, empty before the first
};
// The race log slots in order; an empty slot is nullopt.
using PagerSlots = QList<std::optional<PagerEntry>>;

// How old the weather of a page is: live, or the last reading of a feed that went quiet.
enum class Weather { Live, Old };

// "02:35pm RaceLog# 1> ET: 9.5041 ... ABP=29.92 Temp=72.5": the time, then a blank and the
// message of every taking part log in slot order, then a blank and the weather. A page on old
// weather starts "OLD WX " ("OLD WX 02:35pm RaceLog# 1> ET: 9.5041 ABP=29.92 ..."): the first
// thing the team reads, even on a page that carries no weather, so nobody races on it.
QString pageText(const QTime& now, const PagerSlots& raceLogs, const QString& statusLine,
                 Weather weather = Weather::Live);

// What goes on the serial line; every command ends in a carriage return, no line feed.
QByteArray pageCommand(const QString& pageText);  // "f" and the page, no blank
QByteArray customCommand(const QString& message); // "f " and the user's text
QByteArray testCommand();                         // the fixed test page
QByteArray linkCommand();                         // "l", the link keep-alive

// The boxes of the two hand-sent commands when the serial port is closed.
Dialogs::Message customPortClosedMessage();
Dialogs::Message testPortClosedMessage();

// More than two logs paging at once can lose messages on the way to the pager: counted
// after a click changed a log's box, three or more taking part call for this warning.
std::optional<Dialogs::Message> pagerPredictionsWarning(const PagerSlots& raceLogs);

} // namespace PagerComposer
