#include "racelog/RaceLog.h"

#include "core/NumberText.h"
#include "racelog/LogFieldTable.h"
#include "racelog/RunEdits.h"

#include <QUndoCommand>

namespace {

QString RaceLogFields::*member(RaceLog::Field field) {
    return LogFieldTable::row(field).member;
}

// Typing in one field joins the step before it while that step is of the same field.
constexpr int FieldStepId = 100;

} // namespace

// One step of a log's undo stack: the log's content before and after it. The texts of a run
// table are shared until written, so keeping both costs little.
class RaceLogChange : public QUndoCommand {
public:
    RaceLogChange(RaceLog& log, const QString& text, RaceLog::State before, RaceLog::State after,
                  int id)
        : QUndoCommand(text), log(log), before(std::move(before)), after(std::move(after)),
          stepId(id) {}

    // The change was made before the step was pushed; only a redo after an undo makes it again.
    void redo() override {
        if (made)
            log.restore(before, after);
        made = true;
    }
    void undo() override { log.restore(after, before); }
    int id() const override { return stepId; }

    bool mergeWith(const QUndoCommand* other) override {
        after = static_cast<const RaceLogChange*>(other)->after;
        setObsolete(before.fields == after.fields);
        return true;
    }

private:
    RaceLog& log;
    RaceLog::State before;
    RaceLog::State after;
    int stepId;
    bool made = false;
};

// One step that wrote one run cell: the cell's text before and after it.
class RunCellChange : public QUndoCommand {
public:
    RunCellChange(RaceLog& log, const QString& text, int row, int column, QString before)
        : QUndoCommand(text), log(log), row(row), column(column), before(std::move(before)),
          after(log.data.grid.cell(row, column)) {}

    // The cell was written before the step was pushed; only a redo after an undo writes it again.
    void redo() override {
        if (made)
            log.data.grid.setCell(row, column, after);
        made = true;
    }
    void undo() override { log.data.grid.setCell(row, column, before); }

private:
    RaceLog& log;
    int row;
    int column;
    QString before;
    QString after;
    bool made = false;
};

RaceLog::RaceLog(QObject* parent) : QObject(parent) {
    // Run 1 is the reference run of a new log.
    data.grid.markReferenceRun(1);
    // An edit of a cell in a view is a step like any other change.
    data.grid.setCellEdit([this](int row, int column, const QString& text) {
        RunEdits::editCell(*this, row, column, text);
    });
    connect(&undo, &QUndoStack::cleanChanged, this,
            [this](bool clean) { emit modifiedChanged(!clean); });
}

// The stack empties itself as it goes, after the parts of the log its listeners read are gone:
// a log going away tells nobody of the steps that go with it.
RaceLog::~RaceLog() {
    undo.blockSignals(true);
}

QString RaceLog::field(Field field) const {
    return data.*member(field);
}

void RaceLog::setField(Field field, const QString& text) {
    if (data.*member(field) == text)
        return;
    const State before = state();
    data.*member(field) = text;
    announce(before.fields);
    undo.push(new RaceLogChange(
        *this, QStringLiteral("Edit ") + QLatin1String(LogFieldTable::row(field).caption), before,
        state(), FieldStepId + int(field)));
}

void RaceLog::change(const QString& text, const std::function<void(RaceLogData&)>& edit) {
    const State before = state();
    edit(data);
    State after = state();
    if (before.fields == after.fields && before.runs == after.runs)
        return;
    announce(before.fields);
    undo.push(new RaceLogChange(*this, text, before, std::move(after), -1));
}

void RaceLog::changeCell(const QString& text, int row, int column, const QString& cellText) {
    QString before = data.grid.cell(row, column);
    if (before == cellText || !data.grid.setCell(row, column, cellText))
        return;
    undo.push(new RunCellChange(*this, text, row, column, std::move(before)));
}

bool RaceLog::selectReferenceRun(int index) {
    if (index < 0 || index >= data.refRunItems.size())
        return false;
    change(QStringLiteral("Reference Run %1").arg(index + 1), [index](RaceLogData& log) {
        log.refRunIndex = index;
        log.grid.markReferenceRun(index + 1);
    });
    return true;
}

void RaceLog::takeLiveWeather(const QString& adjustedAltitude, const QString& vaporPressure) {
    const RaceLogFields before = data;
    data.aa = adjustedAltitude;
    data.vp = vaporPressure;
    announce(before);
}

double RaceLog::trackOffset() const {
    return NumberText::toDouble(data.trackOffset).value_or(0.0);
}

bool RaceLog::useTrackDrift() {
    const auto& drift = trustNow.drift();
    if (!drift)
        return false;
    const QString offset = NumberText::format(drift->seconds, QStringLiteral("0.000"));
    change(QStringLiteral("Use Track Drift"),
           [&offset](RaceLogData& log) { log.trackOffset = offset; });
    return true;
}

void RaceLog::setFile(const QString& filePath, const QString& fileTitle) {
    path = filePath;
    title = fileTitle;
    emit fileChanged();
}

Database::LoadResult RaceLog::load(const QString& filePath) {
    const RaceLogFields before = data;
    const Database::LoadResult loaded = Database::loadLog(filePath, data);
    if (!loaded)
        return loaded;
    if (data.refRunIndex < 0)
        data.grid.unmarkReferenceRun();
    announce(before);
    settle();
    emit this->loaded();
    return loaded;
}

Database::SaveResult RaceLog::save(const QString& filePath) {
    const Database::SaveResult saved = Database::saveRaceLog(filePath, data);
    if (saved == Database::SaveResult::Ok)
        undo.setClean();
    return saved;
}

void RaceLog::settle() {
    undo.clear();
}

// Only what the step changed is put back: the feed's AA and VP, and the runs of a step that
// changed only a field, stay as they are now.
void RaceLog::restore(const State& from, const State& to) {
    const RaceLogFields before = data;
    for (const LogFieldTable::Row& row : LogFieldTable::Rows) {
        if (from.fields.*row.member != to.fields.*row.member)
            data.*row.member = to.fields.*row.member;
    }
    if (from.fields.refRunItems != to.fields.refRunItems ||
        from.fields.refRunIndex != to.fields.refRunIndex) {
        data.refRunItems = to.fields.refRunItems;
        data.refRunIndex = to.fields.refRunIndex;
    }
    if (!(from.runs == to.runs))
        data.grid.restoreRuns(to.runs);
    announce(before);
}

void RaceLog::announce(const RaceLogFields& before) {
    for (const LogFieldTable::Row& row : LogFieldTable::Rows) {
        if (before.*row.member != data.*row.member)
            emit fieldChanged(row.field);
    }
    if (before.refRunItems != data.refRunItems || before.refRunIndex != data.refRunIndex)
        emit referenceRunChanged();
}
