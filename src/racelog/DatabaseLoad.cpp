#include "racelog/Database.h"

#include "core/NumberText.h"
#include "racelog/ColumnTable.h"
#include "racelog/LogConnection.h"
#include "racelog/LogFieldRules.h"
#include "racelog/LogFileSchema.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <vector>

namespace Database {

namespace {

using LogFileSchema::Field;
using LogFileSchema::FieldType;

// The Log fields that hold a run column, in the order of the table, with their columns.
struct RunField {
    QStringView name;
    int column;
};

const std::vector<RunField>& runFields() {
    static const auto fields = [] {
        std::vector<RunField> found;
        for (const Field& field : LogFileSchema::LogFields) {
            const int column = ColumnTable::columnOfLogField(field.name);
            if (column >= 0)
                found.push_back({field.name, column});
        }
        return found;
    }();
    return fields;
}

QString quotedList(const QList<QStringView>& names) {
    QStringList quoted;
    for (QStringView name : names)
        quoted << u'"' + name.toString() + u'"';
    return quoted.join(u", ");
}

// Reading goes on past a value that does not fit its place: the value is counted and its
// cell or field keeps what it had, so one odd value never costs the user the rest of a file.
struct Reader {
    RaceLogData& log;
    int unreadValues = 0;

    void take(const std::optional<QString>& text, QString& target) {
        if (text)
            target = *text;
        else
            ++unreadValues;
    }
};

// The runs, in key order: the first fills run 1, each further one adds a run and an item of
// the reference run list. A missing value is an empty cell.
bool readRuns(LogConnection& connection, Reader& reader) {
    QList<QStringView> names;
    for (const RunField& field : runFields())
        names << field.name;
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    if (!query.exec(
            QStringLiteral("SELECT %1 FROM \"Log\" ORDER BY \"GeneralID\"").arg(quotedList(names))))
        return false;
    RaceLogData& log = reader.log;
    RunTable& grid = log.grid;
    for (int row = 1; query.next(); ++row) {
        if (row > 1) {
            grid.addRun();
            log.refRunItems << QString::number(log.refRunItems.size() + 1);
        }
        for (int i = 0; i < int(runFields().size()); ++i) {
            const int column = runFields()[i].column;
            const QVariant value = query.value(i);
            QString text = grid.cell(row, column);
            if (value.isNull())
                text.clear();
            else
                reader.take(LogFieldRules::cellText(ColumnTable::Columns[column], value, text),
                            text);
            grid.setCell(row, column, text);
        }
    }
    return query.lastError().type() == QSqlError::NoError;
}

const Field& propertiesField(QStringView name) {
    for (const Field& field : LogFileSchema::PropertiesFields) {
        if (field.name == name)
            return field;
    }
    Q_UNREACHABLE();
}

// The reference run: a zero-based index into the run list, which marks the run's row; -1 or
// a missing value is a log without a reference run.
void takeReferenceRun(const QVariant& value, Reader& reader) {
    RaceLogData& log = reader.log;
    log.refRunIndex = -1;
    if (value.isNull())
        return;
    const bool whole = value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int;
    const qlonglong index = value.toLongLong();
    if (whole && index == -1)
        return;
    if (!whole || index < 0 || index >= log.refRunItems.size()) {
        ++reader.unreadValues;
        return;
    }
    log.refRunIndex = int(index);
    log.grid.markReferenceRun(int(index) + 1);
}

std::optional<QString> propertyText(const Field& field, const QVariant& value) {
    switch (field.type) {
    case FieldType::Date:
        return LogFieldRules::logDateOf(value);
    case FieldType::Single:
        if (const auto number = LogFieldRules::singleOf(value))
            return NumberText::general(*number);
        return std::nullopt;
    case FieldType::VarWChar:
        return LogFieldRules::textOf(value);
    case FieldType::LongVarWChar:
        return LogFieldRules::notesOf(value.toString());
    case FieldType::Integer:
        break;
    }
    return std::nullopt;
}

void takeProperty(const Field& field, const QVariant& value, Reader& reader) {
    if (field.type == FieldType::Integer)
        return takeReferenceRun(value, reader);
    QString& target = reader.log.*LogFileSchema::propertySource(field.name);
    if (value.isNull())
        target.clear();
    else
        reader.take(propertyText(field, value), target);
}

// The log's fields from the first row of Properties, set in the order the log window takes
// them; a file without that row is not a whole race log.
bool readProperties(LogConnection& connection, Reader& reader) {
    static const QList<QStringView> names{u"Date",   u"Version", u"RaceTrack", u"PageIdent",
                                          u"RefRun", u"PF",      u"TSR",       u"TargetET",
                                          u"Notes",  u"AA",      u"VP"};
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT %1 FROM \"Properties\" ORDER BY \"GeneralID\" LIMIT 1")
                        .arg(quotedList(names))) ||
        !query.next())
        return false;
    for (int i = 0; i < names.size(); ++i)
        takeProperty(propertiesField(names[i]), query.value(i), reader);
    return true;
}

// The values beyond the two tables. A file of an older program has no Extras, and keeps the
// log's defaults; a value that is no number is counted like any other.
void readExtras(LogConnection& connection, Reader& reader) {
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT \"Name\", \"Value\" FROM \"Extras\"")))
        return;
    while (query.next()) {
        for (const LogFileSchema::Extra& extra : LogFileSchema::Extras) {
            if (query.value(0).toString() != extra.name)
                continue;
            const QString value = query.value(1).toString();
            reader.take(NumberText::isNumeric(value) ? std::optional(value) : std::nullopt,
                        reader.log.*extra.source);
        }
    }
}

} // namespace

LoadResult loadLog(const QString& path, RaceLogData& log) {
    LoadResult result;
    if (!QFileInfo(path).isFile())
        return result;
    LogConnection connection(path, LogConnection::Access::Read);
    // Both tables are read in one transaction, so a save by another program between them
    // cannot mix two versions of the log.
    if (!connection.isOpen() || !connection.exec(QStringLiteral("BEGIN")))
        return result;
    const LogConnection::Shape shape = connection.shape();
    if (shape.kind == LogConnection::Shape::Kind::MissingColumn) {
        result.status = LoadResult::Status::MissingColumn;
        result.missingColumn = shape.missingColumn;
    } else if (shape.kind == LogConnection::Shape::Kind::RaceLog) {
        Reader reader{log};
        if (readRuns(connection, reader) && readProperties(connection, reader)) {
            readExtras(connection, reader);
            result.status = LoadResult::Status::Loaded;
        }
        result.unreadValues = reader.unreadValues;
    }
    connection.exec(QStringLiteral("COMMIT"));
    return result;
}

QString backupPath(const QString& path) {
    const QFileInfo file(path);
    const QString stem = file.suffix().compare(u"trl", Qt::CaseInsensitive) == 0
                             ? file.completeBaseName()
                             : file.fileName();
    return file.dir().filePath(stem + QStringLiteral(".bak.trl"));
}

} // namespace Database
