#include "common/TestHome.h"
#include "common/WindowTesting.h"
#include "core/CommandTable.h"
#include "ui/shell/ToolIcons.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace CommandTable;

namespace {

QImage drawn(const QIcon& icon, int size = 24) {
    return WindowTesting::drawn(icon, size);
}

// A picture that shows something: enough pixels that are not see-through.
bool hasInk(const QImage& image) {
    return WindowTesting::hasInk(image, 1.0 / 8);
}

// The share of the picture's pixels that are plain red.
double redShare(const QImage& image) {
    int red = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            red += image.pixel(x, y) == qRgb(255, 0, 0) ? 1 : 0;
    return double(red) / (image.width() * image.height());
}

} // namespace

class TestToolIcons : public QObject {
    Q_OBJECT
    TestHome home;

private slots:
    // Every tool of the tool bar has a picture; the text field has none of its own.
    void everyToolOnTheBarHasOne() {
        QStringList onTheBar;
        for (const QString& item : findBand("tbMain")->items) {
            if (item != Separator && findTool(item)->kind != ToolKind::TextBox)
                onTheBar.append(item);
        }
        QCOMPARE(onTheBar.size(), 18);
        QCOMPARE(ToolIcons::tools(), onTheBar);
        QVERIFY(ToolIcons::icon(QStringLiteral("txtPageMessage")).isNull());
        QVERIFY(ToolIcons::icon(QStringLiteral("miExit")).isNull());
    }

    // The program's own pictures are built in, each one drawn, and no two alike: the views
    // each have a picture of their own.
    void theOwnPicturesAreBuiltInAndDistinct() {
        QList<QImage> seen;
        for (const QString& tool : ToolIcons::tools()) {
            QVERIFY2(QFile::exists(ToolIcons::ownPicture(tool)), qPrintable(tool));
            const QImage image = drawn(QIcon(ToolIcons::ownPicture(tool)));
            QVERIFY2(hasInk(image), qPrintable(tool));
            QVERIFY2(!seen.contains(image), qPrintable(tool));
            seen.append(image);
        }
    }

    // With no icon theme on the machine (as under the test platform), each tool shows the
    // program's own picture.
    void withoutAThemeEveryToolShowsItsOwnPicture() {
        QIcon::setThemeName(QStringLiteral("tarnwick-no-such-theme"));
        for (const QString& tool : ToolIcons::tools())
            QCOMPARE(drawn(ToolIcons::icon(tool)), drawn(QIcon(ToolIcons::ownPicture(tool))));
    }

    // A theme that has the standard names is asked first: here one whose every icon is a red
    // square. Tools whose command has no standard name keep their own pictures.
    void aThemeWithTheStandardNamesIsUsed() {
        QTemporaryDir folder;
        const QString theme = folder.filePath(QStringLiteral("redtheme"));
        QVERIFY(QDir().mkpath(theme + QStringLiteral("/24x24/actions")));
        QFile index(theme + QStringLiteral("/index.theme"));
        QVERIFY(index.open(QIODevice::WriteOnly));
        index.write("[Icon Theme]\nName=redtheme\nDirectories=24x24/actions\n\n"
                    "[24x24/actions]\nSize=24\nType=Fixed\n");
        index.close();
        QImage red(24, 24, QImage::Format_ARGB32);
        red.fill(Qt::red);
        const QStringList standard = {"document-new", "document-open", "document-save",
                                      "mail-send"};
        for (const QString& name : standard)
            QVERIFY(red.save(theme + QStringLiteral("/24x24/actions/") + name +
                             QStringLiteral(".png")));
        QIcon::setThemeSearchPaths({folder.path()});
        QIcon::setThemeName(QStringLiteral("redtheme"));

        const QStringList themed = {"miNewRaceLog", "miOpenRaceLog", "miSave", "btnSend"};
        for (const QString& tool : ToolIcons::tools()) {
            const QImage image = drawn(ToolIcons::icon(tool));
            if (themed.contains(tool)) {
                QCOMPARE(ToolIcons::themeName(tool), standard[themed.indexOf(tool)]);
                QVERIFY2(redShare(image) > 0.99, qPrintable(tool));
            } else {
                QVERIFY2(ToolIcons::themeName(tool).isEmpty(), qPrintable(tool));
                QCOMPARE(image, drawn(QIcon(ToolIcons::ownPicture(tool))));
            }
        }
        QIcon::setThemeName(QString());
    }

    // The program's icon is the one the desktop entry installs.
    void theProgramIconIsTheInstalledOne() {
        const QImage installed = drawn(QIcon(QStringLiteral(TARNWICK_PROGRAM_ICON)), 48);
        QVERIFY(hasInk(installed));
        QCOMPARE(drawn(ToolIcons::programIcon(), 48), installed);
    }
};

QTEST_MAIN(TestToolIcons)
#include "tst_toolicons.moc"
