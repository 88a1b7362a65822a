#include "prediction/TrustTexts.h"

#include <QTest>

class TrustTextsTest : public QObject {
    Q_OBJECT
private slots:
    void theLikelyMissInThousandths() {
        QCOMPARE(TrustTexts::likelyMiss(PredictionTrust::Miss{0.0042, 12}),
                 QStringLiteral("Likely miss: \u00b10.004 s (last 12 predictions)"));
        QCOMPARE(TrustTexts::likelyMiss(std::nullopt),
                 QStringLiteral("Likely miss: not enough runs"));
    }

    void theDriftWithItsSignAndItsWay() {
        QCOMPARE(TrustTexts::drift(PredictionTrust::Drift{0.0121, 3}),
                 QStringLiteral("Track: +0.012 s slower than the air says (last 3 runs today)"));
        QCOMPARE(TrustTexts::drift(PredictionTrust::Drift{-0.0078, 2}),
                 QStringLiteral("Track: -0.008 s faster than the air says (last 2 runs today)"));
        QCOMPARE(TrustTexts::drift(std::nullopt), QString());
    }

    void signedThousandths() {
        QCOMPARE(TrustTexts::signedThousandths(0.012), QStringLiteral("+0.012"));
        QCOMPARE(TrustTexts::signedThousandths(-0.0081), QStringLiteral("-0.008"));
        QCOMPARE(TrustTexts::signedThousandths(0.0004), QStringLiteral("0.000"));
        QCOMPARE(TrustTexts::signedThousandths(1.25), QStringLiteral("+1.250"));
    }
};

QTEST_GUILESS_MAIN(TrustTextsTest)
#include "tst_trusttexts.moc"
