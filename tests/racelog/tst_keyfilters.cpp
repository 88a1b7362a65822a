#include "racelog/KeyFilters.h"

#include <QTest>

using Filter = QChar (*)(QChar);

class TestKeyFilters : public QObject {
    Q_OBJECT
private:
    static QString passed(Filter filter, const QString& keys) {
        QString out;
        for (QChar key : keys) {
            const QChar result = filter(key);
            if (!result.isNull())
                out += result;
        }
        return out;
    }
    const QString everyKey = QStringLiteral("09azAZ./-: !pPmM\x08");

private slots:
    void carNumberTakesDigitsAndLettersAsCapitals() {
        QCOMPARE(passed(KeyFilters::carNumber, everyKey), QString("09AZAZPPMM\x08"));
    }
    void lettersOnly() { QCOMPARE(passed(KeyFilters::letters, everyKey), QString("azAZpPmM\x08")); }
    void dateTakesDigitsAndSlash() {
        QCOMPARE(passed(KeyFilters::date, everyKey), QString("09/\x08"));
    }
    void timeTakesDigitsColonAndMeridiem() {
        QCOMPARE(passed(KeyFilters::time, everyKey), QString("09aA:pPmM\x08"));
        QCOMPARE(passed(KeyFilters::time, "aA"), QString("aA"));
    }
    void unsignedNumber() {
        QCOMPARE(passed(KeyFilters::unsignedNumber, everyKey), QString("09.\x08"));
    }
    void signedNumber() {
        QCOMPARE(passed(KeyFilters::signedNumber, everyKey), QString("09.-\x08"));
    }
    void typeNameTakesBlanks() {
        QCOMPARE(passed(KeyFilters::typeName, everyKey), QString("09azAZ pPmM\x08"));
    }
};

QTEST_GUILESS_MAIN(TestKeyFilters)
#include "tst_keyfilters.moc"
