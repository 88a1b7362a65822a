#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>

class PublishedPrediction;
class WeatherStation;

// One message of the live socket: everything a phone shows, made from what the station holds
// and the logs published, never worked out again. In JSON:
//   status      {live, text}: the status line, or "No weather for N s" while the feed is stale
//   quantities  the fifteen quantities in the instrument's order, each {name, label, value}
//   logs        the open logs in slot order, each with its name (page identifier, or
//               "Race Log# N"), its published prediction and the inputs it stands on
//   time        when the message was made
namespace CrewSnapshot {

// When each log's prediction was last published; a log missing here has published nothing.
using PublishTimes = QHash<const PublishedPrediction*, QDateTime>;

QByteArray json(const WeatherStation& station, const PublishTimes& published, const QDateTime& now);

} // namespace CrewSnapshot
