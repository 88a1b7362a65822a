#include "ui/racelog/RaceLogWindow.h"

#include "charts/RunAnnotations.h"
#include "core/Dialogs.h"
#include "core/Hourglass.h"
#include "core/NumberText.h"
#include "core/ProgramFolder.h"
#include "core/Registry.h"
#include "exchange/RacepakFile.h"
#include "feed/WeatherStation.h"
#include "pager/PagerComposer.h"
#include "pager/PagerLogs.h"
#include "pages/PageDocument.h"
#include "pages/RaceLogPages.h"
#include "pages/Viewers.h"
#include "prediction/LogPrediction.h"
#include "racelog/ColumnTable.h"
#include "racelog/Database.h"
#include "racelog/RaceLogDefaults.h"
#include "racelog/RaceLogFileRequests.h"
#include "racelog/RaceLogSlots.h"
#include "racelog/RunEdits.h"
#include "ui/charts/StripChartWindow.h"
#include "ui/output/PagePrinting.h"
#include "ui/output/ViewerWindow.h"
#include "ui/prediction/PredictionCheckDialog.h"
#include "ui/racelog/LogSidePanel.h"
#include "ui/racelog/RunGrid.h"
#include "ui/racelog/ShowColumnMenu.h"
#include "ui/shell/WarningText.h"
#include "ui/shell/WindowPlacement.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>

namespace {

const QString PlacementKey = SettingKeys::placementPath(u"RaceLog");

// The corner cell of the grid tells whether the side panel is open.
const QString PanelClosedMark = QStringLiteral(">>>");
const QString PanelOpenMark = QStringLiteral("<<<");

} // namespace

RaceLogWindow::RaceLogWindow(WeatherStation& station, RunClipboard::Runs& clipboard,
                             QWidget* parent)
    : QWidget(parent), station(station) {
    setObjectName(QStringLiteral("frmLog"));
    sidePanel = new LogSidePanel(this);
    sidePanel->hide();
    sidePanel->showLog(log);
    grid = new RunGrid(station, clipboard, log, this);
    grid->setObjectName(QStringLiteral("gridLog"));
    showColumnMenu = new ShowColumnMenu(*grid, this);
    grid->setShowColumnMenu(showColumnMenu);
    staleLabel = new QLabel(this);
    staleLabel->setObjectName(QStringLiteral("lblStale"));
    staleLabel->hide();
    showAsWarning(*staleLabel, true);
    addUndoCommands();
    followPrediction();

    connect(grid, &RunGrid::panelToggleRequested, this, &RaceLogWindow::togglePanel);
    connect(grid, &RunGrid::panelTabRequested, this, &RaceLogWindow::showPanelTab);
    connect(grid, &RunGrid::referenceRunRequested, this,
            [this](int row) { selectReferenceRun(row - 1); });
    connect(grid, &RunGrid::runCompleteRequested, this, &RaceLogWindow::completeRun);
    connect(grid->rowMenu()->findChild<QAction*>(QStringLiteral("miRaceLog")), &QAction::triggered,
            this, [this] {
                showPages([this](PageDocument& pages) {
                    RaceLogPages::showTimes(pages, log, grid->shownColumns());
                });
            });
    connect(grid->rowMenu()->findChild<QAction*>(QStringLiteral("miIncrementalTimes")),
            &QAction::triggered, this, [this] {
                showPages([this](PageDocument& pages) {
                    RaceLogPages::showIncrementalTimes(pages, log);
                });
            });
    connect(grid->rowMenu()->findChild<QAction*>(QStringLiteral("miAnnotations")),
            &QAction::triggered, this, &RaceLogWindow::annotateCharts);
    connect(grid->rowMenu()->findChild<QAction*>(QStringLiteral("miRacepak")), &QAction::triggered,
            this, &RaceLogWindow::handOverToRacepak);
    connect(grid->rowMenu()->findChild<QAction*>(QStringLiteral("miPredictionCheck")),
            &QAction::triggered, this, [this] {
                grid->commitCellEdit();
                PredictionCheckDialog::showFor(log, this);
            });
    // An emptied list selects nothing; it is about to be filled again.
    connect(sidePanel->referenceRunList, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            selectReferenceRun(index);
    });
    connect(sidePanel, &LogSidePanel::pageIdentifierLeft, this, &RaceLogWindow::settleCaption);
    connect(sidePanel, &LogSidePanel::predictRequested, this, [this] {
        grid->commitCellEdit();
        updatePredictions();
    });
    connect(sidePanel->pagerPredictionsBox, &QCheckBox::clicked, this,
            &RaceLogWindow::warnOfManyPagingLogs);
}

RaceLogWindow::~RaceLogWindow() {
    // The grid goes first: it works on the run table and the reference run list. The window
    // stops painting behind it before it goes.
    grid->viewport()->removeEventFilter(this);
    delete grid;
    releaseSlot();
}

void RaceLogWindow::load(const QColor& mainBackground) {
    giveUsableSize();
    Settings::loadWindowPlacement(PlacementKey, placedWindow());
    correctPlacement();
    setupGrid();
    sidePanel->fillRaceTracks();
    applyTypeDefaults();
    takeBackground(mainBackground);
    gridLeft = grid->x();
    arrange();
    // What the log starts from is no change of the user's.
    log.settle();
}

// Undo and Redo stand first in both menus of the run table, and their keys work anywhere in
// the window; an open cell editor or text field takes back its own typing first. Chosen from a
// menu while a cell's editor is open, they first write the cell, so what was typed becomes a
// step like any other: Undo then takes it back and Redo brings it again.
void RaceLogWindow::addUndoCommands() {
    QUndoStack& steps = log.undoStack();
    QAction* undo = steps.createUndoAction(this, QStringLiteral("Undo"));
    undo->setObjectName(QStringLiteral("miUndo"));
    undo->setShortcuts(QKeySequence::Undo);
    QAction* redo = steps.createRedoAction(this, QStringLiteral("Redo"));
    redo->setObjectName(QStringLiteral("miRedo"));
    redo->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    for (const auto& [action, step] :
         {std::pair{undo, &QUndoStack::undo}, {redo, &QUndoStack::redo}}) {
        disconnect(action, &QAction::triggered, &steps, step);
        connect(action, &QAction::triggered, this, [this, run = step] {
            grid->commitCellEdit();
            (log.undoStack().*run)();
        });
    }
    for (QAction* action : {undo, redo}) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
    }
    for (QMenu* menu : {grid->columnMenu(), grid->rowMenu()}) {
        QAction* first = menu->actions().value(0);
        menu->insertActions(first, {undo, redo});
        menu->insertSeparator(first);
    }
}

// The caption shows the last line published; a fault is told in a box, after the line it
// left standing.
void RaceLogWindow::followPrediction() {
    PublishedPrediction& prediction = log.prediction();
    connect(&prediction, &PublishedPrediction::published, this,
            [this](const PredictionLine& line) { setWindowTitle(line.caption); });
    connect(&prediction, &PublishedPrediction::failed, this,
            [] { Dialogs::show(PredictionModel::faultMessage()); });
    connect(&prediction, &PublishedPrediction::staleChanged, this, &RaceLogWindow::showStale);
    // A new track offset moves the ET the caption shows at once, not at the next line of
    // weather.
    connect(&log, &RaceLog::fieldChanged, this, [this](RaceLog::Field field) {
        if (field == RaceLog::Field::TrackOffset && log.prediction().line().predictedEt)
            updatePredictions();
    });
}

// A race log is of use when it shows its side panel beside the run numbers and a few
// columns; that is the least it can be made. Where no placement is stored yet it opens with
// every field of the panel and ten runs in view.
void RaceLogWindow::giveUsableSize() {
    const int rowHeight = grid->verticalHeader()->defaultSectionSize();
    const int gridFrame = grid->horizontalHeader()->sizeHint().height() +
                          grid->horizontalScrollBar()->sizeHint().height() + 2 * grid->frameWidth();
    const QSize least(sidePanel->width() + 240,
                      qMax(sidePanel->sizeHint().height(), gridFrame + 3 * rowHeight));
    const QSize usual(sidePanel->width() + 480,
                      qMax(sidePanel->heightShowingEveryField(), gridFrame + 10 * rowHeight));
    setMinimumSize(least);
    QWidget* frame = placedWindow();
    frame->resize(frame->minimumSizeHint() + (usual - least));
}

// A stored placement smaller than the least usable size grows to it, and one that lies
// wholly outside the main window's client area comes back into its corner.
void RaceLogWindow::correctPlacement() {
    QWidget* frame = placedWindow();
    frame->resize(frame->size().expandedTo(frame->minimumSizeHint()));
    const QWidget* area = frame->parentWidget();
    if (frame != this && area && !area->rect().isEmpty() &&
        !area->rect().intersects(frame->geometry()))
        frame->move(0, 0);
}

// The grid as a new window shows it: without the columns the user chose not to see.
void RaceLogWindow::setupGrid() {
    for (const ColumnTable::Column& column : ColumnTable::Columns) {
        // Only an exact "0" hides: a column never chosen either way is shown.
        if (column.canBeHidden() &&
            Registry::get(SettingKeys::LogColumns, column.visibilityValue.toString()) == u"0")
            showColumnMenu->toggleColumn(column.number);
    }
}

// A log of a named type is called by its type and starts from that type's defaults; a log of
// no type starts from the general defaults. Values that are no number are passed over.
void RaceLogWindow::applyTypeDefaults() {
    if (!raceLogType.isEmpty()) {
        sidePanel->pageIdentifierField->setText(raceLogType);
        setWindowTitle(raceLogType);
    }
    const QString defaults = RaceLogDefaults::typeKey(raceLogType);
    const auto takeNumber = [&defaults](const char* name, QLineEdit* field) {
        const QString value = Registry::get(defaults, QLatin1String(name));
        if (NumberText::isNumeric(value))
            field->setText(value);
    };
    takeNumber("PF", sidePanel->pfField);
    takeNumber("TSR", sidePanel->tsrField);
    const QString carNumber = Registry::get(defaults, QStringLiteral("CarNumber"));
    if (carNumber != Registry::NoKeyValue)
        sidePanel->carNumberField->setText(carNumber.trimmed());
    takeNumber("TargetET", sidePanel->targetEtField);
    selectReferenceRun(0);
}

void RaceLogWindow::takeBackground(const QColor& color) {
    QPalette palette = sidePanel->palette();
    palette.setColor(QPalette::Window, color);
    sidePanel->setPalette(palette);
    sidePanel->setAutoFillBackground(true);
    gridBackdrop = color;
    grid->viewport()->installEventFilter(this);
    grid->viewport()->update();
}

bool RaceLogWindow::eventFilter(QObject* watched, QEvent* event) {
    // The type comes first: while the grid is being destroyed its viewport still sends events,
    // and the grid may then no longer be asked for anything.
    if (event->type() == QEvent::Paint && watched == grid->viewport())
        paintGridBackdrop();
    return QWidget::eventFilter(watched, event);
}

// The area of the grid beyond its last column and its last run: the cells keep their own
// colours, painted over this.
void RaceLogWindow::paintGridBackdrop() {
    QWidget* area = grid->viewport();
    const QHeaderView* columns = grid->horizontalHeader();
    const QHeaderView* rows = grid->verticalHeader();
    const QRect cells(0, 0, columns->length() - columns->offset(), rows->length() - rows->offset());
    QPainter painter(area);
    painter.setClipRegion(QRegion(area->rect()).subtracted(cells));
    painter.fillRect(area->rect(), gridBackdrop);
}

Database::LoadResult RaceLogWindow::loadFile(const QString& path) {
    const Database::LoadResult loaded = log.load(path);
    if (!loaded)
        return loaded;
    const RaceLogData& content = log.content();
    if (!content.pageIdentifier.isEmpty())
        setWindowTitle(content.pageIdentifier);
    if (content.refRunIndex >= 0)
        grid->setCurrentRunCell(content.refRunIndex + 1, 1);
    if (loaded.unreadValues > 0)
        warnOfUnreadValues(path, loaded.unreadValues);
    return loaded;
}

// Said once, at the load; the original is kept at the first save so nothing of the file is
// lost by writing back only what could be read.
void RaceLogWindow::warnOfUnreadValues(const QString& path, int count) {
    keepOriginalOf = path;
    Dialogs::inform(
        QStringLiteral("%1 value(s) of %2 could not be read and were left empty.\r\n"
                       "The first save keeps the original file as %3.")
            .arg(count)
            .arg(QFileInfo(path).fileName(), QFileInfo(Database::backupPath(path)).fileName()),
        QStringLiteral("Tarnwick - Load Race Log"), Dialogs::Icon::Exclamation);
}

// The copy is made before anything is written; when it cannot be made nothing is written.
bool RaceLogWindow::keepOriginal(const QString& target) {
    if (keepOriginalOf.isEmpty() || target != keepOriginalOf || !QFileInfo::exists(target))
        return true;
    const QString backup = Database::backupPath(target);
    QFile::remove(backup);
    if (!QFile::copy(target, backup)) {
        Dialogs::inform(QStringLiteral("Unable to keep a copy of the original race log as ") +
                            backup + QStringLiteral("!\r\nNothing was saved."),
                        QStringLiteral("Race Log Table Data"), Dialogs::Icon::Critical);
        return false;
    }
    keepOriginalOf.clear();
    return true;
}

void RaceLogWindow::logFile(const QString& path, const QString& title) {
    log.setFile(path, title);
}

bool RaceLogWindow::saveLog(const QString& path) {
    Hourglass busy;
    grid->commitCellEdit();
    QString target = path;
    if (!path.isEmpty()) {
        const Dialogs::Answer answer = Dialogs::show(
            {QStringLiteral("Do you want to save the information for:\r\n  ") + windowTitle(),
             QStringLiteral("Save Race Log?"), Dialogs::Icon::Question, Dialogs::Buttons::YesNo,
             Dialogs::Answer::Yes});
        if (answer == Dialogs::Answer::No)
            return true;
    } else {
        const std::optional<Dialogs::FileChoice> chosen = Dialogs::chooseFile(
            RaceLogFileRequests::saveRequest(windowTitle(), sidePanel->raceTrackList->currentText(),
                                             QDate::currentDate(), ProgramFolder::forUserFiles()));
        // Cancel is how a log that was never saved is thrown away: the window may close.
        if (!chosen)
            return true;
        const Dialogs::FileChoice file = RaceLogFileRequests::withExtension(*chosen);
        RaceLogFileRequests::rememberFolder(file.path);
        logFile(file.path, file.title);
        target = file.path;
    }
    if (!keepOriginal(target))
        return false;
    const Database::SaveResult result = log.save(target);
    if (result == Database::SaveResult::Ok)
        return true;
    const Database::SaveFailureMessage failure = Database::saveFailureMessage(result);
    Dialogs::inform(failure.text, failure.title, Dialogs::Icon::Critical);
    return false;
}

QString RaceLogWindow::fileExtension(const QString& name) const {
    return RaceLogFileRequests::fileExtension(name);
}

void RaceLogWindow::paintRowBands() {
    log.runs().paintRowBands();
}

void RaceLogWindow::updatePredictions() {
    LogPrediction::publish(log, station.predictionSettings().deltaVP);
}

// 0 seconds: the weather is live again.
void RaceLogWindow::showStale(int seconds) {
    if (seconds > 0)
        staleLabel->setText(QStringLiteral("Prediction stale: no weather for %1 s").arg(seconds));
    if (staleLabel->isHidden() == (seconds == 0))
        return;
    staleLabel->setVisible(seconds > 0);
    arrange();
}

// The box has already changed when this is asked; the warning does not undo it.
void RaceLogWindow::warnOfManyPagingLogs() {
    if (const auto warning = PagerComposer::pagerPredictionsWarning(
            PagerLogs::pagerSlots(station.raceLogs().bySlot())))
        Dialogs::show(*warning);
}

// A run shut off before the finish gets the finish the reference run says it would have
// made; the user is asked first, and the notes keep what the finish cell held.
void RaceLogWindow::completeRun(int row) {
    const std::optional<RunCompletion::Proposal> proposal =
        RunCompletion::confirm(LogPrediction::completeRun(log, row), Dialogs::show);
    if (proposal)
        RunEdits::completeRun(log, proposal->finishRow, proposal->finishColumn,
                              proposal->finishText, proposal->newNotes);
}

// A log with no change since it was saved, loaded or made closes without a question. A log
// whose file cannot be written stays open; the window is released all the same, so a log that
// failed to save on closing is no longer among the open logs.
void RaceLogWindow::closeEvent(QCloseEvent* event) {
    if (!log.isModified() || saveLog(log.filePath()))
        event->accept();
    else
        event->ignore();
    Settings::saveWindowPlacement(PlacementKey, placedWindow());
    releaseSlot();
}

void RaceLogWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void RaceLogWindow::togglePanel() {
    if (!panelOpen)
        openPanel(sidePanel->currentIndex());
    else
        closePanel();
}

void RaceLogWindow::showPanelTab(int tab) {
    if (!panelOpen)
        openPanel(tab);
    else
        sidePanel->setCurrentIndex(tab);
}

void RaceLogWindow::openPanel(int tab) {
    grid->commitCellEdit();
    panelOpen = true;
    grid->setCornerText(PanelOpenMark);
    sidePanel->setCurrentIndex(tab);
    sidePanel->show();
    arrange();
}

void RaceLogWindow::closePanel() {
    sidePanel->hide();
    grid->setFocus();
    panelOpen = false;
    grid->setCornerText(PanelClosedMark);
    arrange();
}

// The panel stands at the left edge, the whole height; the grid takes the rest of the width
// beside it, or all of it while the panel is closed. The stale mark, while shown, stands
// above the grid.
void RaceLogWindow::arrange() {
    if (placedWindow()->isMinimized())
        return;
    sidePanel->setGeometry(0, 0, sidePanel->width(), height());
    const int left = sidePanel->isHidden() ? gridLeft : sidePanel->geometry().right() + 1;
    const int gridWidth = width() > sidePanel->width() ? qMax(width() - left, 0) : grid->width();
    const int top = staleLabel->isHidden() ? 0 : staleLabel->sizeHint().height();
    staleLabel->setGeometry(left, 0, gridWidth, top);
    grid->setGeometry(left, top, gridWidth, height() - top);
}

// A log without a page identifier is called by its slot.
void RaceLogWindow::settleCaption(const QString& pageIdentifier) {
    setWindowTitle(pageIdentifier.isEmpty() ? RaceLogSlots::numberedCaption(log.slot())
                                            : pageIdentifier);
}

// The list in the panel follows the log; a run missing from it is reported.
void RaceLogWindow::selectReferenceRun(int index) {
    if (!log.selectReferenceRun(index)) {
        Dialogs::inform(QStringLiteral("Error on combo box ref run selection!"),
                        QStringLiteral("Race Log"), Dialogs::Icon::Critical);
        return;
    }
    grid->setCurrentRunCell(index + 1, 1);
}

// A table of the runs in the page viewer, which takes the place of the one shown before. It
// is named for the log's page identifier and date.
void RaceLogWindow::showPages(const std::function<void(PageDocument&)>& layout) {
    grid->commitCellEdit();
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (!frame || !frame->mdiArea())
        return;
    PageDocument pages = Viewers::newDocument(Viewers::Kind::Pages);
    layout(pages);
    ViewerWindow::open(*frame->mdiArea(), Viewers::Kind::Pages, std::move(pages),
                       log.field(RaceLog::Field::PageIdentifier) + u' ' +
                           log.field(RaceLog::Field::Date));
}

// Every run of the log on each open strip chart, at its time and its weather. A value that
// cannot be worked out ends the command; the marks made until then stay.
void RaceLogWindow::annotateCharts() {
    grid->commitCellEdit();
    const RunAnnotations::Marks marks = RunAnnotations::marks(
        log.runs(), log.field(RaceLog::Field::PageIdentifier),
        [this](ViewTable::View view) { return station.views().isOpen(view); });
    for (const RunAnnotations::Mark& mark : marks.marks) {
        if (auto* chart = dynamic_cast<StripChartWindow*>(station.views().at(mark.view)))
            chart->annotate(mark.plot, mark.x, mark.y, mark.text);
    }
    if (marks.failed)
        Dialogs::inform(QStringLiteral("Unable to load all annotations!"),
                        QStringLiteral("Tarnwick - Annotations"), Dialogs::Icon::Critical);
}

// The weather of the selected run to the Racepak software, which reads it from its file. A
// run that gives no correction factor leaves the file as it was; neither outcome is told.
void RaceLogWindow::handOverToRacepak() {
    grid->commitCellEdit();
    RacepakFile::write(log.runs(), grid->currentRunRow(), QDateTime::currentDateTime());
}

PageDocument RaceLogWindow::timesPages() {
    grid->commitCellEdit();
    PageDocument pages = Viewers::newDocument(Viewers::Kind::Pages);
    RaceLogPages::showTimes(pages, log, grid->shownColumns());
    return pages;
}

void RaceLogWindow::printDocument() {
    PagePrinting::printPages(timesPages());
}

void RaceLogWindow::saveAsPdf() {
    PagePrinting::savePagesAsPdf(timesPages(), Viewers::Kind::Pages);
}

QWidget* RaceLogWindow::placedWindow() {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        return frame;
    return this;
}

void RaceLogWindow::releaseSlot() {
    station.raceLogs().close(&log);
}
