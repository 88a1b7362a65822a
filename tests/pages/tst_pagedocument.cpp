#include "pages/PageDocument.h"
#include "pages/PageFonts.h"

#include <QFontInfo>
#include <QTest>

namespace {

// A letter page on its side with a 1 cm margin; short, so that pages fill after a few rows.
PageDocument shortPages() {
    return PageDocument(QSizeF(2794, 2159), QRectF(QPointF(100, 100), QPointF(2694, 600)));
}

constexpr double Free = PageDocument::Free;
constexpr double LastTop = PageDocument::LastTop;
constexpr double LastRight = PageDocument::LastRight;
constexpr double LastBottom = PageDocument::LastBottom;

} // namespace

class TestPageDocument : public QObject {
    Q_OBJECT
private slots:
    void theReservedValuesNameTheObjectPlacedLast() {
        PageDocument document = shortPages();
        const QRectF first = document.writeText(10, 10, -170, Free, "RUN");
        QCOMPARE(first.topLeft(), QPointF(10, 10));
        QCOMPARE(first.width(), 170.0);
        const QRectF beside = document.writeText(LastRight, LastTop, -170, Free, "TIME");
        QCOMPARE(beside.topLeft(), QPointF(180, 10));
        const QRectF below = document.writeText(10, LastBottom, -170, Free, "1)");
        QCOMPARE(below.topLeft(), QPointF(10, first.bottom()));
        QCOMPARE(document.lastRect(), below);
    }

    void aNegativeRightOrBottomIsASize() {
        PageDocument document = shortPages();
        QCOMPARE(document.drawFrame(100, 200, -50, -30), QRectF(100, 200, 50, 30));
        QCOMPARE(document.drawFrame(100, 200, 400, 500), QRectF(100, 200, 300, 300));
        QCOMPARE(document.drawFrame(10, 10, LastRight, LastBottom), QRectF(10, 10, 390, 490));
    }

    void aFreeWidthFollowsTheText() {
        PageDocument document = shortPages();
        const QRectF narrow = document.writeText(100, 100, Free, Free, "WW");
        const QRectF wide = document.writeText(100, 100, Free, Free, "WWWWWW");
        const double inset = 2 * PageDocument::TextInset;
        // Three times the letters, three times the text: the inset is the same for both.
        QVERIFY2(qAbs((wide.width() - inset) - 3 * (narrow.width() - inset)) < 3,
                 qPrintable(QStringLiteral("%1 %2").arg(narrow.width()).arg(wide.width())));
        // A 10 point line is about 3.5 mm high.
        QVERIFY2(narrow.height() - inset > 30 && narrow.height() - inset < 60,
                 qPrintable(QString::number(narrow.height())));
    }

    void aFreeHeightFollowsTheLines() {
        PageDocument document = shortPages();
        const double one = document.writeText(100, 100, -170, Free, "1").height();
        const double two = document.writeText(100, 100, -170, Free, "1\n2").height();
        const double inset = 2 * PageDocument::TextInset;
        QVERIFY(qAbs((two - inset) - 2 * (one - inset)) < 3);
        // A box of fixed width wraps a long text onto lines of its own.
        const double wrapped =
            document.writeText(100, 100, -170, Free, "Brainerd International Raceway").height();
        QVERIFY2(wrapped > two, qPrintable(QString::number(wrapped)));
    }

    void aTextThatDoesNotWrapStaysOnOneLine() {
        PageDocument document = shortPages();
        const double one = document.writeText(100, 100, -170, Free, "1").height();
        document.style().wrap = false;
        const QRectF box =
            document.writeText(100, 100, -170, Free, "Brainerd International Raceway");
        QCOMPARE(box.height(), one);
        QCOMPARE(box.width(), 170.0);
        QVERIFY(!document.page(0).last().style.wrap);
    }

    // Rows of 100 fill the output rectangle from 100 to 600; the sixth goes to a new page, at
    // the top of its output rectangle, and the rows after it follow there.
    void anObjectThatWouldCrossTheBottomGoesToTheTopOfANewPage() {
        PageDocument document = shortPages();
        document.drawFrame(100, 100, -500, -100);
        for (int row = 1; row < 5; ++row)
            document.drawFrame(100, LastBottom, -500, -100);
        QCOMPARE(document.pageCount(), 1);
        QCOMPARE(document.lastRect().bottom(), 600.0);
        const QRectF sixth = document.drawFrame(100, LastBottom, -500, -100);
        QCOMPARE(document.pageCount(), 2);
        QCOMPARE(sixth, QRectF(100, 100, 500, 100));
        QCOMPARE(document.drawFrame(LastRight, LastTop, -100, -100), QRectF(600, 100, 100, 100));
        QCOMPARE(document.page(0).size(), 5);
        QCOMPARE(document.page(1).size(), 2);
    }

    // The fit test answers for a text placed as writeText would place it, and places nothing.
    void aFitTestSaysWhetherATextWouldStartANewPage() {
        PageDocument document = shortPages();
        document.drawFrame(100, 100, -500, -450);
        const double line = document.textSize(QStringLiteral("9"), document.style()).height() +
                            2 * PageDocument::TextInset;
        QVERIFY(line > 50);
        QVERIFY(!document.fits(100, LastBottom, -40, Free, QStringLiteral("9")));
        QVERIFY(document.fits(100, LastBottom, -40, -50, QStringLiteral("9")));
        QVERIFY(document.fits(100, 100, -40, Free, QStringLiteral("9")));
        QCOMPARE(document.page(0).size(), 1);
        QCOMPARE(document.pageCount(), 1);
    }

    // A page break starts a page whatever room is left, and objects can be added to a page
    // laid out before.
    void aPageBreakAndAnEarlierPageTakeTheNextObjects() {
        PageDocument document = shortPages();
        document.drawFrame(100, 100, -500, -100);
        document.breakPage();
        QCOMPARE(document.pageCount(), 2);
        QCOMPARE(document.drawFrame(100, LastBottom, -500, -100), QRectF(100, 100, 500, 100));
        document.setPage(0);
        document.drawFrame(100, 300, -10, -10);
        QCOMPARE(document.page(0).size(), 2);
        QCOMPARE(document.page(1).size(), 1);
        document.setPage(1);
        document.drawFrame(100, 300, -10, -10);
        QCOMPARE(document.page(1).size(), 2);
    }

    void anObjectTallerThanAPageStaysWhereItStarts() {
        PageDocument document = shortPages();
        QCOMPARE(document.drawFrame(100, 100, -500, -1000), QRectF(100, 100, 500, 1000));
        QCOMPARE(document.pageCount(), 1);
    }

    void aStoredStyleComesBackAndObjectsKeepTheirs() {
        PageDocument document = shortPages();
        document.style().backgroundShown = true;
        document.style().background = QColor(255, 255, 192);
        document.storeStyle(1);
        document.writeBox(10, 10, -170, Free, "head");
        document.style().backgroundShown = false;
        document.style().fontSize = 14;
        document.writeText(10, LastBottom, -170, Free, "row");
        document.restoreStyle(1);
        QVERIFY(document.style().backgroundShown);
        QCOMPARE(document.style().fontSize, 10.0);
        document.restoreStyle(7);
        QVERIFY(document.style().backgroundShown);
        const PageDocument::Page& page = document.page(0);
        QVERIFY(page[0].framed && page[0].style.backgroundShown);
        QCOMPARE(page[0].style.background, QColor(255, 255, 192));
        QVERIFY(!page[1].framed && !page[1].style.backgroundShown);
        QCOMPARE(page[1].style.fontSize, 14.0);
    }

    // The fonts of the layouts are set in installed families of the same widths.
    void theLayoutFontsHaveStandIns() {
        PageFonts::install();
        PageDocument::Style style;
        QCOMPARE(QFontInfo(PageFonts::font(style)).family(), QStringLiteral("Liberation Sans"));
        style.fontFamily = QStringLiteral("Arial Narrow");
        QCOMPARE(QFontInfo(PageFonts::font(style)).family(),
                 QStringLiteral("Liberation Sans Narrow"));
        style.fontFamily = QStringLiteral("Arial");
        QCOMPARE(QFontInfo(PageFonts::font(style)).family(), QStringLiteral("Liberation Sans"));
    }
};

QTEST_MAIN(TestPageDocument)
#include "tst_pagedocument.moc"
