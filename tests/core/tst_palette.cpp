#include "core/Palette.h"

#include <QTest>
#include <cmath>

class TestPalette : public QObject {
    Q_OBJECT
private slots:
    void entriesInMenuOrder() {
        const QList<Palette::Entry> expected = {
            {"miNoFill", "No Fill", 0x80000001},
            {"miBlack", "Black", 0x000000},
            {"miGray50", "Gray 50%", 0x808080},
            {"miDarkRed", "Dark Red", 0x000080},
            {"miDarkYellow", "Dark Yellow", 0x008080},
            {"miGreen", "Green", 0x008000},
            {"miTeal", "Teal", 0x808000},
            {"miDarkBlue", "Dark Blue", 0x800000},
            {"miVioliet", "Violiet", 0x800080},
            {"miWhite", "White", 0xFFFFFF},
            {"miGray25", "Gray 25%", 0xC0C0C0},
            {"miRed", "Red", 0x0000C0},
            {"miYellow", "Yellow", 0x00FFFF},
            {"miBrightGreen", "Bright Green", 0x00FF00},
            {"miTurquoise", "Turquoise", 0xFFFF00},
            {"miBlue", "Blue", 0xC00000},
            {"miPink", "Pink", 0xC000C0},
        };
        const QList<Palette::Entry>& entries = Palette::entries();
        QCOMPARE(entries.size(), expected.size());
        for (qsizetype i = 0; i < expected.size(); ++i) {
            QCOMPARE(entries[i].name, expected[i].name);
            QCOMPARE(entries[i].caption, expected[i].caption);
            QCOMPARE(entries[i].color, expected[i].color);
        }
    }

    void numbersHoldBlueGreenRed_data() {
        QTest::addColumn<quint32>("number");
        QTest::addColumn<QColor>("color");
        QTest::newRow("dark red") << 0x000080u << QColor(0x80, 0, 0);
        QTest::newRow("red") << 0x0000C0u << QColor(0xC0, 0, 0);
        QTest::newRow("blue") << 0xC00000u << QColor(0, 0, 0xC0);
        QTest::newRow("yellow") << 0x00FFFFu << QColor(0xFF, 0xFF, 0);
        QTest::newRow("teal") << 0x808000u << QColor(0, 0x80, 0x80);
        QTest::newRow("mixed") << 0x1E140Au << QColor(10, 20, 30);
    }
    void numbersHoldBlueGreenRed() {
        QFETCH(quint32, number);
        QFETCH(QColor, color);
        QCOMPARE(Palette::toColor(number), color);
        QCOMPARE(Palette::fromColor(color), number);
    }

    void systemColorsAreNamedByTheTopByte() {
        QVERIFY(Palette::isSystemColor(Palette::DesktopColor));
        QVERIFY(Palette::isSystemColor(Palette::WorkspaceColor));
        QVERIFY(!Palette::isSystemColor(0x000080));
        QVERIFY(!Palette::isSystemColor(0xFFFFFF));
    }

    void storedValues_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<quint32>("color");
        QTest::newRow("dark red") << 128.0 << true << 0x000080u;
        QTest::newRow("white") << 16777215.0 << true << 0xFFFFFFu;
        QTest::newRow("desktop") << 2147483649.0 << true << 0x80000001u;
        QTest::newRow("desktop signed") << -2147483647.0 << true << 0x80000001u;
        QTest::newRow("fraction") << 1.5 << false << 0u;
        QTest::newRow("beyond 32 bits") << 4294967296.0 << false << 0u;
        QTest::newRow("below 32 bits") << -2147483649.0 << false << 0u;
        QTest::newRow("no colour") << 16777216.0 << false << 0u;
        QTest::newRow("not a number") << std::nan("") << false << 0u;
    }
    void storedValues() {
        QFETCH(double, value);
        QFETCH(bool, valid);
        QFETCH(quint32, color);
        const std::optional<quint32> read = Palette::fromValue(value);
        QCOMPARE(read.has_value(), valid);
        if (valid)
            QCOMPARE(*read, color);
    }

    void storedAsWholeNumbers() {
        QCOMPARE(Palette::toText(0x000080), QStringLiteral("128"));
        QCOMPARE(Palette::toText(0xC00000), QStringLiteral("12582912"));
        QCOMPARE(Palette::toText(Palette::DesktopColor), QStringLiteral("2147483649"));
    }
};

QTEST_GUILESS_MAIN(TestPalette)
#include "tst_palette.moc"
