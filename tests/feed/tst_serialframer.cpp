#include "feed/SerialFramer.h"

#include <QTest>

class TestSerialFramer : public QObject {
    Q_OBJECT

    QStringList lines;
    SerialFramer framer{[this](const QString& line) { lines << line; }};

private slots:
    void init() {
        lines.clear();
        framer.resetReceiveState();
    }

    // The framing states: where a character leads from where.
    void stateTable_data() {
        QTest::addColumn<QByteArray>("before"); // brings the framer into its state
        QTest::addColumn<QByteArray>("character");
        QTest::addColumn<bool>("waiting"); // the state after the character
        QTest::addColumn<QString>("record");
        QTest::addColumn<int>("handed"); // lines handed on
        QTest::newRow("waiting, space") << QByteArray() << QByteArray(" ") << false << " " << 0;
        QTest::newRow("waiting, other") << QByteArray() << QByteArray("x") << true << "" << 0;
        QTest::newRow("waiting, CR") << QByteArray() << QByteArray("\r") << true << "" << 0;
        QTest::newRow("waiting, LF") << QByteArray() << QByteArray("\n") << true << "" << 0;
        QTest::newRow("in record, CR") << QByteArray(" 1") << QByteArray("\r") << true << "" << 1;
        QTest::newRow("in record, other")
            << QByteArray(" 1") << QByteArray("x") << false << " 1x" << 0;
        QTest::newRow("in record, space")
            << QByteArray(" 1") << QByteArray(" ") << false << " 1 " << 0;
    }
    void stateTable() {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, character);
        QFETCH(bool, waiting);
        QFETCH(QString, record);
        QFETCH(int, handed);
        framer.receive(before);
        framer.receive(character);
        QCOMPARE(framer.waitingForStart(), waiting);
        QCOMPARE(framer.inRecord(), !waiting);
        QCOMPARE(framer.recordLength(), record.size());
        QCOMPARE(lines.size(), handed);
    }

    void resetEmptiesBuffersAndWaits() {
        framer.receive(" 11/22/26 29.");
        QVERIFY(framer.inRecord());
        framer.resetReceiveState();
        QVERIFY(framer.waitingForStart());
        QVERIFY(!framer.inRecord());
        QCOMPARE(framer.recordLength(), 0);
        framer.receive("92\r");
        QVERIFY(lines.isEmpty()); // the partial line is lost
    }

    void lineKeepsLeadingSpaceAndCr() {
        framer.receive(" 11/22/26 29.92\r");
        QCOMPARE(lines, QStringList{" 11/22/26 29.92\r"});
    }

    void wordBeforeFirstSpaceDropped() {
        framer.receive("WX 11/22/26 29.92\r");
        QCOMPARE(lines, QStringList{" 11/22/26 29.92\r"});
    }

    void lineFeedAfterCrDropped() {
        framer.receive(" 1\r\n 2\r\n");
        QCOMPARE(lines, (QStringList{" 1\r", " 2\r"}));
    }

    void twoLinesInOneChunk() {
        framer.receive(" 1 a\r 2 b\r");
        QCOMPARE(lines, (QStringList{" 1 a\r", " 2 b\r"}));
    }

    void lineSplitAcrossChunks() {
        framer.receive(" 11/22");
        framer.receive("/26 29");
        QVERIFY(lines.isEmpty());
        framer.receive(".92\r");
        QCOMPARE(lines, QStringList{" 11/22/26 29.92\r"});
    }

    void eightBitBytesKeptAsCharacters() {
        framer.receive(QByteArray(" \xb0\xff\r"));
        QCOMPARE(lines, QStringList{QStringLiteral(" \u00b0\u00ff\r")});
    }

    // A handler that lets events run can bring in more bytes; they wait for the loop that
    // is already running, so the second line is handled after the first one is done.
    void nestedReceiveOnlyAppends() {
        QStringList order;
        SerialFramer* self = nullptr;
        SerialFramer nested([&](const QString& line) {
            order << QStringLiteral("start") + line;
            if (line == u" A\r")
                self->receive(" B\r");
            order << QStringLiteral("end") + line;
        });
        self = &nested;
        nested.receive(" A\r");
        QCOMPARE(order, (QStringList{"start A\r", "end A\r", "start B\r", "end B\r"}));
        QCOMPARE(nested.unreadLength(), 0);
    }

    void resetInsideHandlerDropsTheRest() {
        QStringList handled;
        SerialFramer* self = nullptr;
        SerialFramer resetting([&](const QString& line) {
            handled << line;
            self->resetReceiveState();
        });
        self = &resetting;
        resetting.receive(" A\r B\r");
        QCOMPARE(handled, QStringList{" A\r"});
        resetting.receive(" C\r"); // the guard is clear again
        QCOMPARE(handled, (QStringList{" A\r", " C\r"}));
    }

    void lineOfMaximumLengthHandled() {
        const QByteArray line = ' ' + QByteArray(SerialFramer::MaxRecordLength - 1, 'x') + '\r';
        framer.receive(line);
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().size(), SerialFramer::MaxRecordLength + 1);
    }

    void overlongLineDroppedAndFramingWaits() {
        framer.receive(' ' + QByteArray(SerialFramer::MaxRecordLength, 'x'));
        QCOMPARE(framer.recordLength(), 0);
        framer.receive("xxx\r 1\r");
        QCOMPARE(lines, QStringList{" 1\r"});
        QVERIFY(framer.overlongLines() >= 1u);
    }

    // The spaces of an overlong line start no line of their own: nothing of it is parsed,
    // however it is cut into chunks, and the next line is handled whole.
    void noTailOfAnOverlongLineIsTakenForALine() {
        QByteArray overlong = " 11/22/26 10:42:07";
        while (overlong.size() <= SerialFramer::MaxRecordLength + 200)
            overlong += " 29.92 71.5";
        overlong += "\r";
        const QByteArray next = " 11/22/26 10:43:07 29.91\r";
        const QByteArray feed = overlong + next;
        const quint64 before = framer.overlongLines();
        for (qsizetype start = 0; start < feed.size(); start += 333)
            framer.receive(feed.mid(start, 333));
        QCOMPARE(lines, QStringList{QString::fromLatin1(next)});
        QCOMPARE(framer.overlongLines(), before + 1);
    }

    void endlessFeedStaysBounded() {
        const QByteArray chunk(1000, 'x');
        framer.receive(" ");
        for (int i = 0; i < 100; ++i) {
            framer.receive(chunk);
            QVERIFY(framer.recordLength() <= SerialFramer::MaxRecordLength);
        }
        QVERIFY(lines.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSerialFramer)
#include "tst_serialframer.moc"
