#pragma once

#include "racelog/Database.h"
#include "racelog/PredictionTrust.h"
#include "racelog/PublishedPrediction.h"
#include "racelog/RaceLogData.h"

#include <QObject>
#include <QUndoStack>
#include <functional>

// One race log: one car at one event. It holds the runs, the fields of the side panel, the file
// the log is kept in and what its prediction says now; windows show it and edit it, and the
// predictor, the run commands and the file routines work on it. Every change the user makes goes
// through change() or changeCell(), which make it one step of the log's undo stack; the log is
// modified while the stack is away from the state last saved or loaded.
class RaceLog : public QObject {
    Q_OBJECT
public:
    // The text fields of the log, in the order of the side panel.
    enum class Field {
        Date,
        RaceTrack,
        PF,
        TSR,
        PageIdentifier,
        CarNumber,
        Notes,
        TargetET,
        AA,
        VP,
        TrackOffset
    };

    explicit RaceLog(QObject* parent = nullptr);
    ~RaceLog() override;

    const RaceLogData& content() const { return data; }
    // The run table as the grid shows it. Its runs are changed through change(); an edit made
    // through its model interface becomes a changeCell().
    RunTable& runs() { return data.grid; }
    const RunTable& runs() const { return data.grid; }

    QString field(Field field) const;
    // A field typed by the user: one step, which later typing in the same field joins.
    void setField(Field field, const QString& text);

    // The one entry point for a change of the runs or fields: edit changes the content, and what it
    // changed becomes one step named text ("Paste 3 Runs"), which undo takes back. An edit that
    // changes nothing leaves no step.
    void change(const QString& text, const std::function<void(RaceLogData&)>& edit);
    // The same for the text of one run cell, which is the commonest change: its step keeps only
    // the cell's text before and after, so a long log is not copied to edit one cell.
    void changeCell(const QString& text, int row, int column, const QString& cellText);

    // Selects the reference run by its list index and marks it in the run table, as one step.
    // False, nothing changed, for an index that is not in the list.
    bool selectReferenceRun(int index);

    // The live adjusted altitude and vapor pressure become the prediction's inputs. The feed's
    // values are no change of the user's: they take no step and do not modify the log.
    void takeLiveWeather(const QString& adjustedAltitude, const QString& vaporPressure);

    // The slot the log holds among the open logs; a log without a page identifier is called by
    // it ("Race Log# 1" for slot 0).
    int slot() const { return openSlot; }
    void setSlot(int slot) { openSlot = slot; }

    // What the log's prediction says now; the predictor publishes it, everyone else reads it.
    PublishedPrediction& prediction() { return published; }
    const PublishedPrediction& prediction() const { return published; }

    // The seconds the track runs slower than the air says, as the crew set it: added to every
    // predicted ET of the log. 0 when the field holds no number; fieldChanged() tells a change.
    double trackOffset() const;

    // The track's drift becomes the track offset, as one step named "Use Track Drift"; false,
    // nothing changed, while the log has no drift.
    bool useTrackDrift();

    // How far the log's prediction can be trusted now: its likely miss and how many predictions
    // say so, the track's drift today and the outlook line, each told by its changed() signal.
    // The predictor works them out.
    PredictionTrust& trust() { return trustNow; }
    const PredictionTrust& trust() const { return trustNow; }

    // Whether the log's prediction goes into the periodic page; a setting of the moment, not
    // kept in the file.
    bool pagerPredictions() const { return pagerOn; }
    void setPagerPredictions(bool on) { pagerOn = on; }

    // The file the log is kept in: its full path and its name; empty before the first save.
    QString filePath() const { return path; }
    QString fileTitle() const { return title; }
    void setFile(const QString& filePath, const QString& fileTitle);

    // Reads the file into this new log; what the file does not hold keeps its value. The log
    // then starts unmodified, with nothing to undo.
    Database::LoadResult load(const QString& filePath);
    // Writes the log into the file; a log written whole is no longer modified.
    Database::SaveResult save(const QString& filePath);
    // The values the log starts from are no steps: the stack starts empty and clean here.
    void settle();

    QUndoStack& undoStack() { return undo; }
    bool isModified() const { return !undo.isClean(); }

signals:
    void fieldChanged(RaceLog::Field field);
    // The reference run list or its selection changed.
    void referenceRunChanged();
    void modifiedChanged(bool modified);
    void fileChanged();
    // The log was read from its file: everything in it may be new, with nothing to undo.
    void loaded();

private:
    friend class RaceLogChange;
    friend class RunCellChange;
    struct State {
        RaceLogFields fields;
        RunTable::Runs runs;
    };
    State state() const { return {data, data.grid.runs()}; }
    // Puts back the part of a state that a step changed, and tells what moved.
    void restore(const State& from, const State& to);
    void announce(const RaceLogFields& before);

    RaceLogData data;
    QUndoStack undo;
    int openSlot = 0;
    PublishedPrediction published;
    PredictionTrust trustNow;
    bool pagerOn = false;
    QString path;
    QString title;
};
