#include "exchange/CsvRecords.h"

#include <QTest>

namespace {

QList<QStringList> allRecords(const QString& text) {
    CsvRecords records(text);
    QList<QStringList> all;
    while (!records.atEnd())
        all.append(records.next());
    return all;
}

} // namespace

class TestCsvRecords : public QObject {
    Q_OBJECT
private slots:
    void linesEndedByLineFeeds() {
        QCOMPARE(allRecords(QStringLiteral("a,b,c\nd,e,f\n")),
                 (QList<QStringList>{{"a", "b", "c"}, {"d", "e", "f"}}));
    }

    void linesEndedByCarriageReturnLineFeeds() {
        QCOMPARE(allRecords(QStringLiteral("a,b\r\nc,d\r\n")),
                 (QList<QStringList>{{"a", "b"}, {"c", "d"}}));
    }

    // Both kinds in one text, and a carriage return on its own, end a record alike.
    void mixedLineEnds() {
        QCOMPARE(allRecords(QStringLiteral("a\r\nb\nc\rd")),
                 (QList<QStringList>{{"a"}, {"b"}, {"c"}, {"d"}}));
    }

    void aLastLineWithoutLineEndIsARecord() {
        QCOMPARE(allRecords(QStringLiteral("a,b\r\nc,d")),
                 (QList<QStringList>{{"a", "b"}, {"c", "d"}}));
    }

    // The line end after the last record starts no empty record; a blank line inside does.
    void blankLines() {
        QCOMPARE(allRecords(QStringLiteral("a\n")), (QList<QStringList>{{"a"}}));
        QCOMPARE(allRecords(QStringLiteral("a\n\nb\n")), (QList<QStringList>{{"a"}, {""}, {"b"}}));
        QCOMPARE(allRecords(QStringLiteral("a\n\n")), (QList<QStringList>{{"a"}, {""}}));
    }

    void nothingToRead() {
        CsvRecords records(u"");
        QVERIFY(records.atEnd());
        QCOMPARE(records.next(), QStringList());
    }

    void quotedFieldsHoldCommasAndDoubledQuotes() {
        // "Super Pro, Round 2" holds a comma; "the ""Hemi"" car" two doubled quotes.
        const QString text =
            QStringLiteral("1,\"Super Pro, Round 2\",\"the \"\"Hemi\"\" car\",\"\"\r\n");
        QCOMPARE(allRecords(text),
                 (QList<QStringList>{{"1", "Super Pro, Round 2", "the \"Hemi\" car", ""}}));
    }

    // A quoted field may run over a line end; the record goes on after it.
    void aQuotedLineEndStaysInTheField() {
        QCOMPARE(allRecords(QStringLiteral("\"two\r\nlines\",b\nc")),
                 (QList<QStringList>{{"two\r\nlines", "b"}, {"c"}}));
    }

    // A record reads up to its own line end and no further: a short line stays short, and the
    // fields of the next line are not pulled into it.
    void aShortRecordStaysShort() {
        CsvRecords records(u"a,b\nc,d,e\n");
        QCOMPARE(records.next(), (QStringList{"a", "b"}));
        QVERIFY(!records.atEnd());
        QCOMPARE(records.next(), (QStringList{"c", "d", "e"}));
        QVERIFY(records.atEnd());
        QCOMPARE(records.next(), QStringList());
    }

    void emptyFieldsAreKept() {
        QCOMPARE(allRecords(QStringLiteral(",a,,\n")), (QList<QStringList>{{"", "a", "", ""}}));
    }

    // Fields are opaque: blanks stay, quotes inside an unquoted field stay, and text after a
    // closing quote stays with its field.
    void fieldsComeBackAsTheyStand() {
        QCOMPARE(allRecords(QStringLiteral(" a , b\"c\",\"d\"e\n")),
                 (QList<QStringList>{{" a ", " b\"c\"", "de"}}));
    }

    // A quote left open runs to the end of the text, which ends the record.
    void anUnclosedQuoteEndsWithTheText() {
        QCOMPARE(allRecords(QStringLiteral("a,\"b,c\nd")), (QList<QStringList>{{"a", "b,c\nd"}}));
        QCOMPARE(allRecords(QStringLiteral("\"")), (QList<QStringList>{{""}}));
    }
};

QTEST_APPLESS_MAIN(TestCsvRecords)
#include "tst_csvrecords.moc"
