#pragma once

#include "prediction/RunCells.h"

#include <QList>
#include <QStringList>
#include <initializer_list>
#include <utility>

// A run table for tests: the header row of labels the window shows, then runs added with
// just the cells a test cares about; every other cell is empty.
class SampleRunTable {
public:
    static constexpr int ColumnCount = 34;

    SampleRunTable() {
        rows.append(QStringList{
            "#",       "Time",    "Date",       "Lane",    "RT",       "Delay Box", "60 ft",
            "330 ft",  "660 ft",  "660 MPH",    "1000 ft", "1000 MPH", "1320 ft",   "1320 MPH",
            "Timer 2", "Timer 1", "Shift Time", "Dial-In", "T. Temp",  "AA",        "DA",
            "VP",      "ABP",     "Temp",       "RH",      "AH",       "GR",        "DP",
            "ADR",     "PA",      "WD",         "WS",      "WG",       "AL"});
    }

    // Adds a run and returns its row number.
    int addRun(std::initializer_list<std::pair<int, QString>> cells) {
        QStringList row(ColumnCount);
        row[0] = QString::number(rows.size());
        for (const auto& [column, text] : cells)
            row[column] = text;
        rows.append(row);
        return int(rows.size()) - 1;
    }

    void set(int row, int column, const QString& text) { rows[row][column] = text; }

    QString cell(int row, int column) const {
        if (row < 0 || row >= rows.size() || column < 0 || column >= ColumnCount)
            return {};
        return rows[row][column];
    }

    // The cells as they stand now; later changes to the table are not seen.
    RunCells cells() const {
        return [copy = *this](int row, int column) { return copy.cell(row, column); };
    }

private:
    QList<QStringList> rows;
};
