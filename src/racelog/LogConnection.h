#pragma once

#include <QSqlDatabase>
#include <QString>

// One connection to a race log file for the length of one routine. Each connection has a name
// of its own, and the name is removed again at the end, so no handle to the file outlives the
// routine: between saves the file can be moved or deleted.
//
// The file stays one self-contained file: a rollback journal beside it only while a change is
// being written (a crash leaves it, and the next connection uses it to undo the half-written
// change), and every change forced to the disk before it counts as done.
class LogConnection {
public:
    enum class Access {
        Create, // opens the file, making an empty database where there is none
        Write,  // opens an existing file only
        Read    // the same; reading can still finish a change that a crash cut short
    };

    LogConnection(const QString& path, Access access);
    ~LogConnection();
    LogConnection(const LogConnection&) = delete;
    LogConnection& operator=(const LogConnection&) = delete;

    bool isOpen() const { return open; }
    QSqlDatabase& database() { return db; }

    // Runs one statement; false when it fails.
    bool exec(const QString& sql);
    // True when the file is a race log: it carries the race log mark and has both tables.
    bool holdsRaceLog();

private:
    QString name;
    QSqlDatabase db;
    bool open = false;
};
