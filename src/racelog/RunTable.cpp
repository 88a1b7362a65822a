#include "racelog/RunTable.h"

#include "racelog/CellColor.h"
#include "racelog/ColumnTable.h"

#include <QBrush>
#include <QFont>

RunTable::RunTable(QObject* parent) : QAbstractTableModel(parent) {
    // The header row: captions over the runs, the panel handle in the corner.
    appendRowCells();
    for (const ColumnTable::Column& column : ColumnTable::Columns)
        cells[column.number] = column.caption.toString();
    for (CellLook& cell : looks)
        cell = {CellColor::ButtonFace, CellColor::ButtonText};
    looks[0].foreground = CellColor::Link;
    looks[0].underline = true;

    widths.fill(InitialWidth);
    widths[0] = RunNumberWidth;

    // A log is never without run 1.
    addRun();
}

QString RunTable::TextArray(int index) const {
    return index >= 0 && index < cells.size() ? cells[index] : QString();
}

bool RunTable::setTextArray(int index, const QString& text) {
    if (index < 0 || index >= cells.size())
        return false;
    cells[index] = text;
    cellChanged(index / ColumnCount, index % ColumnCount);
    return true;
}

QString RunTable::TextMatrix(int row, int column) const {
    return isCell(row, column) ? cells[fLabel(row, column)] : QString();
}

bool RunTable::setTextMatrix(int row, int column, const QString& text) {
    if (!isCell(row, column))
        return false;
    return setTextArray(fLabel(row, column), text);
}

int RunTable::addRun() {
    const int row = rowTotal;
    beginInsertRows(QModelIndex(), row - 1, row - 1);
    appendRowCells();
    cells[fLabel(row, 0)] = QString::number(row);
    endInsertRows();
    return row;
}

bool RunTable::removeRun(int row) {
    if (!isRun(row) || rowTotal <= 2)
        return false;
    beginRemoveRows(QModelIndex(), row - 1, row - 1);
    cells.remove(fLabel(row, 0), ColumnCount);
    looks.remove(fLabel(row, 0), ColumnCount);
    --rowTotal;
    endRemoveRows();
    for (int r = row; r < rowTotal; ++r)
        cells[fLabel(r, 0)] = QString::number(r);
    if (row < rowTotal)
        emit headerDataChanged(Qt::Vertical, row - 1, rowTotal - 2);
    return true;
}

void RunTable::restoreRuns(const Runs& runs) {
    beginResetModel();
    const QStringList header = cells.first(ColumnCount);
    const QList<CellLook> headerLooks = looks.first(ColumnCount);
    rowTotal = runs.rowTotal;
    cells = runs.cells;
    looks = runs.looks;
    for (int column = 0; column < ColumnCount; ++column) {
        cells[column] = header[column];
        looks[column] = headerLooks[column];
    }
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
    setTextMatrix(0, column, QString());
    return true;
}

bool RunTable::showColumn(int column) {
    if (column < 0 || column >= ColumnCount || !ColumnTable::Columns[column].canBeHidden())
        return false;
    setColumnWidth(column, ShownAgainWidth);
    setTextMatrix(0, column, ColumnTable::Columns[column].caption.toString());
    return true;
}

int RunTable::twipsToPixels(int twips) {
    return (twips + TwipsPerPixel / 2) / TwipsPerPixel;
}

RunTable::CellLook RunTable::look(int row, int column) const {
    return isCell(row, column) ? looks[fLabel(row, column)] : CellLook{};
}

void RunTable::setCellBackground(int row, int column, quint32 color) {
    if (!isCell(row, column))
        return;
    looks[fLabel(row, column)].background = color;
    cellChanged(row, column);
}

void RunTable::setCellForeground(int row, int column, quint32 color) {
    if (!isCell(row, column))
        return;
    looks[fLabel(row, column)].foreground = color;
    cellChanged(row, column);
}

void RunTable::setCellBold(int row, int column, bool bold) {
    if (!isCell(row, column))
        return;
    looks[fLabel(row, column)].bold = bold;
    cellChanged(row, column);
}

void RunTable::paintRowBand(int row) {
    if (!isRun(row))
        return;
    bandRow(row);
    runRowsChanged(row, row, false);
}

void RunTable::paintRowBands() {
    for (int row = 1; row < rowTotal; ++row)
        bandRow(row);
    runRowsChanged(1, rowTotal - 1, false);
}

bool RunTable::markReferenceRun(int row) {
    if (!isRun(row))
        return false;
    clearReferenceMarks();
    CellLook& reference = looks[fLabel(row, 0)];
    reference.background = CellColor::ReferenceRun;
    reference.bold = true;
    runRowsChanged(1, rowTotal - 1, true);
    return true;
}

void RunTable::unmarkReferenceRun() {
    clearReferenceMarks();
    runRowsChanged(1, rowTotal - 1, true);
}

void RunTable::clearReferenceMarks() {
    for (int r = 1; r < rowTotal; ++r) {
        CellLook& number = looks[fLabel(r, 0)];
        number.background = CellColor::ButtonFace;
        number.bold = false;
    }
}

int RunTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rowTotal - 1;
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
    return row >= 0 && row < rowTotal && column >= 0 && column < ColumnCount;
}

void RunTable::appendRowCells() {
    cells.resize(cells.size() + ColumnCount);
    looks.append({CellColor::ButtonFace, CellColor::ButtonText}); // the number column
    for (int column = 1; column < ColumnCount; ++column)
        looks.append({CellColor::WindowBackground, CellColor::WindowText});
    ++rowTotal;
}

void RunTable::bandRow(int row) {
    if (row % 2 != 0)
        return;
    for (int column = ColumnCount - 1; column >= 1; --column)
        looks[fLabel(row, column)].background = CellColor::Band;
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
    const CellLook& cell = looks[fLabel(row, column)];
    switch (role) {
    case Qt::DisplayRole:
        return cells[fLabel(row, column)];
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
