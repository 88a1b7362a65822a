#pragma once

#include <optional>

class WeatherLog;
class RaceLog;
struct WeatherRecord;

// The commands of the run table's menus that ask or tell the user something: deleting a run,
// fetching the weather of a run, live or from the weather log, and its time slip from the
// timing receiver's log. Each works on the log and
// the run it is given; the grid decides which run that is and where its current cell goes.
namespace RunCommands {

// Asks before deleting the run. The run the current cell goes to afterwards, when it moves:
// the reference run list loses its last item whatever the answer, and run 1 becomes the
// reference run.
std::optional<int> deleteRun(RaceLog& log, int row);

// Whether the feed is alive is not asked: a silent instrument gives its last values, or
// zeros.
void importCurrentWeather(RaceLog& log, int row, const WeatherRecord& live);

// The weather log row of the run's minute. A run with no readable time or date is taken as
// made now, and its cell says so from then on, whether weather is found or not.
void importLoggedWeather(RaceLog& log, int row, WeatherLog& weatherLog);

// The time slip of the log's car from the timing receiver's log, the one whose time lies
// within a quarter of an hour of the run's, and then the logged weather of the slip's minute,
// all as one step. A run with no readable time is taken as made now and gets its date written,
// even when no slip is found.
void importTimeSlip(RaceLog& log, int row, WeatherLog& weatherLog);

} // namespace RunCommands
