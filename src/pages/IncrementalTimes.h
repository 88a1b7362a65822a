#pragma once

#include "exchange/TimeSlip.h"

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <array>

class PageDocument;

// The incremental times report: every car's run of one category and session of the event,
// taken from the timing receiver's log and ranked, fastest first, in each of twelve measures
// on its own, so a crew sees where its car stands against the field at each mark. Two tag
// cars stand out in colour.
namespace IncrementalTimes {

// What the user asked for.
struct Request {
    QString categorySession; // found inside the log's category text, ignoring case
    QString tagCar1;         // marked in orange
    QString tagCar2;         // marked in blue
    bool onlyTagged = false; // the report holds the two tag cars alone
};

// One measure of a run: a mark's time or speed, or the time between two marks.
struct Measure {
    QStringView heading; // as the page shows it, blanks and all
    QStringView pattern; // the number's form
    bool speed;          // speeds rank falling, times rising
};
constexpr int MeasureCount = 12;
const std::array<Measure, MeasureCount>& measures();

// One car in one measure: its lane letter, its number and its value. A value of 0 or less
// means the run has none.
struct Cell {
    QChar lane;
    QString car;
    float value = 0;
};
// A row per rank, a cell per measure.
using Row = std::array<Cell, MeasureCount>;
using Table = QList<Row>;

// The category and session texts of the log, each once, in the order they first appear:
// the choices the dialog offers.
QStringList categorySessions(const TimeSlipLog& log);

// Leaves in the log only the rows of the report: a car number and the category asked for,
// and with onlyTagged one of the two tag cars. A row that goes is replaced by the log's last
// row, so the order changes; the log is no longer fit for anything else. The last row left
// always stays, even when it doesn't belong.
void filter(TimeSlipLog& log, const Request& request);

// The measures of each row, in the log's order: a time that isn't a number counts as 0.
Table build(const TimeSlipLog& log);

// Ranks each measure's column by itself, so a row of ranks holds different cars in different
// columns. Runs without a value come last.
void rank(Table& table);

// Lays the ranked table out on a document of the report viewer: title, headings, a block of
// two lines per rank, and "Page n of m" on every page.
void layout(PageDocument& document, const Table& table, const Request& request);

// The whole report from a freshly read log, which it uses up.
void write(PageDocument& document, TimeSlipLog& log, const Request& request);

} // namespace IncrementalTimes
