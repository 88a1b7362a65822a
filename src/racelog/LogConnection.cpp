#include "racelog/LogConnection.h"

#include "racelog/LogFileSchema.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QUrl>
#include <atomic>
#include <span>

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

namespace {

// The columns a table has, in lower case, as SQLite matches names; empty when the name is
// not a table (a view of that name is no race log either).
QStringList columnsOf(QSqlDatabase& db, const QString& table) {
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND "
                                 "name = ? COLLATE NOCASE"));
    query.addBindValue(table);
    if (!query.exec() || !query.next() || query.value(0).toInt() != 1)
        return {};
    QStringList names;
    if (!query.exec(QStringLiteral("PRAGMA table_info(\"%1\")").arg(table)))
        return {};
    while (query.next())
        names << query.value(1).toString().toLower();
    return names;
}

} // namespace

LogConnection::Shape LogConnection::shape() {
    const struct {
        QString table;
        std::span<const LogFileSchema::Field> fields;
    } tables[] = {{QStringLiteral("Properties"), LogFileSchema::PropertiesFields},
                  {QStringLiteral("Log"), LogFileSchema::LogFields}};
    for (const auto& [table, fields] : tables) {
        if (columnsOf(db, table).isEmpty())
            return {};
    }
    for (const auto& [table, fields] : tables) {
        const QStringList present = columnsOf(db, table);
        for (const LogFileSchema::Field& field : fields) {
            if (!present.contains(field.name.toString().toLower()))
                return {Shape::Kind::MissingColumn, table + u'.' + field.name.toString()};
        }
    }
    return {Shape::Kind::RaceLog, {}};
}
