#pragma once

#include <QString>
#include <QStringList>

// The sqlite3 command-line program run on a file, as anyone outside the program would read
// or alter a race log.
struct SqliteShell {
    int exitCode = -1;
    QString output; // standard output, trimmed
    QString errors;

    // Runs one command (an SQL statement or a dot command) on the file.
    static SqliteShell run(const QString& path, const QString& command);
    // The lines of the output.
    QStringList lines() const;
};

// Files beside a race log that SQLite makes while it works on it: journal, WAL, shared memory.
QStringList sideFiles(const QString& path);
