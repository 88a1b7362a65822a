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
    }

    void lineFinishedInALaterChunkIsBoundedToo() {
        TcpLineSplitter splitter;
        splitter.take(QByteArray(TcpLineSplitter::MaxPendingLength - 1, 'x'));
        QVERIFY(splitter.take("yy\r 2\r") == QStringList{" 2\r"});
    }

    void lineFeedStaysWithTheNextLine() {
        TcpLineSplitter splitter;
        QCOMPARE(splitter.take(" 1\r\n 2\r"), (QStringList{" 1\r", "\n 2\r"}));
    }
};

QTEST_GUILESS_MAIN(TestTcpLineSplitter)
#include "tst_tcplinesplitter.moc"
