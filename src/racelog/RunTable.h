#pragma once

#include "racelog/ColumnTable.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>
#include <functional>

// The run table of a race log: the one store of its runs. 34 columns numbered 0 to 33 (the
// numbers of ColumnTable), row 0 the header row with the captions, column 0 the run number,
// and every cell a text. A run in row n is run n, and a log always keeps run 1, so a new table
// has two rows. Each run also carries two marks: its band, which paints it for reading across,
// and whether it is the reference run. The colours and weights of the cells are worked out
// from these marks; how wide a column is and whether it is shown is the view's business.
//
// The program addresses cells by these numbers: cell(row, column). Views see the table through
// Qt's model interface, in which the header row and the number column are the headers, so that
// a QTableView keeps them fixed while the runs scroll:
//   model row r, model column c   = cell (r + 1, c + 1)
//   horizontal header section c   = cell (0, c + 1)
//   vertical header section r     = cell (r + 1, 0)
// The corner cell (0, 0) belongs to the window and reads empty here.
class RunTable : public QAbstractTableModel {
    Q_OBJECT
public:
    // The columns of the column table, the run number first.
    static constexpr int ColumnCount = ColumnTable::Count;

    struct CellLook {
        quint32 background; // CellColor values
        quint32 foreground;
        bool bold = false;

        bool operator==(const CellLook&) const = default;
    };

    // One run: the texts of its cells 1 to 33 and its marks. Runs are shared until written,
    // so a copy of the table costs a pointer a run, and a change copies only the runs it
    // touches.
    struct Run {
        QStringList texts; // column c at c - 1; the run number is its row's
        bool banded = false;
        bool reference = false;

        bool operator==(const Run&) const = default;
    };
    // The runs as they stand: what a change of the log can take back.
    using Runs = QList<Run>;

    // Where an edit the user makes through the model goes, by the table's numbering.
    using CellEdit = std::function<void(int row, int column, const QString& text)>;

    explicit RunTable(QObject* parent = nullptr);

    Runs runs() const { return rows; }
    void restoreRuns(const Runs& runs);

    int tableRows() const { return int(rows.size()) + 1; }
    int cols() const { return ColumnCount; }

    // Cell texts: the captions in row 0, the run numbers in column 0. An address outside the
    // table reads empty. Only the cells of the runs are written.
    QString cell(int row, int column) const;
    bool setCell(int row, int column, const QString& text);

    // Appends a blank run and returns its row.
    int addRun();
    // Removes a run; the runs after it move up and take their new numbers. The marks go with
    // their runs, so bands are not painted again. Run 1 is never removed when it is the only
    // run.
    bool removeRun(int row);

    // How a cell is drawn: the header row and the number column as buttons, the reference
    // run's number green and bold, a banded run's cells in the band colour.
    CellLook look(int row, int column) const;

    // Bands an even run; odd runs are left as they are. paintRowBands does it for every run.
    void paintRowBand(int row);
    void paintRowBands();
    // Makes the run in row the reference run, the only one. False, nothing changed, for a row
    // that is not a run.
    bool markReferenceRun(int row);
    // No run is the reference run.
    void unmarkReferenceRun();

    // The log sends every edit made through setData through its undo stack; a table on its own
    // writes the cell directly.
    void setCellEdit(CellEdit edit) { cellEdit = std::move(edit); }

    // Qt's model interface, as described above. Every run cell is editable.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
    bool isRun(int row) const { return row >= 1 && row < tableRows(); }
    bool isRunCell(int row, int column) const;
    void markRuns(const std::function<bool(int row)>& reference);
    void runRowsChanged(int firstRow, int lastRow, bool numberColumnToo);
    QVariant cellData(int row, int column, int role) const;

    Runs rows; // run n at n - 1
    CellEdit cellEdit;
};
