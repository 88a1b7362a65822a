#include "core/Dialogs.h"

namespace Dialogs {

namespace {
Presenter* installedPresenter = nullptr;
}

void install(Presenter* presenter) {
    installedPresenter = presenter;
}

Presenter* installed() {
    return installedPresenter;
}

Answer show(const Message& message) {
    return installedPresenter ? installedPresenter->message(message) : message.defaultAnswer;
}

void inform(const QString& text, const QString& title, Icon icon) {
    show(Message{text, title, icon, Buttons::Ok, Answer::Ok});
}

std::optional<FileChoice> chooseFile(const FileRequest& request) {
    return installedPresenter ? installedPresenter->chooseFile(request) : std::nullopt;
}

std::optional<QColor> chooseColor(const QColor& initial) {
    return installedPresenter ? installedPresenter->chooseColor(initial) : std::nullopt;
}

bool choosePrinter(QPagedPaintDevice& printer) {
    return installedPresenter && installedPresenter->choosePrinter(printer);
}

bool usePrinter(QPagedPaintDevice& printer) {
    return installedPresenter && installedPresenter->usePrinter(printer);
}

QList<QPair<QString, QString>> filterPairs(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QList<QPair<QString, QString>> pairs;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].trimmed().isEmpty())
            continue;
        pairs.append({parts[i].trimmed(), parts[i + 1].trimmed()});
    }
    return pairs;
}

} // namespace Dialogs
