#include "pages/IncrementalTimes.h"

#include "core/NumberText.h"
#include "pages/PageDocument.h"

#include <algorithm>

namespace IncrementalTimes {

namespace {

constexpr double Free = PageDocument::Free;
constexpr double LastTop = PageDocument::LastTop;
constexpr double LastRight = PageDocument::LastRight;
constexpr double LastBottom = PageDocument::LastBottom;

// The page: rank labels from the left of the output rectangle, the measures' columns after
// them, each as wide as the next.
constexpr double Left = 100;
constexpr double Top = 100;
constexpr double TableLeft = 140;
constexpr double Right = 2060;
constexpr double ColumnWidth = 160;

double columnLeft(int measure) {
    return TableLeft + measure * ColumnWidth;
}
double columnRight(int measure) {
    return columnLeft(measure) + ColumnWidth;
}

// The tag colours are known to the teams by their colour numbers, blue green red as every
// colour number of the program: 49407 orange and 16752640 blue. These are their red green
// blue values.
const QColor TagCar1Colour(255, 192, 0); // orange
const QColor TagCar2Colour(0, 159, 255); // blue
const QColor RankColour(0, 0, 255);
const QColor RuleColour(128, 128, 0);

constexpr double TitleSize = 8;
constexpr double CellSize = 8;
constexpr double RankSize = 7;
constexpr double LaneSize = 5;
// A rank is started only where a line of this size still fits; else it goes to a new page,
// under the title and headings again.
constexpr double BlockSize = 15;

const std::array<Measure, MeasureCount> MeasureTable{{
    {u"60 ft Time", u"#0.000", false},
    {u"60 to 330", u"#0.000", false},
    {u"330 ft ET", u"#0.000", false},
    {u"330 to 660", u"#0.000", false},
    {u"660 ft ET", u"#0.000", false},
    {u"660 MPH", u"#0.00", true},
    {u"660 to 1000", u"#0.000", false},
    {u"1000 ft ET", u"#0.000", false},
    {u"1000 to 1320", u"#0.000", false},
    {u"Last 1 / 8", u"#0.000", false},
    {u"1 / 4 ET", u"#0.000", false},
    {u"1/ 4 MPH", u"#0.00", true},
}};

bool keeps(const QStringList& row, const Request& request) {
    return !row.at(SlipCarNumber).isEmpty() &&
           row.at(SlipCategory).contains(request.categorySession, Qt::CaseInsensitive);
}

bool isTagged(const QStringList& row, const Request& request) {
    const QString& car = row.at(SlipCarNumber);
    return car == request.tagCar1 || car == request.tagCar2;
}

// Removes the rows that fail the test by moving the last row into their place. The category's
// pass never removes the one row left, whatever it holds; the tag cars' pass removes every
// row of another car, so tag cars that never ran leave the heading alone.
enum class LastRow { Stays, Goes };

template <typename Test> void removeUnless(TimeSlipLog& log, Test keep, LastRow last) {
    int row = 0;
    while (row < log.rows.size()) {
        if (keep(log.rows.at(row)) || (last == LastRow::Stays && log.rows.size() < 2)) {
            ++row;
            continue;
        }
        log.rows[row] = log.rows.last();
        log.rows.removeLast();
    }
}

float field(const QStringList& row, int number) {
    const std::optional<double> value = NumberText::toDouble(row.at(number));
    return value ? float(*value) : 0.0f;
}

// The twelve values of a run, as the page shows them from left to right.
std::array<float, MeasureCount> values(const QStringList& row) {
    const float at60 = field(row, Slip60ft);
    const float at330 = field(row, Slip330ft);
    const float at660 = field(row, Slip660ft);
    const float mph660 = field(row, Slip660Mph);
    const float at1000 = field(row, Slip1000ft);
    const float at1320 = field(row, Slip1320ft);
    const float mph1320 = field(row, Slip1320Mph);
    return {at60,           at330 - at60, at330,           at660 - at330,  at660,  mph660,
            at1000 - at660, at1000,       at1320 - at1000, at1320 - at660, at1320, mph1320};
}

void setBlackOnWhite(PageDocument::Style& style) {
    style.pen = Qt::black;
    style.background = Qt::white;
    style.backgroundShown = false;
}

// The title, white on black across the page, and the headings of the measures under it.
void writeHeading(PageDocument& document, const QString& title) {
    PageDocument::Style& style = document.style();
    style.fontSize = TitleSize;
    style.penSize = 3;
    style.pen = Qt::white;
    style.background = Qt::black;
    style.backgroundShown = true;
    style.alignment = Qt::AlignHCenter;
    document.writeBox(TableLeft, Top, Right, Free, title);
    document.writeBox(TableLeft, LastBottom, columnRight(0), Free,
                      MeasureTable[0].heading.toString());
    for (int measure = 1; measure < MeasureCount; ++measure)
        document.writeBox(LastRight, LastTop, columnRight(measure), Free,
                          MeasureTable[measure].heading.toString());
    setBlackOnWhite(style);
}

QString valueText(const Cell& cell, const Measure& measure) {
    if (cell.value <= 0)
        return QStringLiteral(" ");
    return NumberText::format(cell.value, measure.pattern.toString());
}

void markTagCar(PageDocument::Style& style, const Cell& cell, const Request& request) {
    style.backgroundShown = cell.car == request.tagCar1 || cell.car == request.tagCar2;
    style.background = cell.car == request.tagCar1 ? TagCar1Colour : TagCar2Colour;
}

QString rankText(int rank) {
    const QString number = QString::number(rank + 1);
    return rank + 1 < 100 ? number + u')' : number;
}

// One rank: its label, the line of values and the line of car numbers, each car's lane
// letter small in the bottom left corner of its number's cell.
void writeRank(PageDocument& document, const Row& row, int rank, const Request& request) {
    PageDocument::Style& style = document.style();
    style.pen = RankColour;
    document.writeText(Left, LastBottom, TableLeft, Free, rankText(rank));

    style.pen = Qt::black;
    style.fontSize = CellSize;
    style.alignment = Qt::AlignRight;
    for (int measure = 0; measure < MeasureCount; ++measure) {
        markTagCar(style, row[measure], request);
        document.writeBox(LastRight, LastTop, columnRight(measure), Free,
                          valueText(row[measure], MeasureTable[measure]));
    }
    const double carTop = document.lastRect().bottom();
    double carBottom = carTop;
    for (int measure = 0; measure < MeasureCount; ++measure) {
        markTagCar(style, row[measure], request);
        carBottom =
            document
                .writeBox(columnLeft(measure), carTop, columnRight(measure), Free,
                          row[measure].car.isEmpty() ? QStringLiteral(" ") : row[measure].car)
                .bottom();
    }

    style.backgroundShown = false;
    style.fontSize = LaneSize;
    style.alignment = Qt::AlignLeft;
    for (int measure = 0; measure < MeasureCount; ++measure) {
        const QString lane =
            row[measure].lane.isNull() ? QStringLiteral(" ") : QString(row[measure].lane);
        const QSizeF size = PageDocument::textSize(lane, style) +
                            QSizeF(2 * PageDocument::TextInset, 2 * PageDocument::TextInset);
        const double left = columnLeft(measure) + 10 - PageDocument::TextInset;
        document.writeText(left, carBottom - size.height(), -size.width(), -size.height(), lane);
    }
}

} // namespace

const std::array<Measure, MeasureCount>& measures() {
    return MeasureTable;
}

QStringList categorySessions(const TimeSlipLog& log) {
    QStringList list;
    QString before;
    bool first = true;
    for (const QStringList& row : log.rows) {
        const QString& category = row.at(SlipCategory);
        if ((first || category != before) && !list.contains(category))
            list.append(category);
        before = category;
        first = false;
    }
    return list;
}

void filter(TimeSlipLog& log, const Request& request) {
    removeUnless(
        log, [&request](const QStringList& row) { return keeps(row, request); }, LastRow::Stays);
    if (request.onlyTagged)
        removeUnless(
            log, [&request](const QStringList& row) { return isTagged(row, request); },
            LastRow::Goes);
}

Table build(const TimeSlipLog& log) {
    Table table;
    table.reserve(log.rows.size());
    for (const QStringList& row : log.rows) {
        const std::array<float, MeasureCount> measures = values(row);
        const QString& lane = row.at(SlipLane);
        Row cells;
        for (int measure = 0; measure < MeasureCount; ++measure)
            cells[measure] = {lane.isEmpty() ? QChar() : lane.front(), row.at(SlipCarNumber),
                              measures[measure]};
        table.append(cells);
    }
    return table;
}

void rank(Table& table) {
    QList<Cell> column(table.size());
    for (int measure = 0; measure < MeasureCount; ++measure) {
        for (int rank = 0; rank < table.size(); ++rank)
            column[rank] = table[rank][measure];
        const bool falling = MeasureTable[measure].speed;
        std::stable_sort(column.begin(), column.end(), [falling](const Cell& a, const Cell& b) {
            if ((a.value > 0) != (b.value > 0))
                return a.value > 0;
            if (a.value <= 0)
                return false;
            return falling ? a.value > b.value : a.value < b.value;
        });
        for (int rank = 0; rank < table.size(); ++rank)
            table[rank][measure] = column[rank];
    }
}

void layout(PageDocument& document, const Table& table, const Request& request) {
    PageDocument::Style& style = document.style();
    style.fontFamily = QStringLiteral("Arial Narrow");
    style.fontSize = TitleSize;
    setBlackOnWhite(style);
    writeHeading(document, request.categorySession);

    for (int rank = 0; rank < table.size(); ++rank) {
        if (rank > 0) {
            style.penSize = 1;
            style.pen = RuleColour;
            style.penStyle = Qt::DotLine;
            document.drawFrame(Left, LastBottom, Right, LastBottom);
            style.penStyle = Qt::SolidLine;
        }
        style.fontSize = BlockSize;
        if (!document.fits(Left, LastBottom, TableLeft, Free, QStringLiteral("9"))) {
            document.breakPage();
            writeHeading(document, request.categorySession);
        }
        style.pen = Qt::black;
        style.penSize = 0;
        style.fontSize = RankSize;
        style.alignment = Qt::AlignLeft;
        if (!document.fits(Left, LastBottom, TableLeft, Free, QStringLiteral("9")))
            document.breakPage();
        writeRank(document, table[rank], rank, request);
    }

    // The numbers stand on the title's black band, so they are written in white.
    const int count = document.pageCount();
    for (int page = 0; page < count; ++page) {
        document.setPage(page);
        style.fontSize = TitleSize;
        style.alignment = Qt::AlignRight;
        style.backgroundShown = false;
        style.pen = Qt::white;
        document.writeText(TableLeft, Top, Right, Free,
                           QStringLiteral("Page %1 of %2").arg(page + 1).arg(count));
    }
    document.setPage(count - 1);
    setBlackOnWhite(style);
}

void write(PageDocument& document, TimeSlipLog& log, const Request& request) {
    filter(log, request);
    Table table = build(log);
    rank(table);
    layout(document, table, request);
}

} // namespace IncrementalTimes
