#pragma once

#include "racelog/RunTable.h"

#include <QString>
#include <QStringList>

// The fields of one race log, each as the text its field of the side panel shows.
struct RaceLogFields {
    QString date;           // txtDate, "MM/DD/YYYY"
    QString carNumber;      // txtCarNumber, at most 5 characters on file
    QString raceTrack;      // cboRaceTrack, at most 50 characters on file
    QString pageIdentifier; // txtPageIdentifier, at most 15 characters on file
    // cboRefRun: one item per run with the run's number, and the zero-based index of the
    // reference run in it; -1 when the log has no reference run.
    QStringList refRunItems{QStringLiteral("1")};
    int refRunIndex = 0;
    QString pf = QStringLiteral("0");          // txtPF
    QString tsr = QStringLiteral("0");         // txtTSR
    QString targetET = QStringLiteral("0.00"); // txtTargetET
    QString notes;                             // txtNotes
    QString aa = QStringLiteral("0.00");       // txtAA, the prediction's adjusted altitude
    QString vp = QStringLiteral("0.00");       // txtVP, the prediction's vapor pressure
    // txtTrackOffset, the seconds the crew adds to every predicted ET for a track that runs
    // slower (or faster, below 0) than the air says
    QString trackOffset = QStringLiteral("0");

    bool operator==(const RaceLogFields&) const = default;
};

// One race log as the file keeps it: its fields and its run table.
struct RaceLogData : RaceLogFields {
    RunTable grid;
};
