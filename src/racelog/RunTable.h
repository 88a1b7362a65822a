#pragma once

#include "racelog/ColumnTable.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>
#include <array>

// The run table of a race log: the one store of its runs. 34 columns numbered 0 to 33 (the
// numbers of ColumnTable), row 0 the header row with the captions, column 0 the run number,
// and every cell a text. A run in row n is run n, and a log always keeps run 1, so a new table
// has two rows. Besides the text each cell has a look (background, text colour, bold,
// underline) and each column a width in twips, 0 meaning hidden.
//
// The program addresses cells by these numbers: cell(row, column). Views see the table through Qt's
// model face, in which the header row and the number column are the headers, so that a QTableView
// keeps them fixed while the runs scroll:
//   model row r, model column c   = cell (r + 1, c + 1)
//   horizontal header section c   = cell (0, c + 1)
//   vertical header section r     = cell (r + 1, 0)
// The corner cell (0, 0), the handle of the side panel, belongs to the window; cornerChanged
// tells it when its text or look changes.
class RunTable : public QAbstractTableModel {
    Q_OBJECT
public:
    // The columns of the column table, the run number first.
    static constexpr int ColumnCount = ColumnTable::Count;

    // Column widths in twips; the view converts at TwipsPerPixel.
    static constexpr int RunNumberWidth = 570;
    static constexpr int InitialWidth = 1000;
    static constexpr int ShownAgainWidth = 1140;
    static constexpr int TwipsPerPixel = 15;

    struct CellLook {
        quint32 background; // CellColor values
        quint32 foreground;
        bool bold = false;
        bool underline = false;

        bool operator==(const CellLook&) const = default;
    };

    // One row: the texts and looks of its 34 cells. Rows are shared until written, so a copy
    // of the table costs a pointer a row, and a change copies only the rows it touches.
    struct Row {
        QStringList texts;
        QList<CellLook> looks;

        bool operator==(const Row&) const = default;
    };
    // The rows as they stand: what a change of the log can take back. The header row belongs
    // to the view and is not put back.
    using Runs = QList<Row>;

    explicit RunTable(QObject* parent = nullptr);

    Runs runs() const { return rows; }
    // Puts the run rows back as they were; the header row stays as it is now.
    void restoreRuns(const Runs& runs);

    int tableRows() const { return int(rows.size()); }
    int Cols() const { return ColumnCount; }

    // Cell texts; an address outside the table reads empty and is not written.
    QString cell(int row, int column) const;
    bool setCell(int row, int column, const QString& text);

    // Appends a blank run row with its number in column 0 and returns its row.
    int addRun();
    // Removes a run row and numbers the remaining runs again from 1. The looks go with their
    // rows, so row bands are not repainted. Run 1 is never removed when it is the only run.
    bool removeRun(int row);

    int columnWidth(int column) const;
    void setColumnWidth(int column, int twips);
    // Hiding a column blanks its header and sets width 0; showing it sets ShownAgainWidth and
    // the caption again. The cells keep their texts. Only hideable columns take part.
    bool hideColumn(int column);
    bool showColumn(int column);
    bool isColumnHidden(int column) const { return columnWidth(column) == 0; }
    static int twipsToPixels(int twips);

    CellLook look(int row, int column) const;
    void setCellBackground(int row, int column, quint32 color);
    void setCellForeground(int row, int column, quint32 color);
    void setCellBold(int row, int column, bool bold);

    // Colours an even run row in columns 1 to 33 with the band colour; odd rows are left as
    // they are. paintRowBands does it for every run row.
    void paintRowBand(int row);
    void paintRowBands();
    // Gives every run's number cell the button face and normal weight, then marks the
    // reference run's number cell green and bold. False, nothing changed, for a row that
    // is not a run.
    bool markReferenceRun(int row);
    // Every run's number cell as an ordinary run: the log has no reference run.
    void unmarkReferenceRun();

    // Qt's model face, as described above.
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

signals:
    void columnWidthChanged(int column);
    void cornerChanged();

private:
    bool isCell(int row, int column) const;
    bool isRun(int row) const { return row >= 1 && row < tableRows(); }
    void appendRow();
    void bandRow(int row);
    void cellChanged(int row, int column);
    void runRowsChanged(int firstRow, int lastRow, bool numberColumnToo);
    void clearReferenceMarks();
    QVariant cellData(int row, int column, int role) const;

    Runs rows;
    std::array<int, ColumnCount> widths{};
};
