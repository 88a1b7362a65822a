#include "racelog/RunTable.h"

#include "racelog/CellColor.h"
#include "racelog/ColumnTable.h"

#include <QBrush>
#include <QFont>

RunTable::RunTable(QObject* parent) : QAbstractTableModel(parent) {
    // A log is never without run 1.
    addRun();
}

QString RunTable::cell(int row, int column) const {
    if (column < 0 || column >= ColumnCount)
        return QString();
    if (row == 0)
        return column == 0 ? QString() : ColumnTable::Columns[column].caption.toString();
    if (!isRun(row))
        return QString();
    return column == 0 ? QString::number(row) : rows.at(row - 1).texts.at(column - 1);
}

// A text that is there already is not written: the run stays shared with the copies of the
// table that undo keeps.
bool RunTable::setCell(int row, int column, const QString& text) {
    if (!isRunCell(row, column))
        return false;
    if (rows.at(row - 1).texts.at(column - 1) != text) {
        rows[row - 1].texts[column - 1] = text;
        const QModelIndex changed = index(row - 1, column - 1);
        emit dataChanged(changed, changed);
    }
    return true;
}

int RunTable::addRun() {
    const int row = tableRows();
    beginInsertRows(QModelIndex(), row - 1, row - 1);
    rows.emplace_back().texts.resize(ColumnCount - 1);
    endInsertRows();
    return row;
}

bool RunTable::removeRun(int row) {
    if (!isRun(row) || tableRows() <= 2)
        return false;
    beginRemoveRows(QModelIndex(), row - 1, row - 1);
    rows.remove(row - 1);
    endRemoveRows();
    if (row < tableRows())
        emit headerDataChanged(Qt::Vertical, row - 1, tableRows() - 2);
    return true;
}

void RunTable::restoreRuns(const Runs& runs) {
    beginResetModel();
    rows = runs;
    endResetModel();
}

RunTable::CellLook RunTable::look(int row, int column) const {
    const CellLook button{CellColor::ButtonFace, CellColor::ButtonText};
    if (row == 0 || !isRun(row))
        return button;
    const Run& run = rows.at(row - 1);
    if (column == 0)
        return run.reference ? CellLook{CellColor::ReferenceRun, CellColor::ButtonText, true}
                             : button;
    return {run.banded ? CellColor::Band : CellColor::WindowBackground, CellColor::WindowText};
}

void RunTable::paintRowBand(int row) {
    if (!isRun(row))
        return;
    if (row % 2 == 0)
        rows[row - 1].banded = true;
    runRowsChanged(row, row, false);
}

void RunTable::paintRowBands() {
    for (int row = 2; row < tableRows(); row += 2)
        rows[row - 1].banded = true;
    runRowsChanged(1, tableRows() - 1, false);
}

bool RunTable::markReferenceRun(int row) {
    if (!isRun(row))
        return false;
    markRuns([row](int run) { return run == row; });
    return true;
}

void RunTable::unmarkReferenceRun() {
    markRuns([](int) { return false; });
}

// Only the runs whose mark changes are written, so the others stay shared.
void RunTable::markRuns(const std::function<bool(int row)>& reference) {
    for (int row = 1; row < tableRows(); ++row) {
        if (rows.at(row - 1).reference != reference(row))
            rows[row - 1].reference = reference(row);
    }
    runRowsChanged(1, tableRows() - 1, true);
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

Qt::ItemFlags RunTable::flags(const QModelIndex& index) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
}

bool RunTable::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    const int row = index.row() + 1;
    const int column = index.column() + 1;
    if (!cellEdit)
        return setCell(row, column, value.toString());
    cellEdit(row, column, value.toString());
    return true;
}

bool RunTable::isRunCell(int row, int column) const {
    return isRun(row) && column >= 1 && column < ColumnCount;
}

void RunTable::runRowsChanged(int firstRow, int lastRow, bool numberColumnToo) {
    if (firstRow > lastRow)
        return;
    emit dataChanged(index(firstRow - 1, 0), index(lastRow - 1, ColumnCount - 2));
    if (numberColumnToo)
        emit headerDataChanged(Qt::Vertical, firstRow - 1, lastRow - 1);
}

QVariant RunTable::cellData(int row, int column, int role) const {
    if (row < 0 || row >= tableRows() || column < 0 || column >= ColumnCount)
        return QVariant();
    const CellLook cell = look(row, column);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return this->cell(row, column);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::BackgroundRole:
    case Qt::ForegroundRole: {
        const QColor color =
            CellColor::toQColor(role == Qt::BackgroundRole ? cell.background : cell.foreground);
        return color.isValid() ? QVariant(QBrush(color)) : QVariant();
    }
    case Qt::FontRole: {
        if (!cell.bold)
            return QVariant();
        QFont font;
        font.setBold(true);
        return font;
    }
    default:
        return QVariant();
    }
}
