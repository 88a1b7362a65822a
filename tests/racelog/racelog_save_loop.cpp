// Saves race logs into one file, one generation after the other, and reports each finished
// save on its standard output as "saved <generation>". The safety tests kill it in the
// middle of a save and look at what the file holds.
#include "SampleLogs.h"
#include "racelog/Database.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() < 3)
        return 2;
    const QString path = arguments[1];
    const int generations = arguments[2].toInt(); // an end in case nobody kills it
    QTextStream out(stdout);
    RaceLogData log;
    for (int generation = 1; generation <= generations; ++generation) {
        SampleLogs::fillGeneration(log, generation);
        if (Database::saveRaceLog(path, log) != Database::SaveResult::Ok)
            return 1;
        out << "saved " << generation << Qt::endl;
    }
    return 0;
}
