#include "pages/PageDocument.h"
#include "pages/PdfFile.h"
#include "pages/RaceLogPages.h"
#include "pages/Viewers.h"
#include "racelog/ColumnTable.h"
#include "racelog/RaceLog.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Kind = PageDocument::Item::Kind;

// A run as the grid holds it: time, date, lane, then the time slip from column 4 on.
struct Run {
    QString time, date, lane;
    QStringList slip; // columns 4 to 14
    QString dialIn;
};

void addRuns(RaceLog& log, const QList<Run>& runs) {
    RunTable& table = log.runs();
    for (int i = 0; i < runs.size(); ++i) {
        const int row = i == 0 ? 1 : table.addRun();
        table.setCell(row, 1, runs[i].time);
        table.setCell(row, 2, runs[i].date);
        table.setCell(row, 3, runs[i].lane);
        for (int c = 0; c < runs[i].slip.size(); ++c)
            table.setCell(row, 4 + c, runs[i].slip[c]);
        table.setCell(row, 17, runs[i].dialIn);
    }
}

const Run FirstRun{"02:35pm",
                   "11/22/26",
                   "L",
                   {"0.4512", "1.25", "1.3211", "3.8123", "6.0234", "110.5", "7.9012", "140.25",
                    "9.5041", "150.75", "2"},
                   "9.5"};
const Run SecondRun{"", "", "", {"", "", "1.4", "", "6.1", "", "7.95", "", "9.6", "", ""}, ""};

QStringList texts(const PageDocument::Page& page, int first, int count) {
    QStringList list;
    for (int i = first; i < first + count; ++i)
        list << page[i].text;
    return list;
}

QStringList allTexts(const PageDocument& document) {
    QStringList list;
    for (int page = 0; page < document.pageCount(); ++page)
        for (const PageDocument::Item& item : document.page(page))
            if (item.kind == Kind::Text)
                list << item.text;
    return list;
}

} // namespace

class TestRaceLogPages : public QObject {
    Q_OBJECT
private slots:
    void theTimesTableHasTwoHeadingLinesAndARowForEachRun() {
        RaceLog log;
        addRuns(log, {FirstRun, SecondRun});
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(document, log, ColumnTable::everyColumn());
        const PageDocument::Page& page = document.page(0);
        QCOMPARE(texts(page, 0, 15),
                 QStringList({" ", " ", " ", "REAC", "BOX", " ", " ", "660'", "660'", "1000'",
                              "1000'", "1320'", "1320'", "TIMER", "DIAL"}));
        QCOMPARE(texts(page, 15, 15),
                 QStringList({"RUN", "TIME", "LANE", "TIME", "DELAY", "60'", "330'", "ET", "MPH",
                              "ET", "MPH", "ET", "MPH", "2", "IN"}));
        QCOMPARE(texts(page, 30, 15), QStringList({"1)  11-22", "02:35p", "L", ".4512", "1.250",
                                                   "1.3211", "3.8123", "6.0234", "110.50", "7.9012",
                                                   "140.25", "9.5041", "150.75", "2.000", "9.50"}));
        // Missing values keep their place with a blank cell.
        QCOMPARE(texts(page, 45, 15),
                 QStringList({"2)   ", " ", " ", " ", " ", "1.4000", " ", "6.1000", " ", "7.9500",
                              " ", "9.6000", " ", " ", " "}));
        // Cells 170 wide, side by side from x = 10; the second line under the first.
        QCOMPARE(page[0].rect.topLeft(), QPointF(10, 10));
        QCOMPARE(page[14].rect.left(), 10.0 + 14 * 170);
        QCOMPARE(page[15].rect.top(), page[0].rect.bottom());
        QCOMPARE(page[30].rect.top(), page[15].rect.bottom());
        // Every cell holds its text on one line.
        for (const PageDocument::Item& cell : page)
            if (cell.kind == Kind::Text)
                QCOMPARE(cell.rect.height(), page[0].rect.height());
    }

    void headingCellsAreFramedAndRunsBanded() {
        RaceLog log;
        addRuns(log, {FirstRun, SecondRun, FirstRun});
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(document, log, ColumnTable::everyColumn());
        const PageDocument::Page& page = document.page(0);
        QVERIFY(page[0].framed && !page[0].style.backgroundShown);
        QCOMPARE(page[0].style.alignment, Qt::AlignHCenter);
        const QColor band(255, 255, 192);
        for (int run = 0; run < 3; ++run) {
            const PageDocument::Item& cell = page[30 + 15 * run + 4];
            QVERIFY(!cell.framed);
            QCOMPARE(cell.style.backgroundShown, run % 2 == 0);
            QCOMPARE(cell.style.background, band);
            QCOMPARE(cell.style.fontFamily, QStringLiteral("Tahoma"));
            QCOMPARE(cell.style.fontSize, 10.0);
        }
    }

    // The closing frame runs from 10, 10 round the whole table to the last cell.
    void aFrameClosesTheTable() {
        RaceLog log;
        addRuns(log, {FirstRun, SecondRun});
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(document, log, ColumnTable::everyColumn());
        const PageDocument::Page& page = document.page(0);
        QCOMPARE(page.size(), 61);
        QCOMPARE(page.last().kind, Kind::Frame);
        QCOMPARE(page.last().rect, QRectF(QPointF(10, 10), page[59].rect.bottomRight()));
    }

    void aHiddenColumnLeavesThePage() {
        RaceLog log;
        addRuns(log, {FirstRun});
        QList<int> shown = ColumnTable::everyColumn();
        shown.removeOne(9);
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(document, log, shown);
        const PageDocument::Page& page = document.page(0);
        QCOMPARE(page.size(), 3 * 14 + 1);
        QCOMPARE(texts(page, 14, 14).at(8), QStringLiteral("ET"));
        QVERIFY(!texts(page, 28, 14).contains(QStringLiteral("110.50")));
        QCOMPARE(page.last().rect.right(), 10.0 + 14 * 170);
    }

    // A new log holds run 1 alone, empty: the headings, one empty row and the frame.
    void anEmptyLogShowsItsHeadings() {
        RaceLog log;
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(document, log, ColumnTable::everyColumn());
        const PageDocument::Page& page = document.page(0);
        QCOMPARE(page.size(), 46);
        QCOMPARE(texts(page, 30, 2), QStringList({"1)   ", " "}));
    }

    // 150 runs need several pages: the heading stands on the first alone, every run is there
    // once and in order, and the frame is drawn on the last page only.
    void aLongLogBreaksOntoSeveralPages() {
        RaceLog log;
        QList<Run> runs;
        for (int i = 0; i < 150; ++i)
            runs << FirstRun;
        addRuns(log, runs);
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(document, log, ColumnTable::everyColumn());
        QVERIFY2(document.pageCount() >= 3, qPrintable(QString::number(document.pageCount())));
        QStringList numbers;
        for (int page = 0; page < document.pageCount(); ++page) {
            int frames = 0;
            int headings = 0;
            for (const PageDocument::Item& item : document.page(page)) {
                if (item.kind == Kind::Frame)
                    ++frames;
                else if (item.text.endsWith(QStringLiteral(")  11-22")))
                    numbers << item.text.section(u')', 0, 0);
                else if (item.text == u"RUN")
                    ++headings;
            }
            QCOMPARE(headings, page == 0 ? 1 : 0);
            QCOMPARE(frames, page == document.pageCount() - 1 ? 1 : 0);
            // Rows on later pages start at the top of the output rectangle.
            if (page > 0)
                QCOMPARE(document.page(page).first().rect.top(), document.outputRect().top());
        }
        QStringList expected;
        for (int i = 1; i <= 150; ++i)
            expected << QString::number(i);
        QCOMPARE(numbers, expected);
        // Three-digit runs stay one line high, as every row does.
        const PageDocument::Page& last = document.page(document.pageCount() - 1);
        QCOMPARE(last[0].rect.height(), document.page(0)[0].rect.height());
    }

    void incrementalTimesAreTheTimesBetweenTheMarks() {
        RaceLog log;
        // 60 ft but no 330 ft: the first two and FULL are blank.
        Run noThreeThirty = FirstRun;
        noThreeThirty.slip[3] = QString();
        addRuns(log, {FirstRun, noThreeThirty});
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showIncrementalTimes(document, log);
        const PageDocument::Page& page = document.page(0);
        QCOMPARE(texts(page, 0, 6), QStringList({" ", "60'", "330'", "660'", "1000'", " "}));
        QCOMPARE(texts(page, 6, 6),
                 QStringList({"RUN", "330'", "660'", "1000'", "1320'", "FULL "}));
        // 60' 1.3211, 330' 3.8123, 660' 6.0234, 1000' 7.9012, 1320' 9.5041.
        QCOMPARE(texts(page, 12, 6),
                 QStringList({"1", "2.4912", "2.2111", "1.8778", "1.6029", "5.6918"}));
        QCOMPARE(texts(page, 18, 6), QStringList({"2", " ", " ", "1.8778", "1.6029", " "}));
        QCOMPARE(page.last().kind, Kind::Frame);
        QCOMPARE(page.last().rect, QRectF(QPointF(10, 10), page[23].rect.bottomRight()));
    }

    void theViewersOpenTheirDocumentsAsTheTableSays() {
        const PageDocument pages = Viewers::newDocument(Viewers::Kind::Pages);
        const QSizeF standard = Viewers::standardPageSize();
        QCOMPARE(pages.pageSize(), standard.transposed());
        QCOMPARE(pages.outputRect(), QRectF(QPointF(100, 100), QPointF(2600, 1900)));
        QCOMPARE(pages.metadata.title, QStringLiteral("Tarnwick - Viewer"));
        QCOMPARE(pages.metadata.subject, QStringLiteral("Tarnwick"));
        QCOMPARE(pages.metadata.keywords, QStringLiteral("Tarnwick, Pellamor, Oskerby"));
        const PageDocument report = Viewers::newDocument(Viewers::Kind::Report);
        QCOMPARE(report.pageSize(), QSizeF(2159, 2794));
        QCOMPARE(report.outputRect(), QRectF(QPointF(100, 100), QPointF(2060, 2694)));
        QCOMPARE(report.metadata.subject, QStringLiteral("Tarnwick Report"));
        QCOMPARE(Viewers::proposedPdfName(Viewers::Kind::Pages, QDate(2007, 3, 9)),
                 QStringLiteral("2007-03-09.pdf"));
        QCOMPARE(Viewers::proposedPdfName(Viewers::Kind::Report, QDate(2007, 3, 9)),
                 QStringLiteral("2007-03-09 Report.pdf"));
        QVERIFY(Viewers::isPdfName("/tmp/a.pdf"));
        QVERIFY(Viewers::isPdfName("/tmp/apdf"));
        QVERIFY(!Viewers::isPdfName("/tmp/a.PDF"));
        QVERIFY(!Viewers::isPdfName("/tmp/a.pdf.txt"));
    }

    // The PDF of a times table reads back with every cell, in order.
    void theTimesTableReadsBackFromItsPdf() {
        RaceLog log;
        addRuns(log, {FirstRun, SecondRun});
        PageDocument document = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(document, log, ColumnTable::everyColumn());
        QTemporaryDir dir;
        QVERIFY(writePdf(document, dir.filePath("times.pdf")));
        QProcess text;
        text.start("pdftotext", {"-layout", dir.filePath("times.pdf"), "-"});
        QVERIFY(text.waitForFinished(30000));
        const QString out = QString::fromUtf8(text.readAllStandardOutput());
        qsizetype at = 0;
        for (const QString& cell : allTexts(document)) {
            if (cell.trimmed().isEmpty())
                continue;
            for (const QString& word : cell.split(u' ', Qt::SkipEmptyParts)) {
                at = out.indexOf(word, at);
                QVERIFY2(at >= 0, qPrintable(word + "\n" + out));
            }
        }
    }
};

QTEST_MAIN(TestRaceLogPages)
#include "tst_racelogpages.moc"
