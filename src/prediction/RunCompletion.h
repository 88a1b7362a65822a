#pragma once

#include "core/Dialogs.h"
#include "prediction/RunCells.h"

#include <QString>
#include <functional>
#include <optional>
#include <variant>

// Completing a run that was shut off before the finish: its finish time is the reference
// run's finish taken to the run's air, moved by as much as the run was ahead of or behind
// the reference at the last mark both have. The user is asked before anything is written.
namespace RunCompletion {

struct Inputs {
    RunCells cells;              // the log's run table
    int referenceListIndex = -1; // the reference run's list index; -1 when none is chosen
    int currentRow = 0;          // the run to complete
    QString performanceFactor;   // performance factor
    QString notes;               // the log's notes as they stand
};

// Data missing: the command ends without a word.
struct Ended {};
// A conversion or arithmetic fault: the user is told the run cannot be completed.
struct Fault {};
// What to ask, and what to write on a yes.
struct Proposal {
    Dialogs::Message question;
    QString newNotes; // the whole notes text with the entry that records the old finish
    int finishRow = 0;
    int finishColumn = 0;
    QString finishText; // the completed ET
};

using Outcome = std::variant<Ended, Fault, Proposal>;

Outcome compute(const Inputs& inputs);

// The box a fault shows.
Dialogs::Message faultMessage();

// Shows a box to the user and gives the answer; the window passes the program's own.
using AskUser = std::function<Dialogs::Answer(const Dialogs::Message& message)>;

// Tells of a fault or asks the proposal's question, both through ask; the proposal to write
// when the user answers yes, else nothing.
std::optional<Proposal> confirm(const Outcome& outcome, const AskUser& ask);

} // namespace RunCompletion
