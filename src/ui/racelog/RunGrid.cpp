#include "ui/racelog/RunGrid.h"

#include "core/Dialogs.h"
#include "feed/WeatherStation.h"
#include "racelog/CellColor.h"
#include "racelog/ColumnTable.h"
#include "racelog/RaceLog.h"
#include "racelog/RunEdits.h"
#include "racelog/RunTable.h"
#include "racelog/TypedKey.h"
#include "ui/racelog/RunCellDelegate.h"
#include "ui/racelog/RunCommands.h"
#include "ui/racelog/RunMenus.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPersistentModelIndex>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <stdexcept>

namespace {

// The grid's own keys: Ctrl+C, Ctrl+V and Ctrl+X work on the whole run.
constexpr int CopyCode = 3;
constexpr int PasteCode = 22;
constexpr int CutCode = 24;
// A double click opens the editor as a blank typed would.
constexpr int DoubleClickCode = 32;

bool isClipboardCode(int code) {
    return code == CopyCode || code == PasteCode || code == CutCode;
}

} // namespace

// What a run grid keeps besides the view: the race log it shows, the cell editors, the menus,
// the corner's text, and what the last mouse press left behind.
struct RunGrid::Private {
    Private(WeatherStation& station, RunClipboard::Runs& clipboard, RaceLog& log, QWidget* grid)
        : station(station), clipboard(clipboard), log(log), table(log.runs()), menus(grid) {}

    WeatherStation& station;
    RunClipboard::Runs& clipboard;
    RaceLog& log;
    RunTable& table; // the log's runs
    RunMenus menus;
    RunCellDelegate* delegate = nullptr;
    // The corner cell, the handle of the side panel, and what it reads.
    QAbstractButton* corner = nullptr;
    QString cornerText;

    // The cell the last editor was opened on.
    QPersistentModelIndex editing;
    // The last press lay outside the run cells: on a header, the corner or the empty area.
    bool mouseOutside = false;
    // The last press opened the row menu, so its release opens no column menu over it.
    bool rowMenuFromPress = false;
};

RunGrid::RunGrid(WeatherStation& station, RunClipboard::Runs& clipboard, RaceLog& log,
                 QWidget* parent)
    : QTableView(parent), d(new Private(station, clipboard, log, this)) {
    d->delegate = new RunCellDelegate(*this);
    setItemDelegate(d->delegate);
    setModel(&d->table);
    // Editors open only as the grid's own keys and clicks say.
    setEditTriggers(NoEditTriggers);
    // Tab may have to make a column the leftmost one, to the pixel.
    setHorizontalScrollMode(ScrollPerPixel);

    // Every row is as high as the editor that opens on it.
    const int rowHeight = d->delegate->txtEdit->sizeHint().height();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(rowHeight);
    verticalHeader()->setDefaultSectionSize(rowHeight);
    verticalHeader()->setFixedWidth(RunNumberWidth);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    for (int section = 0; section < model()->columnCount(); ++section)
        setColumnWidth(section, ColumnWidth);

    // The corner reads the column table's caption until the window says otherwise.
    d->corner = findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly);
    d->cornerText = ColumnTable::Columns[0].caption.toString();
    for (QObject* part :
         {static_cast<QObject*>(d->corner), static_cast<QObject*>(horizontalHeader()->viewport()),
          static_cast<QObject*>(verticalHeader()->viewport())})
        part->installEventFilter(this);

    connect(d->delegate, &RunCellDelegate::rowStepRequested, this, &RunGrid::stepRow);
    connectMenus();
}

// The delegate goes first: the editors, which go with the viewport, are deaf from then on and
// put nothing right while they are taken down.
RunGrid::~RunGrid() {
    delete d->delegate;
    delete d;
}

RunTable& RunGrid::table() const {
    return d->table;
}

void RunGrid::connectMenus() {
    const RunMenus& menus = d->menus;
    connect(menus.newRunAtRowAction, &QAction::triggered, this, &RunGrid::newRun);
    // The item stays checked for the run it made the reference run, even when chosen again.
    connect(menus.referenceRunAction, &QAction::triggered, this, [this] {
        d->menus.referenceRunAction->setChecked(true);
        emit referenceRunRequested(currentRunRow());
    });
    connect(menus.runCompleteAction, &QAction::triggered, this,
            [this] { emit runCompleteRequested(currentRunRow()); });
    connect(menus.loggedWeatherAction, &QAction::triggered, this, &RunGrid::getLoggedWeather);
    connect(menus.currentWeatherAction, &QAction::triggered, this, &RunGrid::getCurrentWeather);
    connect(menus.timeSlipAction, &QAction::triggered, this, &RunGrid::getTimeSlip);
    connect(menus.cutAction, &QAction::triggered, this, &RunGrid::cutRun);
    connect(menus.copyAction, &QAction::triggered, this, &RunGrid::copyRun);
    connect(menus.pasteAction, &QAction::triggered, this, &RunGrid::pasteRun);
    connect(menus.predictAction, &QAction::triggered, this, [this] { emit panelTabRequested(2); });
    connect(menus.notesAction, &QAction::triggered, this, [this] { emit panelTabRequested(1); });
    connect(menus.settingsAction, &QAction::triggered, this, [this] { emit panelTabRequested(0); });
    connect(menus.newRunAction, &QAction::triggered, this, &RunGrid::newRun);
    connect(menus.deleteAction, &QAction::triggered, this, &RunGrid::deleteRun);
}

bool RunGrid::hideRunColumn(int column) {
    return setColumnShown(column, false);
}

bool RunGrid::showRunColumn(int column) {
    return setColumnShown(column, true);
}

bool RunGrid::setColumnShown(int column, bool shown) {
    if (column < 0 || column >= ColumnTable::Count || !ColumnTable::Columns[column].canBeHidden())
        return false;
    setColumnHidden(column - 1, !shown);
    if (shown)
        setColumnWidth(column - 1, ShownAgainWidth);
    return true;
}

// The run number column is the vertical header, always shown.
bool RunGrid::isRunColumnHidden(int column) const {
    return column >= 1 && isColumnHidden(column - 1);
}

QList<int> RunGrid::shownColumns() const {
    QList<int> shown;
    for (int column : ColumnTable::everyColumn()) {
        if (!isRunColumnHidden(column))
            shown << column;
    }
    return shown;
}

void RunGrid::setCornerText(const QString& text) {
    d->cornerText = text;
    d->corner->update();
}

QString RunGrid::cornerText() const {
    return d->cornerText;
}

int RunGrid::currentRunRow() const {
    const QModelIndex current = currentIndex();
    return current.isValid() ? current.row() + 1 : 0;
}

int RunGrid::currentRunColumn() const {
    const QModelIndex current = currentIndex();
    return current.isValid() ? current.column() + 1 : 0;
}

// Column 0, the run number, is no cell of its own in this view: the row becomes current in
// the column that is current now, or in the first.
void RunGrid::setCurrentRunCell(int row, int column) {
    if (column == 0)
        column = qMax(currentRunColumn(), 1);
    const QModelIndex cell = model()->index(row - 1, column - 1);
    if (cell.isValid())
        setCurrentIndex(cell);
}

void RunGrid::beginCellEdit(int keyCode) {
    const QModelIndex current = currentIndex();
    if (!current.isValid() || isColumnHidden(current.column()))
        return;
    commitCellEdit();
    if (!edit(current, AllEditTriggers, nullptr))
        return;
    d->editing = current;
    d->delegate->startEdit(indexWidget(current), keyCode, current.data().toString());
}

// The model makes the edit one step of the log's undo stack.
void RunGrid::commitCellEdit() {
    QWidget* editor = indexWidget(d->editing);
    if (!editor)
        return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void RunGrid::setShowColumnMenu(QMenu* menu) {
    d->menus.setShowColumnMenu(menu);
}

QMenu* RunGrid::columnMenu() const {
    return d->menus.columnMenu;
}

QMenu* RunGrid::rowMenu() const {
    return d->menus.rowMenu;
}

bool RunGrid::event(QEvent* event) {
    // Tab moves along the run instead of out of the grid, and the clipboard keys belong to
    // the grid even where the window has shortcuts of its own.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab &&
            !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            moveToNextShownColumn();
            return true;
        }
    } else if (event->type() == QEvent::ShortcutOverride &&
               isClipboardCode(typedKeyCode(*static_cast<QKeyEvent*>(event)))) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

void RunGrid::keyPressEvent(QKeyEvent* event) {
    switch (const int code = typedKeyCode(*event)) {
    case 0:
        QTableView::keyPressEvent(event);
        break;
    case CopyCode:
        copyRun();
        break;
    case PasteCode:
        pasteRun();
        break;
    case CutCode:
        cutRun();
        break;
    default:
        beginCellEdit(code);
        break;
    }
}

// From the last column Tab goes back to the first of the same run; hidden columns are passed
// over. A column off the screen becomes the leftmost one on it.
void RunGrid::moveToNextShownColumn() {
    const int row = currentRunRow();
    int column = currentRunColumn();
    if (row < 1)
        return;
    const int last = d->table.cols() - 1;
    for (int step = 0; step < last; ++step) {
        if (column == last)
            column = 0;
        ++column;
        if (!isRunColumnHidden(column))
            break;
    }
    const QModelIndex target = model()->index(row - 1, column - 1);
    const bool offScreen = !viewport()->rect().contains(visualRect(target));
    setCurrentIndex(target);
    if (offScreen)
        horizontalScrollBar()->setValue(horizontalHeader()->sectionPosition(column - 1));
}

// Up and Down in an editor finish the edit and move on a row, within the runs.
void RunGrid::stepRow(int step) {
    commitCellEdit();
    setFocus();
    const int row = currentRunRow() + step;
    if (row >= 1 && row < d->table.tableRows())
        setCurrentRunCell(row, currentRunColumn());
}

void RunGrid::focusInEvent(QFocusEvent* event) {
    commitCellEdit();
    QTableView::focusInEvent(event);
}

void RunGrid::scrollContentsBy(int dx, int dy) {
    commitCellEdit();
    QTableView::scrollContentsBy(dx, dy);
}

void RunGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    commitCellEdit();
    QTableView::currentChanged(current, previous);
}

void RunGrid::mousePressEvent(QMouseEvent* event) {
    d->rowMenuFromPress = false;
    d->mouseOutside = !indexAt(event->position().toPoint()).isValid();
    QTableView::mousePressEvent(event);
}

void RunGrid::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton)
        releaseRightButton(event->globalPosition().toPoint());
}

void RunGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !d->mouseOutside)
        beginCellEdit(DoubleClickCode);
}

// The headers and the corner are the grid's own too: the header row, the run numbers and
// the side panel's handle.
bool RunGrid::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Paint:
        if (watched != d->corner)
            return false;
        paintCorner();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return headerMouseEvent(watched, static_cast<QMouseEvent*>(event));
    default:
        return false;
    }
}

// A press on a header or the corner lies outside the run cells. The corner opens or closes
// the side panel with any button; a right press on a run number opens the row menu. The
// corner keeps every click to itself, so it never selects the whole table.
bool RunGrid::headerMouseEvent(QObject* watched, QMouseEvent* event) {
    const bool onCorner = watched == d->corner;
    if (event->type() == QEvent::MouseButtonPress) {
        d->rowMenuFromPress = false;
        d->mouseOutside = true;
        if (onCorner)
            emit panelToggleRequested();
        else if (watched == verticalHeader()->viewport() && event->button() == Qt::RightButton)
            pressOnRunNumber(*event);
    } else if (event->type() == QEvent::MouseButtonRelease && event->button() == Qt::RightButton) {
        releaseRightButton(event->globalPosition().toPoint());
    }
    return onCorner;
}

void RunGrid::pressOnRunNumber(const QMouseEvent& event) {
    try {
        commitCellEdit();
        const int section = verticalHeader()->logicalIndexAt(event.position().toPoint().y());
        if (section < 0)
            return;
        const int row = section + 1;
        setCurrentRunCell(row, 0);
        RunMenus& menus = d->menus;
        const RaceLogData& log = d->log.content();
        menus.referenceRunAction->setChecked(log.refRunItems.value(log.refRunIndex) ==
                                             QString::number(row));
        menus.deleteAction->setText(QStringLiteral("Delete Run# ") + QString::number(row));
        d->rowMenuFromPress = true;
        menus.rowMenu->popup(event.globalPosition().toPoint());
    } catch (const std::exception&) {
        Dialogs::inform(QStringLiteral("Error detected in gridLog MouseDown windows event!"),
                        QStringLiteral("Race Log"), Dialogs::Icon::Critical);
    }
}

// The release of the press that opened the row menu, or any release while a menu is open,
// opens no column menu on top of it.
void RunGrid::releaseRightButton(const QPoint& globalPos) {
    if (d->rowMenuFromPress) {
        d->rowMenuFromPress = false;
        return;
    }
    if (QApplication::activePopupWidget())
        return;
    commitCellEdit();
    d->menus.columnMenu->popup(globalPos);
}

// The corner cell looks like a link: blue and underlined.
void RunGrid::paintCorner() {
    QAbstractButton* corner = d->corner;
    QPainter painter(corner);
    QStyleOptionHeader option;
    option.initFrom(corner);
    option.rect = corner->rect();
    option.position = QStyleOptionHeader::OnlyOneSection;
    style()->drawControl(QStyle::CE_HeaderSection, &option, &painter, corner);

    QFont font = corner->font();
    font.setUnderline(true);
    painter.setFont(font);
    painter.setPen(CellColor::toQColor(CellColor::Link));
    painter.drawText(option.rect, Qt::AlignCenter, d->cornerText);
}

// --- The run commands ---

// The new run can be the reference run at once; it starts where the user will look at it.
void RunGrid::newRun() {
    const int row = RunEdits::newRun(d->log, QDateTime::currentDateTime());
    setCurrentRunCell(row, 0);
}

void RunGrid::deleteRun() {
    if (const int row = currentRunRow(); row >= 1)
        if (const std::optional<int> next = RunCommands::deleteRun(d->log, row))
            setCurrentRunCell(*next, 1);
}

// The runs the selection spans when it holds the current cell, else the current run alone.
std::pair<int, int> RunGrid::selectedRuns() const {
    const int row = currentRunRow();
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    if (!selectionModel()->isSelected(currentIndex()) || selected.isEmpty())
        return {row, row};
    int first = row;
    int last = row;
    for (const QModelIndex& cell : selected) {
        first = qMin(first, cell.row() + 1);
        last = qMax(last, cell.row() + 1);
    }
    return {first, last};
}

void RunGrid::cutRun() {
    if (const auto [first, last] = selectedRuns(); first >= 1)
        RunEdits::cutRuns(d->log, first, last, d->clipboard);
}

void RunGrid::copyRun() {
    if (const auto [first, last] = selectedRuns(); first >= 1)
        d->clipboard = RunClipboard::copy(d->table, first, last);
}

void RunGrid::pasteRun() {
    if (const int row = currentRunRow(); row >= 1)
        RunEdits::pasteRuns(d->log, row, d->clipboard);
}

void RunGrid::getCurrentWeather() {
    if (const int row = currentRunRow(); row >= 1)
        RunCommands::importCurrentWeather(d->log, row, d->station.reading());
}

void RunGrid::getLoggedWeather() {
    if (const int row = currentRunRow(); row >= 1)
        RunCommands::importLoggedWeather(d->log, row, d->station.weatherLog());
}

void RunGrid::getTimeSlip() {
    if (const int row = currentRunRow(); row >= 1)
        RunCommands::importTimeSlip(d->log, row, d->station.weatherLog());
}
