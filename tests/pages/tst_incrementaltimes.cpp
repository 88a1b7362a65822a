#include "common/TestHome.h"
#include "exchange/TimeSlip.h"
#include "pages/IncrementalTimes.h"
#include "pages/PageDocument.h"
#include "pages/PdfFile.h"
#include "pages/Viewers.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

using namespace IncrementalTimes;

namespace {

// The marks of one run: 60 ft, 330 ft, 660 ft, 660 mph, 1000 ft, 1320 ft, 1320 mph; an empty
// text for a mark the timer missed.
struct Marks {
    QString at60, at330, at660, mph660, at1000, at1320, mph1320;
};

const Marks Typical{"1.000", "3.000", "5.000", "100.00", "6.500", "8.000", "150.00"};

// One record of the receiver's log: 21 fields, the ones the report reads filled.
QStringList record(const QString& category, const QString& car, const QString& lane,
                   const Marks& marks = Typical) {
    QStringList fields;
    for (int i = 0; i < TimeSlipFieldCount; ++i)
        fields.append(QStringLiteral("x%1").arg(i));
    fields[SlipRunTime] = QStringLiteral("10/12/2025 14:00:00");
    fields[SlipCategory] = category;
    fields[SlipCarNumber] = car;
    fields[SlipLane] = lane;
    fields[Slip60ft] = marks.at60;
    fields[Slip330ft] = marks.at330;
    fields[Slip660ft] = marks.at660;
    fields[Slip660Mph] = marks.mph660;
    fields[Slip1000ft] = marks.at1000;
    fields[Slip1000Mph] = QStringLiteral("130.00");
    fields[Slip1320ft] = marks.at1320;
    fields[Slip1320Mph] = marks.mph1320;
    return fields;
}

QStringList cars(const TimeSlipLog& log) {
    QStringList list;
    for (const QStringList& row : log.rows)
        list.append(row.at(SlipCarNumber));
    return list;
}

QStringList column(const Table& table, int measure) {
    QStringList list;
    for (const Row& row : table)
        list.append(row[measure].car);
    return list;
}

// The texts placed on a page, in order.
QStringList texts(const PageDocument& document, int page) {
    QStringList list;
    for (const PageDocument::Item& item : document.page(page))
        if (item.kind == PageDocument::Item::Kind::Text)
            list.append(item.text);
    return list;
}

const PageDocument::Item* findText(const PageDocument& document, int page, const QString& text) {
    for (const PageDocument::Item& item : document.page(page))
        if (item.kind == PageDocument::Item::Kind::Text && item.text == text)
            return &item;
    return nullptr;
}

const QStringList Headings{"60 ft Time",   "60 to 330",  "330 ft ET",   "330 to 660",
                           "660 ft ET",    "660 MPH",    "660 to 1000", "1000 ft ET",
                           "1000 to 1320", "Last 1 / 8", "1 / 4 ET",    "1/ 4 MPH"};

// A log of n runs in pairs, all of "Pro Stock Q1", car i + 1 ranking i + 1 in every time.
TimeSlipLog field(int n) {
    TimeSlipLog log;
    for (int i = 0; i < n; ++i) {
        const double step = i * 0.001;
        const Marks marks{
            QString::number(1.0 + step, 'f', 3),     QString::number(3.0 + 2 * step, 'f', 3),
            QString::number(5.0 + 3 * step, 'f', 3), QString::number(100.0 - step, 'f', 3),
            QString::number(6.5 + 4 * step, 'f', 3), QString::number(8.0 + 5 * step, 'f', 3),
            QString::number(150.0 - step, 'f', 3)};
        log.rows.append(record(QStringLiteral("Pro Stock Q1"), QString::number(i + 1),
                               i % 2 ? QStringLiteral("R") : QStringLiteral("L"), marks));
    }
    return log;
}

QString pdfText(const PageDocument& document) {
    QTemporaryDir dir;
    const QString path = dir.filePath("report.pdf");
    if (!writePdf(document, path))
        return {};
    if (qEnvironmentVariableIsSet("TARNWICK_KEEP_PICTURES"))
        QFile::copy(path, qEnvironmentVariable("TARNWICK_KEEP_PICTURES") +
                              QStringLiteral("/incremental-times.pdf"));
    QProcess text;
    text.start("pdftotext", {"-layout", path, "-"});
    text.waitForFinished(60000);
    return QString::fromUtf8(text.readAllStandardOutput());
}

} // namespace

class TestIncrementalTimes : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void theHeadingsKeepTheirUnevenBlanks() {
        QStringList headings;
        for (const Measure& measure : measures())
            headings.append(measure.heading.toString());
        QCOMPARE(headings, Headings);
    }

    // The dialog's list: each category once, in the order of first appearance.
    void theCategoriesAreListedOnceEach() {
        TimeSlipLog log;
        for (const char* category :
             {"Pro Q1", "Pro Q1", "Stock Q1", "Pro Q1", "Stock Q1", "Pro Q2"})
            log.rows.append(record(QLatin1String(category), "1", "L"));
        QCOMPARE(categorySessions(log), QStringList({"Pro Q1", "Stock Q1", "Pro Q2"}));
    }

    // Rows go if their car number is empty or the category doesn't hold the text; a row that
    // goes takes the last row in its place: A B C D with B going leaves A D C.
    void aRemovedRowIsReplacedByTheLastRow() {
        TimeSlipLog log;
        log.rows = {record("Pro Q1", "A", "L"), record("Stock Q1", "B", "R"),
                    record("Pro Q1", "C", "L"), record("Pro Q1", "D", "R"),
                    record("Pro Q1", "", "L")};
        filter(log, {QStringLiteral("pro q1"), {}, {}, false});
        QCOMPARE(cars(log), QStringList({"A", "D", "C"}));
    }

    // "Pro Stock" is inside "Super Pro Stock", so both categories come in, whatever the case.
    void aCategoryInsideAnotherDrawsBothIn() {
        TimeSlipLog log;
        log.rows = {record("Super Pro Stock Q1", "1", "L"), record("Pro Stock Q1", "2", "R"),
                    record("Top Fuel Q1", "3", "L"), record("PRO STOCK Q1", "4", "R")};
        filter(log, {QStringLiteral("Pro Stock"), {}, {}, false});
        QCOMPARE(cars(log), QStringList({"1", "2", "4"}));
    }

    // A log of a single row of another category keeps it: one row is never removed. Two rows
    // of other categories leave the second.
    void aSingleRowOfAnotherCategoryStays() {
        TimeSlipLog one;
        one.rows = {record("Top Fuel Q1", "9", "L")};
        filter(one, {QStringLiteral("Pro Stock"), {}, {}, false});
        QCOMPARE(cars(one), QStringList({"9"}));
        TimeSlipLog two;
        two.rows = {record("Top Fuel Q1", "8", "L"), record("Top Fuel Q1", "9", "R")};
        filter(two, {QStringLiteral("Pro Stock"), {}, {}, false});
        QCOMPARE(cars(two), QStringList({"9"}));
        const Table table = build(two);
        QCOMPARE(table.size(), 1);
    }

    // Only the tag cars stay, compared exactly: "07" is not "7".
    void onlyTaggedCarsKeepsTheTwoTagCars() {
        TimeSlipLog log;
        log.rows = {record("Pro", "7", "L"), record("Pro", "07", "R"), record("Pro", "12", "L"),
                    record("Pro", "3", "R")};
        filter(log, {QStringLiteral("Pro"), "7", "12", true});
        QCOMPARE(cars(log), QStringList({"7", "12"}));
    }

    // A tag car that never occurs: without the box the report is whole and unmarked; with it
    // the report is empty, and the title and headings stand.
    void aTagCarThatNeverOccurs() {
        TimeSlipLog whole;
        whole.rows = {record("Pro", "1", "L"), record("Pro", "2", "R"), record("Pro", "3", "L")};
        filter(whole, {QStringLiteral("Pro"), "99", {}, false});
        QCOMPARE(whole.rows.size(), 3);

        TimeSlipLog tagged = whole;
        const Request request{QStringLiteral("Pro"), "99", {}, true};
        filter(tagged, request);
        QCOMPARE(tagged.rows.size(), 0);

        PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
        const Table table = build(tagged);
        layout(document, table, request);
        QCOMPARE(texts(document, 0).mid(0, 13), QStringList{"Pro"} + Headings);
        // No rank below the heading: only the page number follows.
        QCOMPARE(texts(document, 0).size(), 14);
        for (const PageDocument::Item& item : document.page(0))
            QVERIFY(!item.style.backgroundShown || item.style.background == Qt::black);
    }

    // Each measure from the marks: 60 ft 1.000, 330 ft 3.000, 660 ft 5.000 at 100 mph, 1000 ft
    // 6.500, 1320 ft 8.000 at 150 mph; the lane's first letter.
    void theMeasuresComeFromTheMarks() {
        TimeSlipLog log;
        log.rows = {record("Pro", "7", "Left")};
        const Table table = build(log);
        QCOMPARE(table.size(), 1);
        const std::array<float, MeasureCount> expected{1.0f, 2.0f, 3.0f, 2.0f, 5.0f, 100.0f,
                                                       1.5f, 6.5f, 1.5f, 3.0f, 8.0f, 150.0f};
        for (int measure = 0; measure < MeasureCount; ++measure) {
            QCOMPARE(table[0][measure].value, expected[measure]);
            QCOMPARE(table[0][measure].car, QStringLiteral("7"));
            QCOMPARE(table[0][measure].lane, QChar(u'L'));
        }
    }

    // A missing 330 ft time is 0: the 330 ft cell is empty, 60 to 330 is -1.000 and empty too,
    // and 330 to 660 is the whole 660 ft time, 5.000, as accepted.
    void aMissingMarkIsZeroAndTheIntervalsAroundItAreWrong() {
        Marks marks = Typical;
        marks.at330 = QString();
        TimeSlipLog log;
        log.rows = {record("Pro", "7", "L", marks)};
        const Table table = build(log);
        QCOMPARE(table[0][2].value, 0.0f);
        QCOMPARE(table[0][1].value, -1.0f);
        QCOMPARE(table[0][3].value, 5.0f);
    }

    // Rising for times, falling for speeds; 0 and negative values go last. Car 1 misses its
    // 60 ft time, car 2 runs a 330 ft earlier than its 60 ft (a negative interval).
    void eachColumnIsRankedByItself() {
        Marks one = Typical; // 60 ft missing
        one.at60 = "x";
        one.mph660 = "101.00";
        Marks two = Typical;
        two.at60 = "3.500"; // 60 to 330 is -0.5
        two.mph660 = "99.00";
        Marks three = Typical;
        three.at60 = "1.200";
        three.mph660 = "100.50";
        TimeSlipLog log;
        log.rows = {record("Pro", "1", "L", one), record("Pro", "2", "R", two),
                    record("Pro", "3", "L", three)};
        Table table = build(log);
        QCOMPARE(column(table, 0), QStringList({"1", "2", "3"}));
        rank(table);
        QCOMPARE(column(table, 0), QStringList({"3", "2", "1"})); // 1.2, 3.5, then 0
        QCOMPARE(table[2][0].value, 0.0f);
        // 60 to 330: car 3 1.8, car 1 3.0 (from a 60 ft of 0), car 2 -0.5 last
        QCOMPARE(column(table, 1), QStringList({"3", "1", "2"}));
        QCOMPARE(column(table, 5), QStringList({"1", "3", "2"})); // 101, 100.5, 99
    }

    // The page: title white on black, the headings, blue rank labels, values in their form,
    // " " for none, the tag cars in orange and blue, lane letters in size 5, "Page 1 of 1".
    void theLayoutOfOnePage() {
        // Slower than car 7 everywhere, and without a quarter mile time.
        const Marks slow{"1.100", "3.200", "5.300", "99.00", "6.900", "0", "149.00"};
        TimeSlipLog log;
        log.rows = {record("Pro Q1", "7", "L"), record("Pro Q1", "12", "R", slow),
                    record("Pro Q1", "5", "L", slow)};
        const Request request{QStringLiteral("Pro Q1"), "7", "12", false};
        PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
        write(document, log, request);
        QCOMPARE(document.pageCount(), 1);

        const QStringList all = texts(document, 0);
        QCOMPARE(all.mid(0, 13), QStringList{"Pro Q1"} + Headings);
        const PageDocument::Item* title = findText(document, 0, "Pro Q1");
        QCOMPARE(title->style.pen, QColor(Qt::white));
        QCOMPARE(title->style.background, QColor(Qt::black));
        QVERIFY(title->style.backgroundShown);
        QCOMPARE(title->rect.left(), 140.0);
        QCOMPARE(title->rect.right(), 2060.0);
        QCOMPARE(title->style.fontFamily, QStringLiteral("Arial Narrow"));

        const PageDocument::Item* first = findText(document, 0, "1)");
        QVERIFY(first);
        QCOMPARE(first->style.pen, QColor(0, 0, 255));
        QCOMPARE(first->style.fontSize, 7.0);
        QVERIFY(findText(document, 0, "2)") && findText(document, 0, "3)"));

        // The first rank row: values of car 7, whose 60 ft time 1.000 is best.
        const int rank1 = int(all.indexOf("1)"));
        QCOMPARE(all.mid(rank1 + 1, 12),
                 QStringList({"1.000", "2.000", "3.000", "2.000", "5.000", "100.00", "1.500",
                              "6.500", "1.500", "3.000", "8.000", "150.00"}));
        // The car line, then the lane letters.
        QCOMPARE(all.mid(rank1 + 13, 12), QStringList(12, "7"));
        QCOMPARE(all.mid(rank1 + 25, 12), QStringList(12, "L"));
        // Rank 2 holds cars 12 and 5 in some order: they tie. Without a quarter mile time
        // 1000 to 1320 is -6.900, last 1/8 -5.300 and the 1/4 ET 0: all print blank.
        const int rank2 = int(all.indexOf("2)"));
        QCOMPARE(all.mid(rank2 + 1, 12),
                 QStringList({"1.100", "2.100", "3.200", "2.100", "5.300", "99.00", "1.600",
                              "6.900", " ", " ", " ", "149.00"}));

        int orange = 0, blue = 0, lanes = 0;
        for (const PageDocument::Item& item : document.page(0)) {
            if (item.style.backgroundShown && item.style.background == QColor(255, 192, 0)) {
                ++orange;
                QVERIFY(item.text == "7" || item.text.contains(u'.'));
            }
            if (item.style.backgroundShown && item.style.background == QColor(0, 159, 255)) {
                ++blue;
                QVERIFY(item.text == "12" || item.text.contains(u'.') || item.text == " ");
            }
            if (item.kind == PageDocument::Item::Kind::Text && item.style.fontSize == 5.0)
                ++lanes;
        }
        QCOMPARE(orange, 24);
        QCOMPARE(blue, 24);
        QCOMPARE(lanes, 36);
        const PageDocument::Item* number = findText(document, 0, "Page 1 of 1");
        QVERIFY(number);
        QVERIFY(number->style.alignment & Qt::AlignRight);
        QVERIFY(!number->style.backgroundShown);
    }

    // From rank 100 on the label is the number alone; every page begins with the title and
    // the headings and bears its number.
    void twoThousandRunsGoOverSeveralPages() {
        TimeSlipLog log = field(2000);
        PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
        write(document, log, {QStringLiteral("Pro Stock Q1"), "1", "2000", false});
        const int pages = document.pageCount();
        QVERIFY2(pages > 10, qPrintable(QString::number(pages)));
        QVERIFY(findText(document, 0, "1)"));
        QVERIFY(!findText(document, 0, "100)"));
        int labels = 0;
        for (int page = 0; page < pages; ++page) {
            const QStringList all = texts(document, page);
            QCOMPARE(all.mid(0, 13), QStringList{"Pro Stock Q1"} + Headings);
            QVERIFY(all.contains(QStringLiteral("Page %1 of %2").arg(page + 1).arg(pages)));
            for (const PageDocument::Item& item : document.page(page)) {
                QVERIFY(item.rect.bottom() <= 2694.0);
                if (item.style.pen == QColor(0, 0, 255))
                    ++labels;
            }
        }
        QCOMPARE(labels, 2000);
        bool found99 = false, found100 = false;
        for (int page = 0; page < pages; ++page) {
            found99 = found99 || findText(document, page, "99)");
            found100 = found100 || findText(document, page, "100");
            QVERIFY(!findText(document, page, "100)"));
        }
        QVERIFY(found99 && found100);
        QVERIFY(findText(document, pages - 1, "2000"));
    }

    // The PDF reads back with the title, the headings, ranks, tag cars and page numbers.
    void theReportReadsBackFromItsPdf() {
        TimeSlipLog log = field(150);
        PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
        write(document, log, {QStringLiteral("Pro Stock Q1"), "1", "2", false});
        const int pages = document.pageCount();
        QVERIFY(pages >= 2);
        const QString out = pdfText(document);
        QVERIFY(!out.isEmpty());
        for (const QString& heading : Headings)
            QVERIFY2(out.contains(heading), qPrintable(heading));
        QCOMPARE(out.count(QStringLiteral("Pro Stock Q1")), pages);
        for (int page = 1; page <= pages; ++page)
            QVERIFY(out.contains(QStringLiteral("Page %1 of %2").arg(page).arg(pages)));
        // Rank 1: car 1's times, car 1 in every cell; rank 2 car 2.
        static const QRegularExpression rank1(
            R"(1\)\s+1\.000\s+2\.000\s+3\.000\s+2\.000\s+5\.000\s+100\.00\s+1\.500\s+6\.500\s+1\.500\s+3\.000\s+8\.000\s+150\.00)");
        QVERIFY2(rank1.match(out).hasMatch(), qPrintable(out.left(3000)));
        QVERIFY(out.contains(QRegularExpression(R"(2\)\s+1\.001)")));
        QVERIFY(out.contains(QRegularExpression(R"(99\)\s+1\.098)")));
        QVERIFY(out.contains(QRegularExpression(R"(\n\s*100\s+1\.099)")));
        QVERIFY(out.contains(QRegularExpression(R"(150\s+1\.149)")));
    }
};

QTEST_MAIN(TestIncrementalTimes)
#include "tst_incrementaltimes.moc"
