#include "core/ScriptedDialogs.h"

#include <QFileInfo>

ScriptedDialogs::ScriptedDialogs() : previous(Dialogs::installed()) {
    Dialogs::install(this);
}

ScriptedDialogs::~ScriptedDialogs() {
    Dialogs::install(previous);
}

void ScriptedDialogs::queueAnswers(const QString& script) {
    for (const QString& word : script.split(u',', Qt::SkipEmptyParts)) {
        const QString w = word.trimmed().toLower();
        if (w == u"ok")
            queueAnswer(Dialogs::Answer::Ok);
        else if (w == u"cancel")
            queueAnswer(Dialogs::Answer::Cancel);
        else if (w == u"yes")
            queueAnswer(Dialogs::Answer::Yes);
        else if (w == u"no")
            queueAnswer(Dialogs::Answer::No);
    }
}

Dialogs::Answer ScriptedDialogs::message(const Dialogs::Message& message) {
    messages.append(message);
    if (echo) {
        QString text = message.text;
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\\n"));
        *echo << "MESSAGE: " << message.title << " | " << text << Qt::endl;
    }
    return answers.isEmpty() ? message.defaultAnswer : answers.dequeue();
}

std::optional<Dialogs::FileChoice>
ScriptedDialogs::chooseFile(const Dialogs::FileRequest& request) {
    fileRequests.append(request);
    if (files.isEmpty())
        return std::nullopt;
    const QString path = files.dequeue();
    if (path.isEmpty())
        return std::nullopt;
    return Dialogs::FileChoice{path, QFileInfo(path).fileName()};
}

std::optional<QColor> ScriptedDialogs::chooseColor(const QColor&) {
    if (colors.isEmpty())
        return std::nullopt;
    return colors.dequeue();
}

bool ScriptedDialogs::choosePrinter(QPagedPaintDevice&) {
    ++printRequests;
    return !printers.isEmpty() && printers.dequeue();
}

bool ScriptedDialogs::usePrinter(QPagedPaintDevice&) {
    ++quietPrintRequests;
    return !printers.isEmpty() && printers.dequeue();
}
