#include "core/Dialogs.h"

namespace Dialogs {

namespace {
Seam* installedSeam = nullptr;
}

void Install(Seam* seam) {
    installedSeam = seam;
}

Seam* Installed() {
    return installedSeam;
}

Answer Show(const Message& message) {
    return installedSeam ? installedSeam->message(message) : message.defaultAnswer;
}

void Inform(const QString& text, const QString& title, Icon icon) {
    Show(Message{text, title, icon, Buttons::Ok, Answer::Ok});
}

std::optional<FileChoice> ChooseFile(const FileRequest& request) {
    return installedSeam ? installedSeam->chooseFile(request) : std::nullopt;
}

std::optional<QColor> ChooseColor(const QColor& initial) {
    return installedSeam ? installedSeam->chooseColor(initial) : std::nullopt;
}

bool ChoosePrinter(QPagedPaintDevice& printer) {
    return installedSeam && installedSeam->choosePrinter(printer);
}

bool UsePrinter(QPagedPaintDevice& printer) {
    return installedSeam && installedSeam->usePrinter(printer);
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
