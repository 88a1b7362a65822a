// Writes a race log a crew could have: six filled runs, enough for a likely miss, and a
// reference run, with the page identifier, performance factor and target ET of the caller's
// choice, so the program started on it publishes an ET (and, for a target close to it, a
// throttle stop setting) with every weather line.
//   crew_sample_log <file> <page identifier> [<PF> [<target ET>]]
#include "SampleLogs.h"
#include "racelog/Database.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() < 3)
        return 2;
    RaceLogData log;
    SampleLogs::fillLog(log, 6);
    log.pageIdentifier = arguments[2];
    if (arguments.size() > 3)
        log.pf = arguments[3];
    if (arguments.size() > 4)
        log.targetET = arguments[4];
    return Database::saveRaceLog(arguments[1], log) == Database::SaveResult::Ok ? 0 : 1;
}
