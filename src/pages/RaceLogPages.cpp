#include "pages/RaceLogPages.h"

#include "core/DateText.h"
#include "core/NumberText.h"
#include "pages/PageDocument.h"
#include "racelog/RaceLog.h"

#include <array>

namespace RaceLogPages {

namespace {

constexpr double CellWidth = -170;
constexpr double Free = PageDocument::Free;
constexpr double LastRight = PageDocument::LastRight;
constexpr double LastTop = PageDocument::LastTop;
constexpr double LastBottom = PageDocument::LastBottom;
constexpr double TableLeft = 10;
constexpr double TableTop = 10;

const QColor RowColour(255, 255, 192);
// The closing frame is drawn heavier than the cells.
constexpr double ClosingPenSize = 5;

// The columns of the times table after the run and the time, in their order on the page:
// the two heading lines and the form of a cell. The lane is shown as it stands.
struct TimesColumn {
    int number;
    const char* firstLine;
    const char* secondLine;
    const char* pattern; // nullptr for text as it stands
};
constexpr std::array<TimesColumn, 13> TimesColumns{{
    {3, " ", "LANE", nullptr},
    {4, "REAC", "TIME", "#.0000"},
    {5, "BOX", "DELAY", "#0.000"},
    {6, " ", "60'", "#0.0000"},
    {7, " ", "330'", "#0.0000"},
    {8, "660'", "ET", "#0.0000"},
    {9, "660'", "MPH", "#0.00"},
    {10, "1000'", "ET", "#0.0000"},
    {11, "1000'", "MPH", "#0.00"},
    {12, "1320'", "ET", "#0.0000"},
    {13, "1320'", "MPH", "#0.00"},
    {14, "TIMER", "2", "#0.000"},
    {17, "DIAL", "IN", "#0.00"},
}};

enum Column { TimeColumn = 1, DateColumn = 2 };

// The incremental times come from the 60 ft, 330 ft, 660 ft, 1000 ft and 1320 ft ETs.
constexpr std::array<int, 5> MarkColumns{6, 7, 8, 10, 12};

// Heading cells have a frame and a clear background; the rows are banded. A cell keeps its
// text on one line, so every row is one line high: a run number of two digits and more
// with its date reaches a little past its cell's edges, into the margins of its neighbours.
void openTable(PageDocument& page) {
    PageDocument::Style& style = page.style();
    style.alignment = Qt::AlignHCenter;
    style.wrap = false;
    style.background = Qt::white;
    style.pen = Qt::black;
    style.backgroundShown = false;
    style.fontSize = 10;
    page.storeStyle(1);
}

void startRows(PageDocument& page) {
    page.restoreStyle(1);
    page.style().background = RowColour;
}

// Runs 1, 3, 5 ... as the user counts them are tinted.
void startRow(PageDocument& page, int run) {
    page.style().backgroundShown = run % 2 == 0;
}

// One frame round the whole table, from its top left corner on the first page to the last
// cell, drawn on the last page.
void closeTable(PageDocument& page) {
    page.style().backgroundShown = true;
    page.style().penSize = ClosingPenSize;
    const QRectF last = page.lastRect();
    page.drawFrame(TableLeft, TableTop, last.right(), last.bottom());
}

QString cellText(const RunTable& runs, int row, const TimesColumn& column) {
    const QString text = runs.cell(row, column.number);
    if (!column.pattern)
        return text.isEmpty() ? QStringLiteral(" ") : text;
    const std::optional<double> value = NumberText::toDouble(text);
    const QString shown =
        value ? NumberText::format(*value, QLatin1String(column.pattern)) : QString();
    return shown.isEmpty() ? QStringLiteral(" ") : shown;
}

// "1)  11-22", or a blank where the run has no date. A time alone is a moment of the first
// day of the calendar the old program counted from, and shows as its date, "12-30".
QString runText(const RunTable& runs, int row, int run) {
    const auto value = DateText::parse(runs.cell(row, DateColumn));
    const QString date =
        value ? value->date.value_or(QDate(1899, 12, 30)).toString(QStringLiteral("MM-dd"))
              : QStringLiteral(" ");
    return QString::number(run + 1) + QStringLiteral(")  ") + date;
}

// "02:35p", or a blank where the cell holds no time.
QString timeText(const RunTable& runs, int row) {
    const auto value = DateText::parse(runs.cell(row, TimeColumn));
    if (!value)
        return QStringLiteral(" ");
    const QString text = DateText::timeText(value->time.value_or(QTime(0, 0)));
    return text.left(text.size() - 1);
}

} // namespace

void showTimes(PageDocument& page, const RaceLog& log, const QList<int>& shownColumns) {
    const RunTable& runs = log.runs();
    const auto shown = [&shownColumns](const TimesColumn& column) {
        return shownColumns.contains(column.number);
    };
    openTable(page);

    page.writeBox(TableLeft, TableTop, CellWidth, Free, QStringLiteral(" "));
    page.writeBox(LastRight, LastTop, CellWidth, Free, QStringLiteral(" "));
    for (const TimesColumn& column : TimesColumns)
        if (shown(column))
            page.writeBox(LastRight, LastTop, CellWidth, Free, QLatin1String(column.firstLine));
    page.writeBox(TableLeft, LastBottom, CellWidth, Free, QStringLiteral("RUN"));
    page.writeBox(LastRight, LastTop, CellWidth, Free, QStringLiteral("TIME"));
    for (const TimesColumn& column : TimesColumns)
        if (shown(column))
            page.writeBox(LastRight, LastTop, CellWidth, Free, QLatin1String(column.secondLine));

    startRows(page);
    for (int run = 0; run <= runs.tableRows() - 2; ++run) {
        const int row = run + 1;
        startRow(page, run);
        page.writeText(TableLeft, LastBottom, CellWidth, Free, runText(runs, row, run));
        page.writeText(LastRight, LastTop, CellWidth, Free, timeText(runs, row));
        for (const TimesColumn& column : TimesColumns)
            if (shown(column))
                page.writeText(LastRight, LastTop, CellWidth, Free, cellText(runs, row, column));
    }
    closeTable(page);
}

void showIncrementalTimes(PageDocument& page, const RaceLog& log) {
    const RunTable& runs = log.runs();
    openTable(page);

    page.writeBox(TableLeft, TableTop, CellWidth, Free, QStringLiteral(" "));
    for (const char* heading : {"60'", "330'", "660'", "1000'", " "})
        page.writeBox(LastRight, LastTop, CellWidth, Free, QLatin1String(heading));
    page.writeBox(TableLeft, LastBottom, CellWidth, Free, QStringLiteral("RUN"));
    for (const char* heading : {"330'", "660'", "1000'", "1320'", "FULL "})
        page.writeBox(LastRight, LastTop, CellWidth, Free, QLatin1String(heading));

    // The times are single precision, as the marks are kept; a mark that is no number is 0.
    QList<std::array<float, 5>> marks;
    for (int row = 1; row < runs.tableRows(); ++row) {
        std::array<float, 5>& times = marks.emplace_back();
        for (int mark = 0; mark < 5; ++mark)
            times[mark] = NumberText::toSingle(runs.cell(row, MarkColumns[mark])).value_or(0);
    }
    // A difference with a missing mark, or with a mark of exactly 0, is blank.
    const auto between = [](float from, float to) {
        return from == 0 || to == 0 ? QStringLiteral(" ")
                                    : NumberText::format(to - from, QStringLiteral("#0.0000"));
    };

    startRows(page);
    for (int run = 0; run <= runs.tableRows() - 2; ++run) {
        const std::array<float, 5>& t = marks[run];
        startRow(page, run);
        page.writeText(TableLeft, LastBottom, CellWidth, Free, QString::number(run + 1));
        for (const QString& text : {between(t[0], t[1]), between(t[1], t[2]), between(t[2], t[3]),
                                    between(t[3], t[4]), between(t[1], t[4])})
            page.writeText(LastRight, LastTop, CellWidth, Free, text);
    }
    closeTable(page);
}

} // namespace RaceLogPages
