#include "racelog/Database.h"

#include "racelog/ColumnTable.h"
#include "racelog/LogConnection.h"
#include "racelog/LogFieldRules.h"
#include "racelog/LogFileSchema.h"
#include "shell/NumberText.h"

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

// The runs, in key order: the first fills run 1, each further one adds a run and an item of
// the reference run list.
bool readRuns(LogConnection& connection, RaceLogData& log) {
    QList<QStringView> names;
    for (const RunField& field : runFields())
        names << field.name;
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    if (!query.exec(
            QStringLiteral("SELECT %1 FROM \"Log\" ORDER BY \"GeneralID\"").arg(quotedList(names))))
        return false;
    RunTable& grid = log.grid;
    for (int row = 1; query.next(); ++row) {
        if (row > 1) {
            grid.addRun();
            log.refRunItems << QString::number(log.refRunItems.size() + 1);
        }
        for (int i = 0; i < int(runFields().size()); ++i) {
            const int cell = grid.fLabel(row, runFields()[i].column);
            const auto text = LogFieldRules::cellText(ColumnTable::Columns[runFields()[i].column],
                                                      query.value(i), grid.TextArray(cell));
            if (!text)
                return false;
            grid.setTextArray(cell, *text);
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

// The reference run: a zero-based index into the run list, which marks the run's row.
bool takeReferenceRun(const QVariant& value, RaceLogData& log) {
    if (value.typeId() != QMetaType::LongLong && value.typeId() != QMetaType::Int)
        return false;
    const qlonglong index = value.toLongLong();
    if (index < 0 || index >= log.refRunItems.size())
        return false;
    log.refRunIndex = int(index);
    return log.grid.markReferenceRun(int(index) + 1);
}

bool takeProperty(const Field& field, const QVariant& value, RaceLogData& log) {
    if (field.type == FieldType::Integer)
        return takeReferenceRun(value, log);
    std::optional<QString> text;
    switch (field.type) {
    case FieldType::Date:
        text = LogFieldRules::logDateOf(value);
        break;
    case FieldType::Single:
        if (const auto number = LogFieldRules::singleOf(value))
            text = NumberText::General(*number);
        break;
    case FieldType::VarWChar:
    case FieldType::LongVarWChar:
        text = LogFieldRules::textOf(value);
        break;
    case FieldType::Integer:
        break;
    }
    if (!text)
        return false;
    log.*LogFileSchema::propertySource(field.name) = *text;
    return true;
}

// The log's fields from the first row of Properties, set in the order the log window takes
// them; a file without that row is not a whole race log.
bool readProperties(LogConnection& connection, RaceLogData& log) {
    static const QList<QStringView> names{u"Date",   u"Version", u"RaceTrack", u"PageIdent",
                                          u"RefRun", u"PF",      u"TSR",       u"TargetET",
                                          u"Notes",  u"AA",      u"VP"};
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT %1 FROM \"Properties\" ORDER BY \"GeneralID\" LIMIT 1")
                        .arg(quotedList(names))) ||
        !query.next())
        return false;
    for (int i = 0; i < names.size(); ++i) {
        if (!takeProperty(propertiesField(names[i]), query.value(i), log))
            return false;
    }
    return true;
}

} // namespace

bool loadLog(const QString& path, RaceLogData& log) {
    if (!QFileInfo(path).isFile())
        return false;
    LogConnection connection(path, LogConnection::Access::Read);
    // Both tables are read in one transaction, so a save by another program between them
    // cannot mix two versions of the log.
    if (!connection.isOpen() || !connection.exec(QStringLiteral("BEGIN")) ||
        !connection.holdsRaceLog())
        return false;
    const bool loaded = readRuns(connection, log) && readProperties(connection, log);
    connection.exec(QStringLiteral("COMMIT"));
    return loaded;
}

} // namespace Database
