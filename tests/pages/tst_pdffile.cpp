#include "pages/PageDocument.h"
#include "pages/PagePainter.h"
#include "pages/PdfFile.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr double Free = PageDocument::Free;

QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return QStringLiteral("failed: ") + QString::fromLocal8Bit(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput());
}

// Three pages of numbered rows in boxes, a letter page on its side.
PageDocument threePages() {
    PageDocument document(QSizeF(2794, 2159), QRectF(QPointF(100, 100), QPointF(2694, 2059)));
    document.metadata = {"Tarnwick - Viewer", "Tarnwick", "Tarnwick", "Tarnwick",
                         "Tarnwick, Pellamor, Oskerby"};
    document.writeBox(100, 100, -400, Free, QStringLiteral("RUN"));
    for (int row = 1; document.pageCount() < 3 || row % 10 != 0; ++row) {
        document.style().backgroundShown = row % 2 == 1;
        document.style().background = QColor(255, 255, 192);
        document.writeBox(100, PageDocument::LastBottom, -400, Free,
                          QStringLiteral("Row %1").arg(row));
    }
    return document;
}

} // namespace

class TestPdfFile : public QObject {
    Q_OBJECT
private slots:
    void theInformationDictionaryHoldsTheMetadata() {
        QTemporaryDir dir;
        const QString path = dir.filePath("pages.pdf");
        const PageDocument document = threePages();
        QVERIFY(writePdf(document, path));
        const QString info = run("pdfinfo", {path});
        QVERIFY2(info.contains(QRegularExpression("Title:\\s+Tarnwick - Viewer\n")),
                 qPrintable(info));
        QVERIFY(info.contains(QRegularExpression("Author:\\s+Tarnwick\n")));
        QVERIFY(info.contains(QRegularExpression("Creator:\\s+Tarnwick\n")));
        QVERIFY(info.contains(QRegularExpression("Subject:\\s+Tarnwick\n")));
        QVERIFY(info.contains(QRegularExpression("Keywords:\\s+Tarnwick, Pellamor, Oskerby\n")));
        QVERIFY(info.contains(QRegularExpression("Pages:\\s+3\n")));
        QVERIFY2(info.contains(QRegularExpression("Page size:\\s+792 x 612 pts \\(letter\\)")),
                 qPrintable(info));
        // The XMP packet says the same for readers that look there.
        const QString meta = run("pdfinfo", {"-meta", path});
        QVERIFY2(meta.contains("Tarnwick, Pellamor, Oskerby"), qPrintable(meta));
    }

    void everyTextComesBackInOrderOnItsPage() {
        QTemporaryDir dir;
        const QString path = dir.filePath("pages.pdf");
        const PageDocument document = threePages();
        QVERIFY(writePdf(document, path));
        int row = 0;
        for (int page = 0; page < document.pageCount(); ++page) {
            const QString text = run("pdftotext", {"-layout", "-f", QString::number(page + 1), "-l",
                                                   QString::number(page + 1), path, "-"});
            qsizetype at = 0;
            for (const PageDocument::Item& item : document.page(page)) {
                at = text.indexOf(item.text, at);
                QVERIFY2(at >= 0, qPrintable(item.text + " on page " + QString::number(page + 1)));
                ++row;
            }
        }
        QCOMPARE(row,
                 int(document.page(0).size() + document.page(1).size() + document.page(2).size()));
    }

    // The PDF and a picture of the page come from the same draw routine.
    void thePdfPageLooksAsTheDrawnPage() {
        QTemporaryDir dir;
        const QString path = dir.filePath("pages.pdf");
        const PageDocument document = threePages();
        QVERIFY(writePdf(document, path));
        QCOMPARE(
            run("pdftoppm", {"-r", "50", "-f", "1", "-l", "1", "-png", path, dir.filePath("page")}),
            QString());
        const QImage printed =
            QImage(dir.filePath("page-1.png")).convertToFormat(QImage::Format_RGB32);
        QImage drawn(printed.size(), QImage::Format_RGB32);
        drawn.setDotsPerMeterX(qRound(50 / 0.0254));
        drawn.setDotsPerMeterY(qRound(50 / 0.0254));
        {
            QPainter painter(&drawn);
            drawPage(painter, document, 0, QRectF(drawn.rect()));
        }
        // Text and lines may fall a pixel apart, and a thin line is drawn a little darker on
        // paper: the pages are the same when, seen at a quarter of the size, their difference
        // is small beside the difference of the page from blank paper.
        const auto difference = [](const QImage& large, const QImage& otherLarge) {
            const QImage one =
                large.scaled(large.size() / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            const QImage other = otherLarge.scaled(large.size() / 4, Qt::IgnoreAspectRatio,
                                                   Qt::SmoothTransformation);
            double sum = 0;
            for (int y = 0; y < one.height(); ++y)
                for (int x = 0; x < one.width(); ++x) {
                    const QColor a = one.pixelColor(x, y);
                    const QColor b = other.pixelColor(x, y);
                    sum += qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) +
                           qAbs(a.blue() - b.blue());
                }
            return sum;
        };
        QImage blank(printed.size(), QImage::Format_RGB32);
        blank.fill(Qt::white);
        const double share = difference(drawn, printed) / difference(blank, printed);
        if (qEnvironmentVariableIsSet("TARNWICK_KEEP_PICTURES")) {
            drawn.save(qEnvironmentVariable("TARNWICK_KEEP_PICTURES") + "/drawn.png");
            printed.save(qEnvironmentVariable("TARNWICK_KEEP_PICTURES") + "/printed.png");
        }
        QVERIFY2(share < 0.25, qPrintable(QString::number(share)));
        // And the page is not blank: the first row's band colour is there.
        const QPointF band = document.page(0)[1].rect.center() * (printed.width() / 2794.0);
        QCOMPARE(printed.pixelColor(band.toPoint()), QColor(255, 255, 192));
    }

    // The kernel's own folder takes no new file, whoever asks: the write fails and the file
    // there stays as it was.
    void aFailedWriteLeavesTheOldFileAsItWas() {
        const QByteArray before = [] {
            QFile file("/proc/version");
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }();
        QVERIFY(!writePdf(threePages(), "/proc/version"));
        QFile file("/proc/version");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), before);
        QVERIFY(!writePdf(threePages(), "/proc/tarnwick-pages.pdf"));
        QVERIFY(!QFile::exists("/proc/tarnwick-pages.pdf"));
    }

    void aNewFileReplacesTheOldOneWhole() {
        QTemporaryDir dir;
        const QString path = dir.filePath("pages.pdf");
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("an older file, longer than nothing");
        old.close();
        QVERIFY(writePdf(threePages(), path));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.startsWith("%PDF-"));
        QVERIFY(bytes.trimmed().endsWith("%%EOF"));
        QVERIFY(!bytes.contains("an older file"));
    }
};

QTEST_MAIN(TestPdfFile)
#include "tst_pdffile.moc"
