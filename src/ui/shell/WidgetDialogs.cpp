#include "ui/shell/WidgetDialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRegularExpression>

namespace {

QMessageBox::Icon boxIcon(Dialogs::Icon icon) {
    switch (icon) {
    case Dialogs::Icon::Information:
        return QMessageBox::Information;
    case Dialogs::Icon::Critical:
        return QMessageBox::Critical;
    case Dialogs::Icon::Question:
        return QMessageBox::Question;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

struct BoxButton {
    Dialogs::Answer answer;
    QMessageBox::StandardButton button;
};

QList<BoxButton> boxButtons(Dialogs::Buttons buttons) {
    switch (buttons) {
    case Dialogs::Buttons::OkCancel:
        return {{Dialogs::Answer::Ok, QMessageBox::Ok},
                {Dialogs::Answer::Cancel, QMessageBox::Cancel}};
    case Dialogs::Buttons::YesNo:
        return {{Dialogs::Answer::Yes, QMessageBox::Yes}, {Dialogs::Answer::No, QMessageBox::No}};
    case Dialogs::Buttons::Ok:
        break;
    }
    return {{Dialogs::Answer::Ok, QMessageBox::Ok}};
}

// A box closed without a button (Escape, the window's close box) answers as Cancel or No
// would, and a box with OK alone answers OK.
Dialogs::Answer closedAnswer(Dialogs::Buttons buttons) {
    switch (buttons) {
    case Dialogs::Buttons::OkCancel:
        return Dialogs::Answer::Cancel;
    case Dialogs::Buttons::YesNo:
        return Dialogs::Answer::No;
    case Dialogs::Buttons::Ok:
        break;
    }
    return Dialogs::Answer::Ok;
}

// While the program is busy the pointer is an hourglass; a dialog still gets the ordinary
// pointer, as the person has to use it.
class DialogPointer {
public:
    DialogPointer() : busy(QGuiApplication::overrideCursor() != nullptr) {
        if (busy)
            QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~DialogPointer() {
        if (busy)
            QGuiApplication::restoreOverrideCursor();
    }
    DialogPointer(const DialogPointer&) = delete;
    DialogPointer& operator=(const DialogPointer&) = delete;

private:
    const bool busy;
};

} // namespace

WidgetDialogs::WidgetDialogs() : previous(Dialogs::installed()) {
    Dialogs::install(this);
}

WidgetDialogs::~WidgetDialogs() {
    Dialogs::install(previous);
}

Dialogs::Answer WidgetDialogs::message(const Dialogs::Message& message) {
    QMessageBox box(boxIcon(message.icon), message.title, boxText(message.text),
                    QMessageBox::NoButton, QApplication::activeWindow());
    const QList<BoxButton> buttons = boxButtons(message.buttons);
    for (const BoxButton& button : buttons) {
        box.addButton(button.button);
        if (button.answer == message.defaultAnswer)
            box.setDefaultButton(button.button);
    }
    {
        DialogPointer pointer;
        box.exec();
    }
    for (const BoxButton& button : buttons) {
        if (box.clickedButton() == box.button(button.button))
            return button.answer;
    }
    return closedAnswer(message.buttons);
}

std::optional<Dialogs::FileChoice> WidgetDialogs::chooseFile(const Dialogs::FileRequest& request) {
    QFileDialog dialog(QApplication::activeWindow(), request.title, request.initialFolder);
    const QStringList filters = nameFilters(request.filter);
    dialog.setNameFilters(filters);
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size())
        dialog.selectNameFilter(filters[request.filterIndex - 1]);
    if (request.save) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        // Unless the request says otherwise, the program asks its own question before it
        // overwrites a file, or overwrites it without one.
        dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.confirmOverwrite);
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    DialogPointer pointer;
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QString path = dialog.selectedFiles().constFirst();
    return Dialogs::FileChoice{path, QFileInfo(path).fileName()};
}

std::optional<QColor> WidgetDialogs::chooseColor(const QColor& initial) {
    QColorDialog dialog(initial, QApplication::activeWindow());
    DialogPointer pointer;
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.selectedColor();
}

bool WidgetDialogs::choosePrinter(QPagedPaintDevice& device) {
    auto* printer = dynamic_cast<QPrinter*>(&device);
    if (!printer)
        return false;
    QPrintDialog dialog(printer, QApplication::activeWindow());
    DialogPointer pointer;
    return dialog.exec() == QDialog::Accepted;
}

// A new printer is the system's default one already; there must be one.
bool WidgetDialogs::usePrinter(QPagedPaintDevice& device) {
    auto* printer = dynamic_cast<QPrinter*>(&device);
    return printer && !QPrinterInfo::defaultPrinter().isNull();
}

QStringList nameFilters(const QString& filter) {
    static const QRegularExpression trailingPatterns(QStringLiteral("\\s*\\([^()]*\\)\\s*$"));
    QStringList filters;
    for (const auto& [description, pattern] : Dialogs::filterPairs(filter)) {
        QString text = description;
        text.remove(trailingPatterns);
        QStringList patterns = pattern.split(u';', Qt::SkipEmptyParts);
        // "*.*" means every file; where names need no dot that is "*".
        patterns.replaceInStrings(QRegularExpression(QStringLiteral("^\\*\\.\\*$")),
                                  QStringLiteral("*"));
        filters.append(QStringLiteral("%1 (%2)").arg(text, patterns.join(u' ')));
    }
    return filters;
}

QString boxText(const QString& text) {
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}
