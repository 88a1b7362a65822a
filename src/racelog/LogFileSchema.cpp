#include "racelog/LogFileSchema.h"

#include <QStringList>

namespace LogFileSchema {

using enum FieldType;

const std::array<Field, 25> PropertiesFields{{
    {u"GeneralID", Integer},
    {u"Date", Date},
    {u"Version", VarWChar, 10},
    {u"Notes", LongVarWChar},
    {u"RaceTrack", VarWChar, 50},
    {u"PageIdent", VarWChar, 15},
    {u"RefRun", Integer},
    {u"PF", Single},
    {u"TSR", Single},
    {u"TargetET", Single},
    {u"ABP", Single},
    {u"TEMP", Single},
    {u"RH", Single},
    {u"AA", Single},
    {u"AH", Single},
    {u"GR", Single},
    {u"VP", Single},
    {u"DP", Single},
    {u"ADR", Single},
    {u"DA", Single},
    {u"PA", Single},
    {u"WD", Single},
    {u"WS", Single},
    {u"WG", Single},
    {u"AL", Single},
}};

// The run columns are those of ColumnTable with the same field names; GeneralID, Notes and
// Status have no run column.
const std::array<Field, 36> LogFields{{
    {u"GeneralID", Integer}, {u"Time", Date},          {u"Date", Date},
    {u"Lane", VarWChar, 8},  {u"DialIn", Single},      {u"RT", Single},
    {u"TrackTemp", Single},  {u"ft60", Single},        {u"ft330", Single},
    {u"mph660", Single},     {u"ft660", Single},       {u"mph1000", Single},
    {u"ft1000", Single},     {u"mph1320", Single},     {u"ft1320", Single},
    {u"Timer1", Single},     {u"Timer2", Single},      {u"DelayBox", Single},
    {u"ShiftTime", Single},  {u"Notes", LongVarWChar}, {u"ABP", Single},
    {u"TEMP", Single},       {u"RH", Single},          {u"AA", Single},
    {u"AH", Single},         {u"GR", Single},          {u"VP", Single},
    {u"DP", Single},         {u"ADR", Single},         {u"DA", Single},
    {u"PA", Single},         {u"WD", Single},          {u"WS", Single},
    {u"WG", Single},         {u"AL", Single},          {u"Status", Integer},
}};

QString RaceLogData::*propertySource(QStringView field) {
    static const struct {
        QStringView field;
        QString RaceLogData::*text;
    } sources[] = {
        {u"Date", &RaceLogData::date},
        {u"Version", &RaceLogData::carNumber},
        {u"Notes", &RaceLogData::notes},
        {u"RaceTrack", &RaceLogData::raceTrack},
        {u"PageIdent", &RaceLogData::pageIdentifier},
        {u"PF", &RaceLogData::pf},
        {u"TSR", &RaceLogData::tsr},
        {u"TargetET", &RaceLogData::targetET},
        {u"AA", &RaceLogData::aa},
        {u"VP", &RaceLogData::vp},
    };
    for (const auto& source : sources) {
        if (source.field.compare(field, Qt::CaseInsensitive) == 0)
            return source.text;
    }
    return nullptr;
}

namespace {

QString sqlType(FieldType type) {
    switch (type) {
    case Integer:
        return QStringLiteral("INTEGER");
    case Single:
        return QStringLiteral("REAL");
    case Date:
    case VarWChar:
    case LongVarWChar:
        break;
    }
    return QStringLiteral("TEXT");
}

QString quoted(QStringView name) {
    return u'"' + name.toString() + u'"';
}

} // namespace

QString createTableSql(QStringView table, std::span<const Field> fields) {
    QStringList columns;
    for (const Field& field : fields)
        columns << quoted(field.name) + u' ' + sqlType(field.type);
    columns << QStringLiteral("CONSTRAINT PrimaryKey PRIMARY KEY (%1)").arg(quoted(KeyField));
    return QStringLiteral("CREATE TABLE %1 (%2)").arg(quoted(table), columns.join(u", "));
}

QString fieldList(std::span<const Field> fields) {
    QStringList names;
    for (const Field& field : fields)
        names << quoted(field.name);
    return names.join(u", ");
}

} // namespace LogFileSchema
