#include "prediction/RunCompletion.h"

#include "core/NumberText.h"
#include "prediction/ComputeFault.h"
#include "prediction/EtModel.h"

#include <array>

namespace RunCompletion {

namespace {

using ComputeCheck::checked;
using ComputeCheck::converted;
using NumberText::format;
using NumberText::isNumeric;

const QString crlf = QStringLiteral("\r\n");

// A run is completed over a quarter or an eighth mile, whichever incremental mark the
// reference run has; the quarter is tried first and the choice is made once.
struct Mode {
    int markColumn;
    int finishColumn;
    const char* notesLabel;
    const char* question; // "overwirte" is the program's own spelling
};

constexpr std::array modes{
    Mode{RunColumn::Ft1000, RunColumn::Ft1320,
         "1/4 mile ET: ", "Do you want to overwirte your current 1320ft ET of "},
    Mode{RunColumn::Ft330, RunColumn::Ft660,
         "1/8 mile ET: ", "Do you want to overwirte your current 660ft ET of "},
};

const Mode* modeOf(const RunCells& cells, int referenceRow) {
    for (const Mode& mode : modes)
        if (isNumeric(cells(referenceRow, mode.markColumn)))
            return &mode;
    return nullptr;
}

Dialogs::Message question(const Inputs& in, const Mode& mode, const QString& completed,
                          const QString& oldFinish) {
    const QString text =
        QStringLiteral("Using run #") + QString::number(in.referenceListIndex + 1) +
        QStringLiteral(" as a reference run and run completing") + crlf + QStringLiteral("run #") +
        QString::number(in.currentRow) + QStringLiteral(", its ET should be ") + completed +
        QStringLiteral(".") + crlf + crlf + QString::fromLatin1(mode.question) + oldFinish +
        QStringLiteral("?");
    return {text, QStringLiteral("Run Complete"), Dialogs::Icon::Question, Dialogs::Buttons::YesNo,
            Dialogs::Answer::No};
}

// The notes keep what the finish cell held before, one blank line between entries.
QString notesWithEntry(const Inputs& in, const Mode& mode, const QString& completed,
                       const QString& oldFinish) {
    QString notes = in.notes;
    if (!notes.isEmpty())
        notes += crlf + crlf;
    return notes + QStringLiteral("Run #") + QString::number(in.currentRow) + crlf +
           QString::fromLatin1(mode.notesLabel) + oldFinish + crlf +
           QStringLiteral("Run Completed to: ") + completed;
}

Outcome propose(const Inputs& in) {
    const int R = in.referenceListIndex + 1;
    const int S = in.currentRow;
    const RunCells& cells = in.cells;

    if (!isNumeric(in.performanceFactor))
        return Ended{};
    const double pf = converted(in.performanceFactor);
    const Mode* mode = modeOf(cells, R);
    if (!mode)
        return Ended{};
    const double refMark = converted(cells(R, mode->markColumn));
    if (!isNumeric(cells(R, RunColumn::AA)))
        return Ended{};
    const double aaRef = converted(cells(R, RunColumn::AA));
    // The altitude is tested on the run before S but taken from S itself: a run with no
    // AA of its own is a fault, not a quiet end.
    if (!isNumeric(cells(S - 1, RunColumn::AA)))
        return Ended{};
    const double aaCur = converted(cells(S, RunColumn::AA));
    if (!isNumeric(cells(S, mode->markColumn)))
        return Ended{};
    const double curMark = converted(cells(S, mode->markColumn));

    const double sensitivity = checked(EtModel::sensitivity(pf));
    const double markExpected = checked(EtModel::etAtAltitude(refMark, aaRef, aaCur, sensitivity));
    const double offset = checked(markExpected - curMark);

    if (!isNumeric(cells(R, mode->finishColumn)))
        return Ended{};
    const double refFinish = converted(cells(R, mode->finishColumn));
    const double finishExpected =
        checked(EtModel::etAtAltitude(refFinish, aaRef, aaCur, sensitivity));
    const double completedET = checked(finishExpected - offset);

    const QString completed = format(completedET, "###.0000");
    const QString oldFinish = cells(S, mode->finishColumn);
    return Proposal{question(in, *mode, completed, oldFinish),
                    notesWithEntry(in, *mode, completed, oldFinish), S, mode->finishColumn,
                    completed};
}

} // namespace

Outcome compute(const Inputs& inputs) {
    try {
        return propose(inputs);
    } catch (const ComputeFault&) {
        return Fault{};
    }
}

Dialogs::Message faultMessage() {
    return {QStringLiteral("Unable to run complete this run!"),
            QStringLiteral("Tarnwick - Run Complete"), Dialogs::Icon::Critical,
            Dialogs::Buttons::Ok, Dialogs::Answer::Ok};
}

std::optional<Proposal> confirm(const Outcome& outcome, const AskUser& ask) {
    if (std::holds_alternative<Fault>(outcome)) {
        ask(faultMessage());
        return std::nullopt;
    }
    const auto* proposal = std::get_if<Proposal>(&outcome);
    if (!proposal || ask(proposal->question) != Dialogs::Answer::Yes)
        return std::nullopt;
    return *proposal;
}

} // namespace RunCompletion
