#include "core/Dialogs.h"

namespace Dialogs {

namespace {
Presenter* installedPresenter = nullptr;
}

void Install(Presenter* presenter) {
    installedPresenter = presenter;
}

Presenter* Installed() {
    return installedPresenter;
}

Answer Show(const Message& message) {
    return installedPresenter ? installedPresenter->message(message) : message.defaultAnswer;
}

void Inform(const QString& text, const QString& title, Icon icon) {
    Show(Message{text, title, icon, Buttons::Ok, Answer::Ok});
}

std::optional<FileChoice> ChooseFile(const FileRequest& request) {
    return installedPresenter ? installedPresenter->chooseFile(request) : std::nullopt;
}

std::optional<QColor> ChooseColor(const QColor& initial) {
    return installedPresenter ? installedPresenter->chooseColor(initial) : std::nullopt;
}

bool ChoosePrinter(QPagedPaintDevice& printer) {
    return installedPresenter && installedPresenter->choosePrinter(printer);
}

bool UsePrinter(QPagedPaintDevice& printer) {
    return installedPresenter && installedPresenter->usePrinter(printer);
}

QList<QPair<QString, QString>> FilterPairs(const QString& filter) {
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
