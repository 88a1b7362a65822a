#include "core/NumberText.h"

#include <QTest>
#include <limits>

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
};

QTEST_GUILESS_MAIN(TestNumberText)
#include "tst_numbertext.moc"
