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
    // What the file is, judged by its tables and their columns: a file of another tool with
    // the same tables is a race log as much as one this program wrote.
    struct Shape {
        enum class Kind { RaceLog, NotRaceLog, MissingColumn } kind = Kind::NotRaceLog;
        QString missingColumn; // "Log.RT" when a table lacks a column the log needs
    };
    Shape shape();
    bool holdsRaceLog() { return shape().kind == Shape::Kind::RaceLog; }

private:
    QString name;
    QSqlDatabase db;
    bool open = false;
};
