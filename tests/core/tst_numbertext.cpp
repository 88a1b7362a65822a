#include "core/NumberText.h"

#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <clocale>
#include <limits>
#include <string>

class TestNumberText : public QObject {
    Q_OBJECT
private slots:
    void numericTest_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        QTest::newRow("integer") << "12" << true;
        QTest::newRow("signed") << "-0.5" << true;
        QTest::newRow("plus") << "+3" << true;
        QTest::newRow("leading point") << ".25" << true;
        QTest::newRow("trailing point") << "3." << true;
        QTest::newRow("exponent") << "1e-5" << true;
        QTest::newRow("blanks and CR") << " 29.92\r" << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("blank") << "  " << false;
        QTest::newRow("point only") << "." << false;
        QTest::newRow("word") << "abc" << false;
        QTest::newRow("two numbers") << "1 2" << false;
        QTest::newRow("comma decimal") << "1,5" << false;
        QTest::newRow("overflow") << "1e400" << false;
        QTest::newRow("sign only") << "-" << false;
        QTest::newRow("tab and line feed") << "\t-1.5e+3\n" << true;
        QTest::newRow("capital exponent") << "2E5" << true;
        QTest::newRow("exponent without digits") << "1e" << false;
        QTest::newRow("exponent sign without digits") << "1e+" << false;
        QTest::newRow("underflow") << "1E-400" << true;
        QTest::newRow("two signs") << "+-1" << false;
        QTest::newRow("not a number") << "nan" << false;
        QTest::newRow("infinity") << "inf" << false;
        QTest::newRow("hexadecimal") << "0x10" << false;
        QTest::newRow("arabic-indic digit") << QString(QChar(0x0661)) << false;
        QTest::newRow("longer than usual") << QString(" 0." + QString(100, u'0') + "1 ") << true;
    }
    void numericTest() {
        QFETCH(QString, text);
        QFETCH(bool, numeric);
        QCOMPARE(NumberText::isNumeric(text), numeric);
    }

    void underflowReadsAsZero() {
        QCOMPARE(*NumberText::toDouble("1E-400"), 0.0);
        QCOMPARE(*NumberText::toDouble("-1e-400"), 0.0);
    }

    void longTextsReadInFull() {
        QCOMPARE(*NumberText::toDouble("1" + QString(70, u'0')), 1e70);
        QCOMPARE(*NumberText::toDouble("0." + QString(100, u'0') + "1"), 1e-101);
        QVERIFY(!NumberText::toDouble(QString(100, u'1') + "x"));
    }

    void singleRejectsWhatAFloatCannotHold() {
        QVERIFY(!NumberText::toSingle("1e39"));
        QCOMPARE(*NumberText::toSingle("29.92"), 29.92f);
    }

    void roundsHalfToEven() {
        QCOMPARE(*NumberText::roundToInt32(359.5), 360);
        QCOMPARE(*NumberText::roundToInt32(2.5), 2);
        QCOMPARE(*NumberText::roundToInt32(3.5), 4);
        QCOMPARE(*NumberText::roundToInt32(-2.5), -2);
        QVERIFY(!NumberText::roundToInt32(3e9));
    }

    void generalText_data() {
        QTest::addColumn<float>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("pressure") << 29.92f << "29.92";
        QTest::newRow("fraction") << 0.33f << "0.33";
        QTest::newRow("whole") << 1250.0f << "1250";
        QTest::newRow("zero") << 0.0f << "0";
        QTest::newRow("negative") << -12.5f << "-12.5";
        QTest::newRow("small") << 0.00001f << "1E-05";
        QTest::newRow("large") << 1.5e20f << "1.5E+20";
        QTest::newRow("float noise hidden") << 98.6f << "98.6";
        QTest::newRow("negative zero") << -0.0f << "0";
        QTest::newRow("smallest plain") << 0.0001f << "0.0001";
        QTest::newRow("largest plain") << 1e14f << "100000000000000";
        QTest::newRow("first with exponent") << 1e15f << "1E+15";
        QTest::newRow("small with fraction") << 1.5e-10f << "1.5E-10";
        QTest::newRow("smallest float") << 1.4e-45f << "1E-45";
    }
    void generalText() {
        QFETCH(float, value);
        QFETCH(QString, text);
        QCOMPARE(NumberText::general(value), text);
        QCOMPARE(*NumberText::toSingle(text), value);
    }

    void generalOfDouble() {
        QCOMPARE(NumberText::generalDouble(0.1), "0.1");
        QCOMPARE(NumberText::generalDouble(-2.5), "-2.5");
        QCOMPARE(NumberText::generalDouble(1e-300), "1E-300");
        QCOMPARE(NumberText::generalDouble(1e15), "1E+15");
    }

    void patterns_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::newRow("no forced integer digit") << 0.5 << "##.0000"
                                                 << ".5000";
        QTest::newRow("prediction") << 9.504077875 << "##.0000"
                                    << "9.5041";
        QTest::newRow("two decimals at least") << 9.5 << "#0.00##"
                                               << "9.50";
        QTest::newRow("four decimals at most") << 9.123456 << "#0.00##"
                                               << "9.1235";
        QTest::newRow("three decimals") << 9.125 << "#0.00##"
                                        << "9.125";
        QTest::newRow("leading digit") << 0.025 << "#0.000"
                                       << "0.025";
        QTest::newRow("negative delta") << -0.025 << "#0.000"
                                        << "-0.025";
        QTest::newRow("speed") << 145.126 << "###.00"
                               << "145.13";
        QTest::newRow("reaction") << 0.0 << "#.0000"
                                  << ".0000";
        QTest::newRow("track temp") << 0.04 << "##0.0"
                                    << "0.0";
        QTest::newRow("negative rounding to zero") << -0.00001 << "##.0000"
                                                   << ".0000";
        QTest::newRow("optional decimals all zero") << 3.0 << "#.##"
                                                    << "3.";
        QTest::newRow("nothing but the point") << 0.0 << "#.##"
                                               << ".";
        QTest::newRow("point and no decimals") << 7.4 << "0."
                                               << "7.";
        QTest::newRow("no point, tie to even") << 2.5 << "0"
                                               << "2";
        QTest::newRow("no point, tie up to even") << 3.5 << "0"
                                                  << "4";
        QTest::newRow("zero padded") << 12.5 << "00000.0000"
                                     << "00012.5000";
        QTest::newRow("wide number") << 1e20 << "#0.00"
                                     << "100000000000000000000.00";
        QTest::newRow("long pattern")
            << 1.0 << QString(QString(200, u'0') + ".0") << QString(QString(199, u'0') + "1.0");
        QTest::newRow("tie at two decimals to even") << 0.125 << "0.00"
                                                     << "0.12";
        QTest::newRow("tie at two decimals up to even") << 0.375 << "0.00"
                                                        << "0.38";
        QTest::newRow("just above a tie") << 0.12500000000000003 << "0.00"
                                          << "0.13";
        QTest::newRow("decimal that is below its text") << 2.675 << "0.00"
                                                        << "2.67";
        QTest::newRow("large exact integer") << 1e22 << "0.0"
                                             << "10000000000000000000000.0";
        QTest::newRow("exact expansion")
            << 0.1 << QString("0." + QString(60, u'#'))
            << "0.1000000000000000055511151231257827021181583404541015625";
        QTest::newRow("negative zero") << -0.0 << "0.00"
                                       << "0.00";
        QTest::newRow("tiny rounds to zero") << -5e-324 << "0.0000"
                                             << "0.0000";
        QTest::newRow("largest double")
            << std::numeric_limits<double>::max() << "0"
            << "179769313486231570814527423731704356798070567525844996598917476803157260780028"
               "538760589558632766878171540458953514382464234321326889464182768467546703537516"
               "986049910576551282076245490090389328944075868508455133942304583236903222948165"
               "808559332123348274797826204144723168738177180919299881250404026184124858368";
    }
    void patterns() {
        QFETCH(double, value);
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QCOMPARE(NumberText::format(value, pattern), text);
    }

    // Qt sets the C library's locale from the environment, and in a German one the C library
    // writes "9,5041". The texts go into race logs, feed lines and pages that are read back
    // with a point, so they must not follow it. The locale is made here with the C library's
    // localedef from a definition and character map written below, so the test needs no
    // locales installed: its one category, LC_NUMERIC, has a comma for the decimal sign.
    void textsDoNotFollowTheLocale() {
        const QString localedef = QStandardPaths::findExecutable("localedef");
        if (localedef.isEmpty())
            QSKIP("localedef is not installed, so no locale with a decimal comma can be made");
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QString charmap = "<escape_char> /\n<comment_char> %\n<code_set_name> ASCII_COMMA_TEST\n"
                          "<mb_cur_max> 1\n<mb_cur_min> 1\nCHARMAP\n";
        for (int c = 0; c < 128; ++c)
            charmap += QString::asprintf("<U%04X> /x%02x\n", c, c);
        charmap += "END CHARMAP\n";
        const QString definition = "LC_NUMERIC\ndecimal_point \"<U002C>\"\n"
                                   "thousands_sep \"<U002E>\"\ngrouping 3;3\nEND LC_NUMERIC\n";
        for (const auto& [name, text] : {std::pair{QString("charmap"), charmap},
                                         std::pair{QString("comma.def"), definition}}) {
            QFile file(dir.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text.toLatin1());
        }
        QProcess process;
        // -c writes the locale although it defines one category only (and then exits with 1).
        process.start(localedef, {"--no-archive", "-c", "-i", dir.filePath("comma.def"), "-f",
                                  dir.filePath("charmap"), dir.filePath("comma")});
        QVERIFY(process.waitForFinished(60000));
        QVERIFY2(QFile::exists(dir.filePath("comma/LC_NUMERIC")),
                 qPrintable(process.readAllStandardError()));

        const std::string previousLocale = std::setlocale(LC_NUMERIC, nullptr);
        const QByteArray previousPath = qgetenv("LOCPATH");
        const bool hadPath = qEnvironmentVariableIsSet("LOCPATH");
        auto restore = qScopeGuard([&] {
            std::setlocale(LC_NUMERIC, previousLocale.c_str());
            if (hadPath)
                qputenv("LOCPATH", previousPath);
            else
                qunsetenv("LOCPATH");
        });

        const double values[] = {9.504077875, -0.025, 0.125, 2.5,   145.126,   1e22,   -1e300,
                                 0.1,         5e-324, -0.0,  29.92, 1234567.5, 0.00001};
        const QString patterns[] = {"##.0000", "#0.00##",    "#0.000",
                                    "###.00",  "0",          "0.",
                                    "#.##",    "00000.0000", "0." + QString(40, u'#')};
        QStringList expected;
        QVERIFY(std::setlocale(LC_NUMERIC, "C"));
        for (double value : values) {
            for (const QString& pattern : patterns)
                expected << NumberText::format(value, pattern);
            expected << NumberText::generalDouble(value) << NumberText::general(float(value));
        }

        qputenv("LOCPATH", dir.path().toLocal8Bit());
        QVERIFY(std::setlocale(LC_NUMERIC, "comma"));
        // The C library itself now writes a comma, so what follows can see the difference.
        QCOMPARE(std::localeconv()->decimal_point, ",");
        QStringList written;
        for (double value : values) {
            for (const QString& pattern : patterns)
                written << NumberText::format(value, pattern);
            written << NumberText::generalDouble(value) << NumberText::general(float(value));
        }
        QCOMPARE(written, expected);
        QCOMPARE(NumberText::format(9.504077875, "##.0000"), "9.5041");
        QCOMPARE(NumberText::format(-0.025, "#0.000"), "-0.025");
        QCOMPARE(NumberText::generalDouble(0.1), "0.1");
        QCOMPARE(NumberText::general(29.92f), "29.92");
        QCOMPARE(*NumberText::toDouble("9.5041"), 9.5041);
        QCOMPARE(*NumberText::toSingle("29.92"), 29.92f);
        QVERIFY(!NumberText::isNumeric("9,5041"));
    }
};

QTEST_GUILESS_MAIN(TestNumberText)
#include "tst_numbertext.moc"
