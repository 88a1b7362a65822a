#pragma once

#include <QColor>
#include <QString>
#include <optional>

class QPagedPaintDevice;

// Every message box and file, print or colour dialog of the program goes through this one
// interface, the dialog presenter. The windows install a presenter that shows real dialogs; a
// test installs one that answers from a script, so no person is needed. With no presenter
// installed, a box answers its default.
namespace Dialogs {

enum class Icon { None, Information, Critical, Question, Exclamation };
enum class Buttons { Ok, OkCancel, YesNo };
enum class Answer { Ok, Cancel, Yes, No };

struct Message {
    QString text;
    QString title;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    Answer defaultAnswer = Answer::Ok; // the button that Enter presses
};

struct FileRequest {
    bool save = false;
    QString title;
    // The filter as the program states it: "Tarnwick Race Log Files (*.trl) |*.trl|All Files
    // (*.*) |*.*|", pairs of description and pattern, each ended by "|".
    QString filter;
    int filterIndex = 1;
    QString initialFolder;
    QString fileName;              // proposed name
    bool confirmOverwrite = false; // a save dialog asks before a chosen file is replaced
};

struct FileChoice {
    QString path;  // full path
    QString title; // file name without folder
};

class Presenter {
public:
    virtual ~Presenter() = default;
    virtual Answer message(const Message& message) = 0;
    // nullopt when the user cancels
    virtual std::optional<FileChoice> chooseFile(const FileRequest& request) = 0;
    virtual std::optional<QColor> chooseColor(const QColor& initial) = 0;
    // Sets up the printer as the user chooses; false when the user cancels.
    virtual bool choosePrinter(QPagedPaintDevice& printer) = 0;
    // Readies the printer a command prints to without asking: the system's default printer.
    // False when there is none.
    virtual bool usePrinter(QPagedPaintDevice& printer) = 0;
};

// Install a presenter (nullptr removes it). The caller keeps ownership.
void install(Presenter* presenter);
Presenter* installed();

Answer show(const Message& message);
// A one-button information box, the most common kind.
void inform(const QString& text, const QString& title, Icon icon = Icon::Information);
std::optional<FileChoice> chooseFile(const FileRequest& request);
std::optional<QColor> chooseColor(const QColor& initial);
// With no presenter installed nothing is printed.
bool choosePrinter(QPagedPaintDevice& printer);
bool usePrinter(QPagedPaintDevice& printer);

// Splits a filter in the program's form into (description, pattern) pairs.
QList<QPair<QString, QString>> filterPairs(const QString& filter);

} // namespace Dialogs
