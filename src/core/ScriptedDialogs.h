#pragma once

#include "core/Dialogs.h"

#include <QList>
#include <QQueue>
#include <QTextStream>

// A dialog presenter that answers from a script instead of a person. Tests install it in the
// process; a process started with TARNWICK_SCRIPTED_DIALOGS set installs it too, reads its
// answers from that variable ("Ok,Yes,No") and prints every box it answers to standard
// output as "MESSAGE: <title> | <text>", so a test that starts the real program can see it.
class ScriptedDialogs : public Dialogs::Presenter {
public:
    ScriptedDialogs();
    ~ScriptedDialogs() override;

    // Answers for the next boxes, in order; when they run out a box answers its default.
    void queueAnswer(Dialogs::Answer answer) { answers.enqueue(answer); }
    // Files for the next file dialogs; an empty path stands for Cancel.
    void queueFile(const QString& path) { files.enqueue(path); }
    void queueColor(const QColor& color) { colors.enqueue(color); }
    // Answers for the next print dialogs; when they run out a print dialog is cancelled.
    void queuePrinter(bool accepted) { printers.enqueue(accepted); }
    void echoTo(QTextStream* stream) { echo = stream; }

    // Reads answers from a text such as "Ok,Cancel,Yes".
    void queueAnswers(const QString& script);

    Dialogs::Answer message(const Dialogs::Message& message) override;
    std::optional<Dialogs::FileChoice> chooseFile(const Dialogs::FileRequest& request) override;
    std::optional<QColor> chooseColor(const QColor& initial) override;
    bool choosePrinter(QPagedPaintDevice& printer) override;
    // A print without a dialog takes the same answers as the print dialogs.
    bool usePrinter(QPagedPaintDevice& printer) override;

    QList<Dialogs::Message> messages; // every box shown, in order
    QList<Dialogs::FileRequest> fileRequests;
    int printRequests = 0;      // print dialogs shown
    int quietPrintRequests = 0; // prints without a dialog

private:
    QQueue<Dialogs::Answer> answers;
    QQueue<QString> files;
    QQueue<QColor> colors;
    QQueue<bool> printers;
    QTextStream* echo = nullptr;
    Dialogs::Presenter* previous = nullptr;
};
