#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "exchange/ExcelExport.h"
#include "exchange/Workbook.h"
#include "racelog/RaceLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>
#include <initializer_list>
#include <memory>
#include <utility>

// The workbooks are read back by a spreadsheet library of another language (openpyxl), so the
// tests see what a spreadsheet program would see, not what the writer meant to write.

namespace {

const QString StandardTemplate = QStringLiteral(TARNWICK_STANDARD_TEMPLATE);
// A template with bytes changed by the fuzzer, whose workbook, written again, made the
// archive free the bytes it had been read from.
const QString WrittenOverItsFront =
    QStringLiteral(TARNWICK_FUZZ_SEEDS) +
    QStringLiteral("/fuzz_workbook/written_back_over_its_own_front");

QString python() {
    // The system's interpreter carries the Debian openpyxl; another one on PATH may not.
    return QFile::exists(QStringLiteral("/usr/bin/python3")) ? QStringLiteral("/usr/bin/python3")
                                                             : QStringLiteral("python3");
}

QJsonObject readBack(const QString& path) {
    QProcess reader;
    reader.start(python(), {QStringLiteral(TARNWICK_WORKBOOK_READER), path});
    if (!reader.waitForFinished(60000) || reader.exitCode() != 0) {
        qWarning() << reader.readAllStandardError();
        return {};
    }
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& data) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(data) == data.size();
}

void setCells(RaceLog& log, int row, std::initializer_list<std::pair<int, QString>> cells) {
    while (log.runs().tableRows() <= row)
        log.runs().addRun();
    for (const auto& [column, text] : cells)
        log.runs().setCell(row, column, text);
}

// A run with every column filled: column c holds 100 + c, except the labels and a few texts.
void fillRun(RaceLog& log, int row, int offset) {
    for (int column = 1; column < RunTable::ColumnCount; ++column)
        setCells(log, row, {{column, QString::number(offset + column)}});
    setCells(log, row, {{1, "02:35pm"}, {2, "11/22/26"}, {3, "1"}, {30, "NNE"}});
}

// A cell as read back: its type and value.
QJsonArray typed(const QString& type, const QJsonValue& value) {
    return QJsonArray{type, value};
}

const QJsonObject sheetOf(const QJsonObject& book, const QString& sheet) {
    return book["cells"].toObject()[sheet].toObject();
}

QJsonArray cellOf(const QJsonObject& book, const QString& sheet, const QString& reference) {
    const QJsonArray cell = sheetOf(book, sheet)[reference].toArray();
    return cell.isEmpty() ? QJsonArray() : QJsonArray{cell[0], cell[1]};
}

QString columnLetter(int column) {
    QString letters;
    for (; column > 0; column = (column - 1) / 26)
        letters.prepend(QChar(u'A' + (column - 1) % 26));
    return letters;
}

QString ref(int row, int column) {
    return columnLetter(column) + QString::number(row);
}

// The sheet rows of the standard layout and the run table column each shows.
const std::pair<int, int> StandardMap[] = {
    {4, 2},   {5, 1},   {6, 3},   {8, 22},  {9, 23},  {10, 24}, {11, 19}, {12, 21},
    {13, 20}, {14, 30}, {21, 15}, {22, 14}, {23, 16}, {26, 5},  {27, 4},  {28, 6},
    {29, 7},  {30, 8},  {31, 9},  {32, 10}, {33, 11}, {34, 12}, {35, 13}, {36, 17},
};

} // namespace

class TestExcelExport : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home;
    QJsonObject templateBook;

    QString inHome(const QString& name) const { return home->root() + u'/' + name; }

    // Exports into name under the home and reads the workbook back.
    QJsonObject exported(const RaceLog& log, const QString& templatePath,
                         const QString& name = QStringLiteral("out.xlsx")) {
        const std::optional<QString> failure = ExcelExport::write(log, inHome(name), templatePath);
        if (failure) {
            qWarning() << *failure;
            return {};
        }
        return readBack(inHome(name));
    }

private slots:
    void initTestCase() {
        templateBook = readBack(StandardTemplate);
        QVERIFY2(!templateBook.isEmpty(), "openpyxl cannot read the standard template");
    }
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    // --- The standard layout ---

    void theStandardLayoutFillsOneColumnPerRun() {
        RaceLog log;
        log.setField(RaceLog::Field::RaceTrack, "Gainesville");
        log.setField(RaceLog::Field::Notes, "Rain after run 2");
        fillRun(log, 1, 100);
        fillRun(log, 2, 200);
        setCells(log, 2, {{12, "7.912"}, {4, ".503"}});
        const QJsonObject book = exported(log, StandardTemplate);
        QVERIFY(!book.isEmpty());

        QCOMPARE(cellOf(book, "Runs", "B3"), typed("s", "Gainesville"));
        QCOMPARE(cellOf(book, "Runs", "B38"), typed("s", "Rain after run 2"));
        for (int run = 1; run <= 2; ++run) {
            const int offset = run * 100;
            const int column = run + 1;
            // The labels stay text even when they read as numbers: lane "1".
            QCOMPARE(cellOf(book, "Runs", ref(4, column)), typed("s", "11/22/26"));
            QCOMPARE(cellOf(book, "Runs", ref(5, column)), typed("s", "02:35pm"));
            QCOMPARE(cellOf(book, "Runs", ref(6, column)), typed("s", "1"));
            QCOMPARE(cellOf(book, "Runs", ref(14, column)), typed("s", "NNE"));
            for (const auto& [sheetRow, gridColumn] : StandardMap) {
                if (sheetRow <= 6 || gridColumn == 30 ||
                    (run == 2 && (gridColumn == 12 || gridColumn == 4)))
                    continue;
                QCOMPARE(cellOf(book, "Runs", ref(sheetRow, column)),
                         typed("n", offset + gridColumn));
            }
        }
        QCOMPARE(cellOf(book, "Runs", "C34"), typed("n", 7.912));
        QCOMPARE(cellOf(book, "Runs", "C27"), typed("n", 0.503));
    }

    // Wind speed and gust, dew point, absolute humidity, air density ratio, light and the
    // rest have no row in the standard layout: exactly the template's cells and the map's
    // cells hold values.
    void theStandardLayoutWritesOnlyItsCells() {
        RaceLog log;
        log.setField(RaceLog::Field::RaceTrack, "Bristol");
        log.setField(RaceLog::Field::Notes, "Test");
        fillRun(log, 1, 100);
        const QJsonObject book = exported(log, StandardTemplate);
        QJsonObject expected = sheetOf(templateBook, "Runs");
        const QJsonObject written = sheetOf(book, "Runs");
        expected.insert("B3", written["B3"]);
        expected.insert("B38", written["B38"]);
        for (const auto& [sheetRow, gridColumn] : StandardMap)
            expected.insert(ref(sheetRow, 2), written[ref(sheetRow, 2)]);
        QCOMPARE(QStringList(written.keys()), QStringList(expected.keys()));
        for (int missing : {18, 25, 26, 27, 28, 29, 31, 32, 33})
            for (const QJsonValue cell : written)
                QVERIFY(cell[1] != QJsonValue(100 + missing));
    }

    // An empty run, such as the grid's empty last row, gives an empty column; a value that
    // is no number is written as text.
    void anEmptyRunGivesAnEmptyColumn() {
        RaceLog log;
        fillRun(log, 1, 100);
        setCells(log, 1, {{22, "n/a"}, {23, ""}});
        log.runs().addRun();
        const QJsonObject book = exported(log, StandardTemplate);
        QCOMPARE(cellOf(book, "Runs", "B8"), typed("s", "n/a"));
        QCOMPARE(cellOf(book, "Runs", "B9"), QJsonArray());
        QCOMPARE(cellOf(book, "Runs", "B3"), QJsonArray());
        for (const auto& [sheetRow, gridColumn] : StandardMap)
            QCOMPARE(cellOf(book, "Runs", ref(sheetRow, 3)), QJsonArray());
    }

    // Only the written cells change: the other sheet, the formulas, styles, defined name and
    // column widths come through, and every other part of the archive byte for byte.
    void theTemplateSurvives() {
        RaceLog log;
        fillRun(log, 1, 100);
        const QJsonObject book = exported(log, StandardTemplate);
        QCOMPARE(book["sheets"], templateBook["sheets"]);
        QCOMPARE(sheetOf(book, "Summary"), sheetOf(templateBook, "Summary"));
        QCOMPARE(sheetOf(book, "Runs")["B40"], sheetOf(templateBook, "Runs")["B40"]);
        QCOMPARE(sheetOf(book, "Runs")["A34"], sheetOf(templateBook, "Runs")["A34"]);
        QCOMPARE(book["names"], templateBook["names"]);
        QCOMPARE(book["widths"], templateBook["widths"]);
        QVERIFY(book["recalculate"].toBool());
        // A written cell keeps the template's style: the ET's three decimals.
        QCOMPARE(sheetOf(book, "Runs")["B34"][3], QJsonValue("0.000"));
        QCOMPARE(sheetOf(book, "Runs")["A3"][2], QJsonValue(true));

        QJsonObject entries = book["entries"].toObject();
        QJsonObject before = templateBook["entries"].toObject();
        QCOMPARE(QStringList(entries.keys()), QStringList(before.keys()));
        QVERIFY(entries["xl/worksheets/sheet1.xml"] != before["xl/worksheets/sheet1.xml"]);
        for (const char* part : {"xl/worksheets/sheet1.xml", "xl/workbook.xml"}) {
            entries.remove(part);
            before.remove(part);
        }
        QCOMPARE(entries, before);
        QVERIFY(book["inOrder"].toBool());
    }

    // --- The plain layout ---

    void anyOtherTemplateGetsThePlainTable() {
        const QString plain = inHome("team.xlsx");
        QVERIFY(QFile::copy(StandardTemplate, plain));
        RaceLog log;
        log.setField(RaceLog::Field::RaceTrack, "Gainesville");
        fillRun(log, 1, 100);
        fillRun(log, 2, 200);
        setCells(log, 2, {{25, "high"}, {26, ""}});
        const QJsonObject book = exported(log, plain);

        const QStringList headings = {
            "Time",    "Date",       "Lane",    "RT",       "Delay Box", "60 ft",    "330 ft",
            "660 ft",  "660 MPH",    "1000 ft", "1000 MPH", "1320 ft",   "1320 MPH", "Timer 2",
            "Timer 1", "Shift Time", "Dial-In", "",         "AA",        "DA",       "VP",
            "ABP",     "Temp",       "RH",      "AH",       "GR",        "DP",       "ADR",
            "PA",      "WD",         "WS",      "WG",       "AL"};
        for (int column = 1; column <= 33; ++column) {
            const QString heading = headings[column - 1];
            QCOMPARE(cellOf(book, "Runs", ref(1, column)),
                     heading.isEmpty() ? QJsonArray() : typed("s", heading));
        }
        QCOMPARE(cellOf(book, "Runs", "AH1"), QJsonArray());
        for (int run = 1; run <= 2; ++run) {
            QCOMPARE(cellOf(book, "Runs", ref(run + 1, 1)), typed("s", "02:35pm"));
            QCOMPARE(cellOf(book, "Runs", ref(run + 1, 2)), typed("s", "11/22/26"));
            // A numeric value is a number in the plain table, the lane too.
            QCOMPARE(cellOf(book, "Runs", ref(run + 1, 3)), typed("n", 1));
            QCOMPARE(cellOf(book, "Runs", ref(run + 1, 18)), typed("n", run * 100 + 18));
            QCOMPARE(cellOf(book, "Runs", ref(run + 1, 33)), typed("n", run * 100 + 33));
            QCOMPARE(cellOf(book, "Runs", ref(run + 1, 30)), typed("s", "NNE"));
        }
        QCOMPARE(cellOf(book, "Runs", "Y3"), typed("s", "high"));
        QCOMPARE(cellOf(book, "Runs", "Z3"), QJsonArray());
        // The track is no part of the plain table.
        for (const QJsonValue cell : sheetOf(book, "Runs"))
            QVERIFY(cell[1] != QJsonValue("Gainesville"));
        QCOMPARE(sheetOf(book, "Summary"), sheetOf(templateBook, "Summary"));
    }

    // --- Which template ---

    void onlyTheLastEighteenCharactersCount_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("standard");
        QTest::newRow("the shipped one") << "/opt/tarnwick/Bramholdtrack.xlsx" << true;
        QTest::newRow("more letters before") << "/sheets/OldBramholdtrack.xlsx" << true;
        QTest::newRow("no folder") << "Bramholdtrack.xlsx" << true;
        QTest::newRow("other case") << "/sheets/bramholdtrack.xlsx" << false;
        QTest::newRow("old workbook") << "/sheets/Bramholdtrack.xls" << false;
        QTest::newRow("a copy") << "/sheets/Bramholdtrack.xlsx.bak" << false;
        QTest::newRow("another") << "/sheets/team.xlsx" << false;
    }
    void onlyTheLastEighteenCharactersCount() {
        QFETCH(QString, path);
        QFETCH(bool, standard);
        QCOMPARE(ExcelExport::isStandardTemplate(path), standard);
    }

    void aTemplateWithMoreLettersBeforeTheNameIsStandard() {
        const QString renamed = inHome("TeamBramholdtrack.xlsx");
        QVERIFY(QFile::copy(StandardTemplate, renamed));
        RaceLog log;
        log.setField(RaceLog::Field::RaceTrack, "Gainesville");
        fillRun(log, 1, 100);
        const QJsonObject book = exported(log, renamed);
        QCOMPARE(cellOf(book, "Runs", "B3"), typed("s", "Gainesville"));
        QCOMPARE(cellOf(book, "Runs", "A1"), typed("s", "Tarnwick Race Log"));
    }

    void theTemplateIsTheSettingOrTheShippedOne() {
        const QString shipped =
            QCoreApplication::applicationDirPath() + QStringLiteral("/Bramholdtrack.xlsx");
        QCOMPARE(ExcelExport::templatePath(), shipped);
        // The build puts the template where the program looks for it.
        QCOMPARE(readAll(shipped), readAll(StandardTemplate));
        Registry::set(SettingKeys::MasterTemplate, "/sheets/team.xlsx");
        QCOMPARE(ExcelExport::templatePath(), QStringLiteral("/sheets/team.xlsx"));
    }

    // A template that does not ask for a recalculation gets the mark all the same.
    void theWorkbookIsWorkedOutAgainOnOpening() {
        const QString stripped = inHome("PlainBramholdtrack.xlsx");
        QProcess rewrite;
        rewrite.start(python(), {"-c",
                                 "import re, sys, zipfile\n"
                                 "with zipfile.ZipFile(sys.argv[1]) as a, "
                                 "zipfile.ZipFile(sys.argv[2], 'w', zipfile.ZIP_DEFLATED) as b:\n"
                                 "    for i in a.infolist():\n"
                                 "        d = a.read(i.filename)\n"
                                 "        if i.filename == 'xl/workbook.xml':\n"
                                 "            d = re.sub(rb'<calcPr[^>]*/>', b'', d)\n"
                                 "        b.writestr(i, d)\n",
                                 StandardTemplate, stripped});
        QVERIFY(rewrite.waitForFinished(60000) && rewrite.exitCode() == 0);
        QVERIFY(!readBack(stripped)["recalculate"].toBool());
        RaceLog log;
        fillRun(log, 1, 100);
        const QJsonObject book = exported(log, stripped);
        QVERIFY(book["recalculate"].toBool());
        QCOMPARE(book["names"], templateBook["names"]);
    }

    void theSaveDialogueProposesTodaysLog() {
        const Dialogs::FileRequest request =
            ExcelExport::saveRequest(QDate(2026, 11, 22), QStringLiteral("/opt/tarnwick"));
        QVERIFY(request.save);
        QCOMPARE(request.title, QStringLiteral("Save Excel File"));
        QCOMPARE(request.fileName, QStringLiteral("2026-11-22log.xlsx"));
        QCOMPARE(request.filter,
                 QStringLiteral("Microsoft Excel Files (*.xlsx) |*.xlsx|All Files (*.*) |*.*|"));
        QCOMPARE(request.filterIndex, 1);
        QCOMPARE(request.initialFolder, QStringLiteral("/opt/tarnwick"));
        Registry::set(SettingKeys::FileDialogFolder, "/home/team/logs");
        QCOMPARE(ExcelExport::saveRequest(QDate(2026, 11, 22), "/opt/tarnwick").initialFolder,
                 QStringLiteral("/home/team/logs"));
        QCOMPARE(ExcelExport::withExtension("/logs/event"), QStringLiteral("/logs/event.xlsx"));
        QCOMPARE(ExcelExport::withExtension("/logs/event.xls"), QStringLiteral("/logs/event.xls"));
    }

    // --- Failures ---

    void aTemplateThatIsNoWorkbookIsRefused_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("contents");
        // The start of an old binary workbook's compound file.
        QTest::newRow("old workbook")
            << "Bramholdtrack.xls"
            << QByteArray::fromHex("d0cf11e0a1b11ae1") + QByteArray(504, '\0');
        QTest::newRow("text") << "team.xlsx" << QByteArray("Time,Date\r\n");
        QTest::newRow("empty") << "Bramholdtrack.xlsx" << QByteArray();
    }
    void aTemplateThatIsNoWorkbookIsRefused() {
        QFETCH(QString, name);
        QFETCH(QByteArray, contents);
        const QString path = inHome(name);
        QVERIFY(writeFile(path, contents));
        RaceLog log;
        fillRun(log, 1, 100);
        const std::optional<QString> failure = ExcelExport::write(log, inHome("out.xlsx"), path);
        QVERIFY(failure);
        QVERIFY2(failure->contains(path), qPrintable(*failure));
        QVERIFY(!QFile::exists(inHome("out.xlsx")));
    }

    void aMissingTemplateIsNamed() {
        RaceLog log;
        const QString path = inHome("gone/Bramholdtrack.xlsx");
        const std::optional<QString> failure = ExcelExport::write(log, inHome("out.xlsx"), path);
        QVERIFY(failure);
        QVERIFY(failure->contains(path));
    }

    // An existing file is replaced by a complete new workbook, and kept as it was when the
    // export fails; nothing is left beside it.
    void anExistingTargetIsReplacedOnlyByACompleteWorkbook() {
        const QString target = inHome("log.xlsx");
        QVERIFY(writeFile(target, "an older export"));
        RaceLog log;
        fillRun(log, 1, 100);
        QVERIFY(ExcelExport::write(log, target, inHome("none.xlsx")));
        QCOMPARE(readAll(target), QByteArray("an older export"));
        QVERIFY(writeFile(inHome("broken.xlsx"), "not a zip"));
        QVERIFY(ExcelExport::write(log, target, inHome("broken.xlsx")));
        QCOMPARE(readAll(target), QByteArray("an older export"));

        QVERIFY(!ExcelExport::write(log, target, StandardTemplate));
        QCOMPARE(cellOf(readBack(target), "Runs", "B34"), typed("n", 112));
        QCOMPARE(QDir(home->root()).entryList({"log*"}, QDir::Files), QStringList{"log.xlsx"});
    }

    void aTargetThatCannotBeWrittenIsReported() {
        RaceLog log;
        const std::optional<QString> failure =
            ExcelExport::write(log, inHome("no/such/folder/out.xlsx"), StandardTemplate);
        QVERIFY(failure);
        QVERIFY(failure->contains(inHome("no/such/folder/out.xlsx")));
    }

    // --- The workbook filler on its own ---

    // Cells go in row and column order whatever the order they are set in, and a cell set
    // twice holds the last value.
    void cellsKeepTheirOrder() {
        std::optional<Workbook> book = Workbook::fromTemplate(readAll(StandardTemplate));
        QVERIFY(book);
        QCOMPARE(book->sheetPath(), QStringLiteral("xl/worksheets/sheet1.xml"));
        book->setNumber(50, 30, 1.5);
        book->setText(50, 2, "  padded ");
        book->setText(2, 27, "AA column");
        book->setNumber(50, 30, 2.25);
        book->setText(40, 2, "over a formula");
        book->setNumber(3, 1, 7);
        const std::optional<QByteArray> bytes = book->bytes();
        QVERIFY(bytes);
        QVERIFY(writeFile(inHome("cells.xlsx"), *bytes));
        const QJsonObject back = readBack(inHome("cells.xlsx"));
        QCOMPARE(cellOf(back, "Runs", "AD50"), typed("n", 2.25));
        QCOMPARE(cellOf(back, "Runs", "B50"), typed("s", "  padded "));
        QCOMPARE(cellOf(back, "Runs", "AA2"), typed("s", "AA column"));
        QCOMPARE(cellOf(back, "Runs", "B40"), typed("s", "over a formula"));
        QCOMPARE(cellOf(back, "Runs", "A3"), typed("n", 7));
        QCOMPARE(sheetOf(back, "Runs")["A3"][2], QJsonValue(true));
        QCOMPARE(cellOf(back, "Runs", "C40"), cellOf(templateBook, "Runs", "C40"));
        QVERIFY(back["inOrder"].toBool());
    }

    // A workbook the export wrote serves as a template in turn. Its changed parts now stand at
    // the end of the archive, so writing it again keeps the archive's unchanged front; the
    // archive works on a copy of its own, and never frees the bytes it was read from.
    void aWrittenWorkbookIsATemplateInTurn() {
        std::optional<Workbook> first = Workbook::fromTemplate(readAll(StandardTemplate));
        QVERIFY(first);
        first->setText(2, 2, QStringLiteral("first"));
        const std::optional<QByteArray> written = first->bytes();
        QVERIFY(written);
        const QByteArray kept = *written;

        std::optional<Workbook> second = Workbook::fromTemplate(*written);
        QVERIFY(second);
        second->setNumber(3, 3, 1.5);
        const std::optional<QByteArray> again = second->bytes();
        QVERIFY(again);
        QCOMPARE(*written, kept);
        QVERIFY(writeFile(inHome("again.xlsx"), *again));
        const QJsonObject back = readBack(inHome("again.xlsx"));
        QCOMPARE(cellOf(back, "Runs", "B2"), typed("s", "first"));
        QCOMPARE(cellOf(back, "Runs", "C3"), typed("n", 1.5));
    }

    // The same on the template the fuzzer found, with the cells it set.
    void aFuzzedTemplateIsWrittenTwice() {
        const QByteArray original = readAll(WrittenOverItsFront);
        std::optional<Workbook> first = Workbook::fromTemplate(original);
        QVERIFY(first);
        first->setText(6451, 8643, QString::fromLatin1(original.left(32)));
        first->setNumber(6452, 8643, 6451.0 / 7);
        first->setText(1, 1, QStringLiteral(" a label "));
        first->clear(2, 2);
        const std::optional<QByteArray> written = first->bytes();
        QVERIFY(written);
        std::optional<Workbook> second = Workbook::fromTemplate(*written);
        QVERIFY(second);
        second->setNumber(3, 3, 1.5);
        QVERIFY(second->bytes());
    }
};

QTEST_GUILESS_MAIN(TestExcelExport)
#include "tst_excelexport.moc"
