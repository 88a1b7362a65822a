// The page a chart is saved on: the heading of day and time, the picture under it at the
// size asked for, and the chart's name in the document's metadata.
#include "common/PdfReading.h"
#include "pages/ChartPage.h"
#include "pages/PdfFile.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

namespace {

Drawing picture() {
    return Drawing::record(QSize(300, 200), [](QPainter& painter) {
        painter.fillRect(QRect(0, 0, 300, 200), QColor(27, 250, 239));
    });
}

const QDateTime Afternoon(QDate(2026, 11, 25), QTime(14, 5, 9));

} // namespace

class TestChartPage : public QObject {
    Q_OBJECT

private slots:
    void theHeadingReadsTheDayAndTheTime() {
        QCOMPARE(ChartPage::headingDate(QDate(2026, 11, 25)),
                 QStringLiteral("Wednesday - November 25, 2026"));
        QCOMPARE(ChartPage::headingDate(QDate(2007, 3, 9)),
                 QStringLiteral("Friday - March 09, 2007"));
        QCOMPARE(ChartPage::headingTime(QTime(14, 5, 9)), QStringLiteral("2:05:09pm"));
        QCOMPARE(ChartPage::headingTime(QTime(0, 30, 0)), QStringLiteral("12:30:00am"));
        QCOMPARE(ChartPage::headingTime(QTime(12, 0, 1)), QStringLiteral("12:00:01pm"));
        QCOMPARE(ChartPage::headingTime(QTime(9, 59, 59)), QStringLiteral("9:59:59am"));
    }

    // The date on the left, the time on the right of the same line, the picture 5 mm below
    // it at 100, at the size given.
    void thePictureStandsBelowTheHeadingAtItsSize() {
        const PageDocument page =
            ChartPage::layout(QStringLiteral("Wind Speed"), picture(), {450, 300}, Afternoon);
        QCOMPARE(page.pageCount(), 1);
        QVERIFY(page.pageSize().width() > page.pageSize().height());
        const PageDocument::Page& items = page.page(0);
        QCOMPARE(items.size(), 3);
        QCOMPARE(items[0].text, QStringLiteral("Wednesday - November 25, 2026"));
        QCOMPARE(items[0].style.alignment & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
        QCOMPARE(items[1].text, QStringLiteral("2:05:09pm"));
        QCOMPARE(items[1].style.alignment & Qt::AlignHorizontal_Mask, Qt::AlignRight);
        QCOMPARE(items[1].rect.top(), items[0].rect.top());
        QCOMPARE(items[0].rect.topLeft(), QPointF(100, 100));
        QCOMPARE(items[2].rect, QRectF(100, items[0].rect.bottom() + 50, 450, 300));
    }

    void thePdfIsNamedForTheChart() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("chart.pdf"));
        QVERIFY(writePdf(
            ChartPage::layout(QStringLiteral("Wind Speed"), picture(), {450, 300}, Afternoon),
            path));
        const QString info = PdfReading::toolOutput(QStringLiteral("pdfinfo"), {path});
        QVERIFY2(info.contains(QRegularExpression("Title:\\s+Tarnwick - Wind Speed\n")),
                 qPrintable(info));
        QVERIFY2(info.contains(QRegularExpression("Subject:\\s+Wind Speed\n")), qPrintable(info));
        QVERIFY2(info.contains(QRegularExpression("Keywords:\\s+Tarnwick, Pellamor, Oskerby\n")),
                 qPrintable(info));
        const QString text = PdfReading::text(path);
        QVERIFY2(text.contains(QRegularExpression("Wednesday - November 25, 2026\\s+2:05:09pm")),
                 qPrintable(text));
    }
};

QTEST_MAIN(TestChartPage)
#include "tst_chartpage.moc"
