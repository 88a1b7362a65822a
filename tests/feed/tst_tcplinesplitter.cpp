#include "feed/TcpLineSplitter.h"

#include <QTest>

class TestTcpLineSplitter : public QObject {
    Q_OBJECT
private slots:
    void oneLineOneChunk() {
        TcpLineSplitter splitter;
        QCOMPARE(splitter.take(" 11/22/26 29.92\r"), QStringList{" 11/22/26 29.92\r"});
        QCOMPARE(splitter.pendingLength(), 0);
    }

    void twoLinesInOneChunkYieldBoth() {
        TcpLineSplitter splitter;
        QCOMPARE(splitter.take(" 1 a\r 2 b\r"), (QStringList{" 1 a\r", " 2 b\r"}));
    }

    void lineSplitAcrossChunksWaits() {
        TcpLineSplitter splitter;
        QVERIFY(splitter.take(" 11/22/26 ").isEmpty());
        QCOMPARE(splitter.pendingLength(), 10);
        QVERIFY(splitter.take("29.").isEmpty());
        QCOMPARE(splitter.take("92\r 2"), QStringList{" 11/22/26 29.92\r"});
        QCOMPARE(splitter.take("\r"), QStringList{" 2\r"});
    }

    void pendingLineOfMaximumLengthKept() {
        TcpLineSplitter splitter;
        splitter.take(QByteArray(TcpLineSplitter::MaxPendingLength, 'x'));
        QCOMPARE(splitter.pendingLength(), TcpLineSplitter::MaxPendingLength);
        const QStringList lines = splitter.take("\r");
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().size(), TcpLineSplitter::MaxPendingLength + 1);
    }

    void overlongLineDroppedUpToItsCr() {
        TcpLineSplitter splitter;
        splitter.take(QByteArray(TcpLineSplitter::MaxPendingLength + 1, 'x'));
        QCOMPARE(splitter.pendingLength(), 0);
        QVERIFY(splitter.take(" the rest of it\r").isEmpty());
        QCOMPARE(splitter.take(" 1\r"), QStringList{" 1\r"});
        QCOMPARE(splitter.overlongLines(), 1u);
    }

    void lineFinishedInALaterChunkIsBoundedToo() {
        TcpLineSplitter splitter;
        splitter.take(QByteArray(TcpLineSplitter::MaxPendingLength - 1, 'x'));
        QVERIFY(splitter.take("yy\r 2\r") == QStringList{" 2\r"});
    }

    // A relay that ends its lines with CR LF feeds the same lines as one that ends them with
    // CR, also when the LF comes in the next chunk.
    void lineFeedAfterCrIsPartOfTheLineEnd() {
        TcpLineSplitter splitter;
        QCOMPARE(splitter.take(" 1\r\n 2\r\n"), (QStringList{" 1\r", " 2\r"}));
        QCOMPARE(splitter.take(" 3\r"), QStringList{" 3\r"});
        QVERIFY(splitter.take("\n").isEmpty());
        QCOMPARE(splitter.take(" 4\r"), QStringList{" 4\r"});
        QCOMPARE(splitter.pendingLength(), 0);
    }

    // Only the LF right after a CR: another one is part of the line.
    void aLineFeedElsewhereIsKept() {
        TcpLineSplitter splitter;
        QCOMPARE(splitter.take(" 1\n2\r"), QStringList{" 1\n2\r"});
    }

    void resetForgetsTheLineInHand() {
        TcpLineSplitter splitter;
        splitter.take(" half a li");
        splitter.reset();
        QCOMPARE(splitter.pendingLength(), 0);
        QCOMPARE(splitter.take(" 5\r"), QStringList{" 5\r"});
    }
};

QTEST_GUILESS_MAIN(TestTcpLineSplitter)
#include "tst_tcplinesplitter.moc"
