#pragma once

#include "core/Dialogs.h"

#include <QStringList>

// The dialog presenter that shows real windows to the person at the screen: message boxes, the
// file dialog and the colour dialog. It installs itself for as long as it lives.
class WidgetDialogs : public Dialogs::Presenter {
public:
    WidgetDialogs();
    ~WidgetDialogs() override;
    WidgetDialogs(const WidgetDialogs&) = delete;
    WidgetDialogs& operator=(const WidgetDialogs&) = delete;

    Dialogs::Answer message(const Dialogs::Message& message) override;
    std::optional<Dialogs::FileChoice> chooseFile(const Dialogs::FileRequest& request) override;
    std::optional<QColor> chooseColor(const QColor& initial) override;
    bool choosePrinter(QPagedPaintDevice& printer) override;
    bool usePrinter(QPagedPaintDevice& printer) override;

private:
    Dialogs::Presenter* previous = nullptr;
};

// The file dialog's name filters for a filter in the program's form, "Tarnwick Race Log Files
// (*.trl) |*.trl|All Files (*.*) |*.*|": each description keeps its text and is followed by
// its patterns in parentheses, so the dialog filters by the patterns the program states;
// "*.*" becomes "*", every file, as names need no dot here.
QStringList nameFilters(const QString& filter);

// A message's text as the box shows it: CR LF joined lines become lines.
QString boxText(const QString& text);
