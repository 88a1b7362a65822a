// Writes a race log a crew could have: three filled runs, a reference run, a target ET and a
// page identifier of the caller's choice, so the program started on it publishes an ET and a
// throttle stop setting with every weather line.
//   crew_sample_log <file> <page identifier>
#include "SampleLogs.h"
#include "racelog/Database.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() < 3)
        return 2;
    RaceLogData log;
    SampleLogs::fillLog(log, 3);
    log.pageIdentifier = arguments[2];
    return Database::saveRaceLog(arguments[1], log) == Database::SaveResult::Ok ? 0 : 1;
}
