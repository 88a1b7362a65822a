#include "racelog/LogConnection.h"

#include "racelog/LogFileSchema.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QUrl>
#include <atomic>

namespace {

QString uniqueName() {
    static std::atomic<quint64> counter{0};
    return QStringLiteral("racelog-%1").arg(++counter);
}

// The file as a SQLite URI, so that "mode" can forbid making a file where none should be.
QString uriOf(const QString& path, LogConnection::Access access) {
    const QString mode =
        access == LogConnection::Access::Create ? QStringLiteral("rwc") : QStringLiteral("rw");
    return QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString(QUrl::FullyEncoded) +
           QStringLiteral("?mode=") + mode;
}

} // namespace

LogConnection::LogConnection(const QString& path, Access access) : name(uniqueName()) {
    db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    if (!db.isValid())
        return;
    db.setDatabaseName(uriOf(path, access));
    // Another program writing the file gets a second to finish; then the routine fails.
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=1000"));
    open = db.open() && exec(QStringLiteral("PRAGMA journal_mode=DELETE")) &&
           exec(QStringLiteral("PRAGMA synchronous=FULL"));
}

LogConnection::~LogConnection() {
    db.close();
    db = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
}

bool LogConnection::exec(const QString& sql) {
    QSqlQuery query(db);
    return query.exec(sql);
}

bool LogConnection::holdsRaceLog() {
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("PRAGMA application_id")) || !query.next() ||
        query.value(0).toLongLong() != qint64(LogFileSchema::ApplicationId))
        return false;
    // Views or missing tables under these names are not a race log either.
    if (!query.exec(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'table' "
                                   "AND name COLLATE NOCASE IN ('Log', 'Properties')")) ||
        !query.next())
        return false;
    return query.value(0).toInt() == 2;
}
