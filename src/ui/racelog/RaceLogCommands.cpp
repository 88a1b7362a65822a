#include "ui/racelog/RaceLogCommands.h"

#include "core/Dialogs.h"
#include "core/ProgramFolder.h"
#include "exchange/ExcelExport.h"
#include "feed/WeatherStation.h"
#include "prediction/LogPrediction.h"
#include "racelog/RaceLogDefaults.h"
#include "racelog/RaceLogFileRequests.h"
#include "racelog/RaceLogSlots.h"
#include "ui/output/PrintableWindow.h"
#include "ui/racelog/ConfigurationDialog.h"
#include "ui/racelog/LogColumnsDialog.h"
#include "ui/racelog/RaceLogWindow.h"
#include "ui/shell/MainWindow.h"

#include <QAction>
#include <QDate>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

namespace {

// The type tools are numbered from here, clear of the tools of the command table.
constexpr int FirstTypeToolId = 10000;

} // namespace

RaceLogCommands::RaceLogCommands(MainWindow& main, WeatherStation& station)
    : QObject(&main), main(main), station(station) {
    main.setCommand(QStringLiteral("miNewRaceLog"), [this] { newRaceLog(QString()); });
    main.setCommand(QStringLiteral("miOpenRaceLog"), [this] { openRaceLog(); });
    main.setCommand(QStringLiteral("miClose"), [this] { closeActive(); });
    main.setCommand(QStringLiteral("miSave"), [this] { saveActive(false); });
    main.setCommand(QStringLiteral("miSaveAs"), [this] { saveActive(true); });
    main.setCommand(QStringLiteral("miSaveAll"), [this] { saveAll(); });
    main.setCommand(QStringLiteral("miPrint"),
                    [this] { runOnActive(&PrintableWindow::printDocument); });
    main.setCommand(QStringLiteral("miPDFExport"),
                    [this] { runOnActive(&PrintableWindow::saveAsPdf); });
    main.setCommand(QStringLiteral("miExcelExport"), [this] { exportToExcel(); });
    main.setCommand(QStringLiteral("miSelectColumns"), [this] {
        LogColumnsDialog dialog(&this->main);
        dialog.exec();
    });
    main.setCommand(QStringLiteral("miConfiguration"), [this] {
        ConfigurationDialog dialog(
            [this](int frequency) { this->main.setPagerFrequency(frequency); }, &this->main);
        dialog.exec();
    });
    main.setCommand(QStringLiteral("btnPredict"), [this] { predictAll(); });
    main.setNewRaceLog([this](const QString& type) { newRaceLog(type); });
    main.setRaceLogLoader(
        [this](const QString& path) { return loadRaceLog(path, QFileInfo(path).fileName()); });
    main.setRaceLogListing([this] { createRaceLogListing(); });
}

void RaceLogCommands::createRaceLogListing() {
    delete main.findChild<QMenu*>(QStringLiteral("RaceLogType"));
    auto* band = new QMenu(&main);
    band->setObjectName(QStringLiteral("RaceLogType"));
    const QStringList types = RaceLogDefaults::raceLogTypes();
    int id = FirstTypeToolId;
    for (const QString& type : types) {
        QAction* tool = band->addAction(type);
        tool->setObjectName(QStringLiteral("new") + type);
        tool->setData(id++);
        connect(tool, &QAction::triggered, this,
                [this, name = tool->objectName()] { main.dispatch(name); });
    }
    if (types.isEmpty())
        return;
    // One tool stands in the File menu and on the tool bar: with the band it opens the list
    // in both, and the tool bar's button opens it at the first click.
    QAction* newRaceLog = main.findChild<QAction*>(QStringLiteral("miNewRaceLog"));
    newRaceLog->setMenu(band);
    if (auto* bar = main.findChild<QToolBar*>(QStringLiteral("tbMain"))) {
        if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(newRaceLog)))
            button->setPopupMode(QToolButton::InstantPopup);
    }
}

void RaceLogCommands::newRaceLog(const QString& raceLogType) {
    showLog(createLog(raceLogType));
}

RaceLogLoad RaceLogCommands::loadRaceLog(const QString& path, const QString& title) {
    if (path.isEmpty() || title.isEmpty() || !QFileInfo(path).isFile())
        return {};
    RaceLogWindow* log = createLog(QString());
    log->logFile(path, title);
    const Database::LoadResult loaded = log->loadFile(path);
    if (!loaded) {
        // The frame takes the window with it, and the window gives its slot back.
        delete log->parentWidget();
        if (loaded.status == Database::LoadResult::Status::MissingColumn)
            return {false, QStringLiteral("The file has no column ") + loaded.missingColumn +
                               QStringLiteral(".")};
        return {false, QStringLiteral("The file is not a race log.")};
    }
    log->paintRowBands();
    showLog(log);
    return {true, {}};
}

// A new window in the first free slot, loaded and still hidden.
RaceLogWindow* RaceLogCommands::createLog(const QString& raceLogType) {
    auto* log = new RaceLogWindow(station, clipboard);
    main.mdiArea()->addSubWindow(log);
    station.raceLogs().open(&log->document());
    log->raceLogType = raceLogType;
    log->load(main.mdiArea()->background().color());
    return log;
}

void RaceLogCommands::showLog(RaceLogWindow* log) {
    if (log->windowTitle().isEmpty())
        log->setWindowTitle(RaceLogSlots::numberedCaption(log->document().slot()));
    log->parentWidget()->show();
    log->show();
}

QMdiSubWindow* RaceLogCommands::activeChild() const {
    return main.mdiArea()->currentSubWindow();
}

RaceLogWindow* RaceLogCommands::activeLog() const {
    QMdiSubWindow* child = activeChild();
    return child ? qobject_cast<RaceLogWindow*>(child->widget()) : nullptr;
}

// The window that shows an open log; none for an empty slot.
RaceLogWindow* RaceLogCommands::windowOf(const RaceLog* log) const {
    for (QMdiSubWindow* child : main.mdiArea()->subWindowList()) {
        auto* window = qobject_cast<RaceLogWindow*>(child->widget());
        if (log && window && &window->document() == log)
            return window;
    }
    return nullptr;
}

void RaceLogCommands::openRaceLog() {
    const std::optional<Dialogs::FileChoice> chosen =
        Dialogs::chooseFile(RaceLogFileRequests::openRequest());
    if (!chosen)
        return;
    RaceLogFileRequests::rememberFolder(chosen->path);
    main.openFile(chosen->path);
}

void RaceLogCommands::closeActive() {
    if (QMdiSubWindow* child = activeChild())
        child->close();
}

void RaceLogCommands::saveActive(bool choosePath) {
    if (RaceLogWindow* log = activeLog())
        log->saveLog(choosePath ? QString() : log->document().filePath());
}

// Every open log in slot order; a log that has no file yet asks for one.
void RaceLogCommands::saveAll() {
    const OpenRaceLogs& logs = station.raceLogs();
    for (int slot = 0; slot < logs.slotCount(); ++slot) {
        if (RaceLogWindow* window = windowOf(logs.at(slot)))
            window->saveLog(window->document().filePath());
    }
}

// A failed prediction shows a box, during which a log may close: the slots are looked at
// afresh for each log.
void RaceLogCommands::predictAll() {
    const OpenRaceLogs& logs = station.raceLogs();
    for (int slot = 0; slot < logs.slotCount(); ++slot) {
        if (RaceLog* log = logs.at(slot))
            LogPrediction::publish(*log, station.predictionSettings().deltaVP);
    }
}

// The spreadsheet export takes the race log in front. Cancelling the dialog ends the command
// without a word; a template or target that fails is told to the user.
void RaceLogCommands::exportToExcel() {
    RaceLogWindow* log = activeLog();
    if (!log) {
        Dialogs::inform(QStringLiteral("The Active Form does not support this feature."),
                        QStringLiteral("Tarnwick - Excel Export"), Dialogs::Icon::Information);
        return;
    }
    const std::optional<Dialogs::FileChoice> chosen = Dialogs::chooseFile(
        ExcelExport::saveRequest(QDate::currentDate(), ProgramFolder::forUserFiles()));
    if (!chosen)
        return;
    RaceLogFileRequests::rememberFolder(chosen->path);
    if (const std::optional<QString> failure = ExcelExport::write(
            log->document(), ExcelExport::withExtension(chosen->path), ExcelExport::templatePath()))
        Dialogs::inform(*failure, QStringLiteral("Tarnwick - Excel Export"),
                        Dialogs::Icon::Exclamation);
}

// Print and PDF export belong to the window in front, if it can be printed.
void RaceLogCommands::runOnActive(void (PrintableWindow::*command)()) {
    QMdiSubWindow* child = activeChild();
    if (auto* window = dynamic_cast<PrintableWindow*>(child ? child->widget() : nullptr)) {
        (window->*command)();
        return;
    }
    Dialogs::inform(QStringLiteral("The Active Form does not support this feature."),
                    QStringLiteral("Tarnwick - Print"), Dialogs::Icon::Information);
}
