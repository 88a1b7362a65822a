#include "racelog/Database.h"

#include "racelog/ColumnTable.h"
#include "racelog/LogConnection.h"
#include "racelog/LogFieldRules.h"
#include "racelog/LogFileSchema.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QStringList>
#include <initializer_list>
#include <optional>

namespace Database {

namespace {

using LogFileSchema::Field;
using LogFileSchema::FieldType;

// The run column each Log field is written from; -1 for GeneralID, Notes and Status.
const std::array<int, LogFileSchema::LogFields.size()>& logFieldColumns() {
    static const auto columns = [] {
        std::array<int, LogFileSchema::LogFields.size()> found{};
        for (size_t i = 0; i < found.size(); ++i)
            found[i] = ColumnTable::columnOfLogField(LogFileSchema::LogFields[i].name);
        return found;
    }();
    return columns;
}

QString placeholders(qsizetype count) {
    QStringList marks;
    for (qsizetype i = 0; i < count; ++i)
        marks << QStringLiteral("?");
    return marks.join(u", ");
}

std::optional<QVariant> asVariant(std::optional<double> value) {
    return value ? std::optional<QVariant>(*value) : std::nullopt;
}

// The value of one Log field for the run in `row`. nullopt when it cannot be stored.
std::optional<QVariant> logFieldValue(const Field& field, int column, int row,
                                      const RaceLogData& log, const QDateTime& now) {
    const QString cell = log.grid.cell(row, column);
    switch (field.type) {
    case FieldType::Integer: // the running number as key; Status, always 0
        return field.name == LogFileSchema::KeyField ? row : 0;
    case FieldType::LongVarWChar: // the notes of the whole log, in every run
        return LogFieldRules::storedNotes(log.notes);
    case FieldType::Date:
        if (ColumnTable::Columns[column].loadForm == ColumnTable::LoadForm::TimeOfDay)
            return LogFieldRules::timeValue(cell, now);
        return LogFieldRules::runDateValue(cell, now);
    case FieldType::VarWChar:
        return LogFieldRules::storedText(cell, field.size);
    case FieldType::Single:
        return asVariant(LogFieldRules::singleValue(cell));
    }
    return std::nullopt;
}

// The value of one Properties field other than the key.
std::optional<QVariant> propertyValue(const Field& field, const RaceLogData& log,
                                      const QDateTime& now) {
    const auto source = LogFileSchema::propertySource(field.name);
    const QString text = source ? log.*source : QString();
    switch (field.type) {
    case FieldType::Integer: // RefRun
        return log.refRunIndex;
    case FieldType::Date:
        return LogFieldRules::logDateValue(text, now);
    case FieldType::VarWChar:
        return LogFieldRules::storedText(
            text, field.name == u"Version" ? LogFileSchema::CarNumberLength : field.size);
    case FieldType::LongVarWChar:
        return LogFieldRules::storedNotes(text);
    case FieldType::Single: // the weather fields are not kept here: always 0
        return source ? asVariant(LogFieldRules::singleValue(text)) : QVariant(0.0);
    }
    return std::nullopt;
}

// Step one of a save: the old runs go, every run of the table is written anew.
bool writeLogRows(LogConnection& connection, const RaceLogData& log, const QDateTime& now) {
    if (!connection.exec(QStringLiteral("DELETE FROM \"Log\"")))
        return false;
    const auto& fields = LogFileSchema::LogFields;
    QSqlQuery insert(connection.database());
    if (!insert.prepare(QStringLiteral("INSERT INTO \"Log\" (%1) VALUES (%2)")
                            .arg(LogFileSchema::fieldList(fields), placeholders(fields.size()))))
        return false;
    for (int row = 1; row < log.grid.tableRows(); ++row) {
        for (size_t i = 0; i < fields.size(); ++i) {
            const auto value = logFieldValue(fields[i], logFieldColumns()[i], row, log, now);
            if (!value)
                return false;
            insert.bindValue(int(i), *value);
        }
        if (!insert.exec())
            return false;
    }
    return true;
}

// Step two: the log's fields into the first row of Properties, which the first save adds.
bool writeProperties(LogConnection& connection, const RaceLogData& log, const QDateTime& now) {
    const std::span<const Field> allFields = LogFileSchema::PropertiesFields;
    const std::span<const Field> fields = allFields.subspan(1); // all but the key
    QList<QVariant> values;
    for (const Field& field : fields) {
        const auto value = propertyValue(field, log, now);
        if (!value)
            return false;
        values << *value;
    }

    QSqlQuery query(connection.database());
    if (!query.exec(QStringLiteral("SELECT \"GeneralID\" FROM \"Properties\" "
                                   "ORDER BY \"GeneralID\" LIMIT 1")))
        return false;
    const bool firstSave = !query.next();
    const QVariant key = firstSave ? QVariant(1) : query.value(0);
    query.finish();

    if (firstSave) {
        query.prepare(
            QStringLiteral("INSERT INTO \"Properties\" (%1) VALUES (%2)")
                .arg(LogFileSchema::fieldList(allFields), placeholders(allFields.size())));
        values.prepend(key);
    } else {
        QStringList assignments;
        for (const Field& field : fields)
            assignments << QStringLiteral("\"%1\" = ?").arg(field.name);
        query.prepare(QStringLiteral("UPDATE \"Properties\" SET %1 WHERE \"GeneralID\" = ?")
                          .arg(assignments.join(u", ")));
        values.append(key);
    }
    for (qsizetype i = 0; i < values.size(); ++i)
        query.bindValue(int(i), values[i]);
    return query.exec();
}

// Step three: the values beyond the two tables, each by name; the table is made by the first
// save that writes one.
bool writeExtras(LogConnection& connection, const RaceLogData& log, const QDateTime&) {
    if (!connection.exec(LogFileSchema::ExtrasTableSql.toString()))
        return false;
    QSqlQuery query(connection.database());
    if (!query.prepare(QStringLiteral(
            "INSERT OR REPLACE INTO \"Extras\" (\"Name\", \"Value\") VALUES (?, ?)")))
        return false;
    for (const LogFileSchema::Extra& extra : LogFileSchema::Extras) {
        query.bindValue(0, extra.name.toString());
        query.bindValue(1, log.*extra.source);
        if (!query.exec())
            return false;
    }
    return true;
}

using Step = bool (*)(LogConnection&, const RaceLogData&, const QDateTime&);

struct StepOf {
    Step step;
    SaveResult failure;
};

// Runs the steps as one change of the file: the write lock is taken at once, a file that is
// not a race log is never written to, and the change counts only when all steps are done.
// Whatever keeps the change from being made is reported as a failure of the first step,
// since it loses what that step writes.
SaveResult runAsOneChange(const QString& path, const RaceLogData& log,
                          std::initializer_list<StepOf> steps) {
    const SaveResult firstFailure = steps.begin()->failure;
    LogConnection connection(path, LogConnection::Access::Write);
    if (!connection.isOpen() || !connection.exec(QStringLiteral("BEGIN IMMEDIATE")))
        return firstFailure;
    // A file another tool made with the same tables takes the race log mark with the save.
    if (!connection.holdsRaceLog() ||
        !connection.exec(
            QStringLiteral("PRAGMA application_id = %1").arg(LogFileSchema::ApplicationId))) {
        connection.exec(QStringLiteral("ROLLBACK"));
        return firstFailure;
    }
    // One moment for every blank time and date of this save.
    const QDateTime now = QDateTime::currentDateTime();
    for (const StepOf& step : steps) {
        if (!step.step(connection, log, now)) {
            connection.exec(QStringLiteral("ROLLBACK"));
            return step.failure;
        }
    }
    return connection.exec(QStringLiteral("COMMIT")) ? SaveResult::Ok : firstFailure;
}

} // namespace

bool createLogDatabase(const QString& path) {
    if (QFileInfo::exists(path))
        return true;
    bool made = false;
    {
        LogConnection connection(path, LogConnection::Access::Create);
        made =
            connection.isOpen() && connection.exec(QStringLiteral("BEGIN")) &&
            connection.exec(
                QStringLiteral("PRAGMA application_id = %1").arg(LogFileSchema::ApplicationId)) &&
            connection.exec(
                LogFileSchema::createTableSql(u"Properties", LogFileSchema::PropertiesFields)) &&
            connection.exec(LogFileSchema::createTableSql(u"Log", LogFileSchema::LogFields)) &&
            connection.exec(QStringLiteral("COMMIT"));
    }
    // A file that did not get its tables would pass for an existing log next time.
    if (!made)
        QFile::remove(path);
    return made;
}

bool saveLogTable(const QString& path, const RaceLogData& log) {
    return runAsOneChange(path, log, {{writeLogRows, SaveResult::LogTableFailed}}) ==
           SaveResult::Ok;
}

bool savePropertiesTable(const QString& path, const RaceLogData& log) {
    return runAsOneChange(path, log, {{writeProperties, SaveResult::PropertiesFailed}}) ==
           SaveResult::Ok;
}

SaveResult saveRaceLog(const QString& path, const RaceLogData& log) {
    if (!createLogDatabase(path))
        return SaveResult::CreateFailed;
    return runAsOneChange(path, log,
                          {{writeLogRows, SaveResult::LogTableFailed},
                           {writeProperties, SaveResult::PropertiesFailed},
                           {writeExtras, SaveResult::PropertiesFailed}});
}

SaveFailureMessage saveFailureMessage(SaveResult result) {
    switch (result) {
    case SaveResult::CreateFailed:
        return {QStringLiteral("Unable to create log database!"),
                QStringLiteral("Database Create")};
    case SaveResult::LogTableFailed:
        return {QStringLiteral("Unable to save race log table data!"),
                QStringLiteral("Race Log Table Data")};
    case SaveResult::PropertiesFailed:
        return {QStringLiteral("Unable to save race log property information!"),
                QStringLiteral("Race Log Property Information")};
    case SaveResult::Ok:
        break;
    }
    return {};
}

} // namespace Database
