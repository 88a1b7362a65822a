#include "racelog/RunTable.h"

#include "racelog/CellColor.h"
#include "racelog/ColumnTable.h"

#include <QBrush>
#include <QFont>

RunTable::RunTable(QObject* parent) : QAbstractTableModel(parent) {
    // The header row: captions over the runs, the panel handle in the corner.
    appendRow();
    Row& header = rows[0];
    for (const ColumnTable::Column& column : ColumnTable::Columns)
        header.texts[column.number] = column.caption.toString();
    for (CellLook& cell : header.looks)
        cell = {CellColor::ButtonFace, CellColor::ButtonText};
    header.looks[0].foreground = CellColor::Link;
    header.looks[0].underline = true;

    widths.fill(InitialWidth);
    widths[0] = RunNumberWidth;

    // A log is never without run 1.
    addRun();
}

QString RunTable::cell(int row, int column) const {
    return isCell(row, column) ? rows[row].texts[column] : QString();
}

// A text that is there already is not written: the row stays shared with the copies of the
// table that undo keeps.
bool RunTable::setCell(int row, int column, const QString& text) {
    if (!isCell(row, column))
        return false;
    if (rows.at(row).texts.at(column) != text) {
        rows[row].texts[column] = text;
        cellChanged(row, column);
    }
    return true;
}

int RunTable::addRun() {
    const int row = tableRows();
    beginInsertRows(QModelIndex(), row - 1, row - 1);
    appendRow();
    rows[row].texts[0] = QString::number(row);
    endInsertRows();
    return row;
}

bool RunTable::removeRun(int row) {
    if (!isRun(row) || tableRows() <= 2)
        return false;
    beginRemoveRows(QModelIndex(), row - 1, row - 1);
    rows.remove(row);
    endRemoveRows();
    for (int r = row; r < tableRows(); ++r)
        rows[r].texts[0] = QString::number(r);
    if (row < tableRows())
        emit headerDataChanged(Qt::Vertical, row - 1, tableRows() - 2);
    return true;
}

void RunTable::restoreRuns(const Runs& runs) {
    beginResetModel();
    const Row header = rows.at(0);
    rows = runs;
    rows[0] = header;
    endResetModel();
}

int RunTable::columnWidth(int column) const {
    return column >= 0 && column < ColumnCount ? widths[column] : 0;
}

void RunTable::setColumnWidth(int column, int twips) {
    if (column < 0 || column >= ColumnCount || widths[column] == twips)
        return;
    widths[column] = twips;
    emit columnWidthChanged(column);
}

bool RunTable::hideColumn(int column) {
    if (column < 0 || column >= ColumnCount || !ColumnTable::Columns[column].canBeHidden())
        return false;
    setColumnWidth(column, 0);
    setCell(0, column, QString());
    return true;
}

bool RunTable::showColumn(int column) {
    if (column < 0 || column >= ColumnCount || !ColumnTable::Columns[column].canBeHidden())
        return false;
    setColumnWidth(column, ShownAgainWidth);
    setCell(0, column, ColumnTable::Columns[column].caption.toString());
    return true;
}

int RunTable::twipsToPixels(int twips) {
    return (twips + TwipsPerPixel / 2) / TwipsPerPixel;
}

RunTable::CellLook RunTable::look(int row, int column) const {
    return isCell(row, column) ? rows[row].looks[column] : CellLook{};
}

void RunTable::setCellBackground(int row, int column, quint32 color) {
    if (!isCell(row, column))
        return;
    rows[row].looks[column].background = color;
    cellChanged(row, column);
}

void RunTable::setCellForeground(int row, int column, quint32 color) {
    if (!isCell(row, column))
        return;
    rows[row].looks[column].foreground = color;
    cellChanged(row, column);
}

void RunTable::setCellBold(int row, int column, bool bold) {
    if (!isCell(row, column))
        return;
    rows[row].looks[column].bold = bold;
    cellChanged(row, column);
}

void RunTable::paintRowBand(int row) {
    if (!isRun(row))
        return;
    bandRow(row);
    runRowsChanged(row, row, false);
}

void RunTable::paintRowBands() {
    for (int row = 1; row < tableRows(); ++row)
        bandRow(row);
    runRowsChanged(1, tableRows() - 1, false);
}

bool RunTable::markReferenceRun(int row) {
    if (!isRun(row))
        return false;
    clearReferenceMarks();
    CellLook& reference = rows[row].looks[0];
    reference.background = CellColor::ReferenceRun;
    reference.bold = true;
    runRowsChanged(1, tableRows() - 1, true);
    return true;
}

void RunTable::unmarkReferenceRun() {
    clearReferenceMarks();
    runRowsChanged(1, tableRows() - 1, true);
}

// Only the marked rows are written, so the others stay shared.
void RunTable::clearReferenceMarks() {
    for (int r = 1; r < tableRows(); ++r) {
        const CellLook& number = rows.at(r).looks.at(0);
        if (number.background == CellColor::ButtonFace && !number.bold)
            continue;
        CellLook& marked = rows[r].looks[0];
        marked.background = CellColor::ButtonFace;
        marked.bold = false;
    }
}

int RunTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : tableRows() - 1;
}

int RunTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount - 1;
}

QVariant RunTable::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    return cellData(index.row() + 1, index.column() + 1, role);
}

QVariant RunTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal)
        return cellData(0, section + 1, role);
    return cellData(section + 1, 0, role);
}

bool RunTable::isCell(int row, int column) const {
    return row >= 0 && row < tableRows() && column >= 0 && column < ColumnCount;
}

void RunTable::appendRow() {
    Row& row = rows.emplace_back();
    row.texts.resize(ColumnCount);
    row.looks.append({CellColor::ButtonFace, CellColor::ButtonText}); // the number column
    for (int column = 1; column < ColumnCount; ++column)
        row.looks.append({CellColor::WindowBackground, CellColor::WindowText});
}

void RunTable::bandRow(int row) {
    if (row % 2 != 0)
        return;
    QList<CellLook>& looks = rows[row].looks;
    for (int column = ColumnCount - 1; column >= 1; --column)
        looks[column].background = CellColor::Band;
}

void RunTable::cellChanged(int row, int column) {
    if (row == 0 && column == 0) {
        emit cornerChanged();
    } else if (row == 0) {
        emit headerDataChanged(Qt::Horizontal, column - 1, column - 1);
    } else if (column == 0) {
        emit headerDataChanged(Qt::Vertical, row - 1, row - 1);
    } else {
        const QModelIndex cell = index(row - 1, column - 1);
        emit dataChanged(cell, cell);
    }
}

void RunTable::runRowsChanged(int firstRow, int lastRow, bool numberColumnToo) {
    if (firstRow > lastRow)
        return;
    emit dataChanged(index(firstRow - 1, 0), index(lastRow - 1, ColumnCount - 2));
    if (numberColumnToo)
        emit headerDataChanged(Qt::Vertical, firstRow - 1, lastRow - 1);
}

QVariant RunTable::cellData(int row, int column, int role) const {
    if (!isCell(row, column))
        return QVariant();
    const Row& cells = rows.at(row);
    const CellLook& cell = cells.looks.at(column);
    switch (role) {
    case Qt::DisplayRole:
        return cells.texts.at(column);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::BackgroundRole:
    case Qt::ForegroundRole: {
        const QColor color =
            CellColor::toQColor(role == Qt::BackgroundRole ? cell.background : cell.foreground);
        return color.isValid() ? QVariant(QBrush(color)) : QVariant();
    }
    case Qt::FontRole: {
        if (!cell.bold && !cell.underline)
            return QVariant();
        QFont font;
        font.setBold(cell.bold);
        font.setUnderline(cell.underline);
        return font;
    }
    default:
        return QVariant();
    }
}
