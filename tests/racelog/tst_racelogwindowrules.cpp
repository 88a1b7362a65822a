#include "common/TestHome.h"
#include "core/Registry.h"
#include "racelog/RaceLogFileRequests.h"
#include "racelog/RaceLogSlots.h"
#include "racelog/SidePanelRules.h"

#include <QTest>
#include <memory>

namespace {

const QString PathKey = QStringLiteral("SOFTWARE\\Zorvane\\RaceLog\\Path");

} // namespace

class TestRaceLogWindowRules : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void theSlotNamesTheLog() {
        QCOMPARE(RaceLogSlots::numberedCaption(0), QStringLiteral("Race Log# 1"));
        QCOMPARE(RaceLogSlots::numberedCaption(11), QStringLiteral("Race Log# 12"));
    }

    void theLogDateIsRewrittenOrBecomesToday() {
        const QDate today(2026, 3, 7);
        QCOMPARE(SidePanelRules::settledLogDate("4/5/26", today), QStringLiteral("04/05/2026"));
        QCOMPARE(SidePanelRules::settledLogDate("11/22/2025", today), QStringLiteral("11/22/2025"));
        QCOMPARE(SidePanelRules::settledLogDate("", today), QStringLiteral("03/07/2026"));
        QCOMPARE(SidePanelRules::settledLogDate("13/45/26", today), QStringLiteral("03/07/2026"));
        // A time alone is a valid date: the first day of the old calendar.
        QCOMPARE(SidePanelRules::settledLogDate("2:35pm", today), QStringLiteral("12/30/1899"));
    }

    void theTargetEtGetsTwoToFourDecimals() {
        QCOMPARE(SidePanelRules::settledTargetET("9.5"), QStringLiteral("9.50"));
        QCOMPARE(SidePanelRules::settledTargetET("7.12346"), QStringLiteral("7.1235"));
        QCOMPARE(SidePanelRules::settledTargetET("10.125"), QStringLiteral("10.125"));
        QCOMPARE(SidePanelRules::settledTargetET("."), QStringLiteral("0.00"));
        QCOMPARE(SidePanelRules::settledTargetET(""), QStringLiteral("0.00"));
    }

    void predictInputsThatAreNoNumberBecomeZero() {
        QCOMPARE(SidePanelRules::settledPredictInput("-"), QStringLiteral("0"));
        QCOMPARE(SidePanelRules::settledPredictInput(""), QStringLiteral("0"));
        QCOMPARE(SidePanelRules::settledPredictInput("2150"), QStringLiteral("2150"));
        QCOMPARE(SidePanelRules::settledPredictInput("0.4870"), QStringLiteral("0.4870"));
    }

    void thePageIdentifierIsTrimmed() {
        QCOMPARE(SidePanelRules::settledPageIdentifier("  Bracket "), QStringLiteral("Bracket"));
    }

    void theSaveDialogueProposesTodayAndTheTrack() {
        const QDate today(2026, 5, 4);
        const Dialogs::FileRequest plain =
            RaceLogFileRequests::saveRequest("Race Log# 2", "", today, "/opt/tarnwick");
        QVERIFY(plain.save);
        QCOMPARE(plain.title, QStringLiteral("Save Race Log - Race Log# 2"));
        QCOMPARE(plain.fileName, QStringLiteral("2026-05-04.trl"));
        QCOMPARE(plain.filter,
                 QStringLiteral("Tarnwick Race Log Files (*.trl) |*.trl|All Files (*.*) |*.*|"));
        QCOMPARE(plain.filterIndex, 1);

        const Dialogs::FileRequest atTrack =
            RaceLogFileRequests::saveRequest("Bracket", "Rockwell Dragway", today, "/opt");
        QCOMPARE(atTrack.fileName, QStringLiteral("2026-05-04 Rockwell Dragway.trl"));
    }

    void theSaveDialogueStartsInTheRememberedOrTheProgramFolder() {
        const QDate today(2026, 5, 4);
        QCOMPARE(RaceLogFileRequests::saveRequest("x", "", today, "/opt/tarnwick").initialFolder,
                 QStringLiteral("/opt/tarnwick"));
        RaceLogFileRequests::rememberFolder(home->root() + "/logs/2026-05-04.trl");
        QCOMPARE(Registry::get(PathKey, "0"), home->root() + "/logs");
        QCOMPARE(RaceLogFileRequests::saveRequest("x", "", today, "/opt/tarnwick").initialFolder,
                 home->root() + "/logs");
    }

    void theOpenDialogueStartsInTheRememberedFolderIfAny() {
        Dialogs::FileRequest open = RaceLogFileRequests::openRequest();
        QVERIFY(!open.save);
        QCOMPARE(open.title, QStringLiteral("Open Race Log"));
        QCOMPARE(open.filterIndex, 1);
        QCOMPARE(open.filter, RaceLogFileRequests::filter());
        QCOMPARE(open.initialFolder, QString());

        Registry::set(PathKey, "0", "/data/logs");
        QCOMPARE(RaceLogFileRequests::openRequest().initialFolder, QStringLiteral("/data/logs"));
    }

    void theExtensionIsTheLastThreeCharacters() {
        QCOMPARE(RaceLogFileRequests::fileExtension("report.pdf"), QStringLiteral("pdf"));
        QCOMPARE(RaceLogFileRequests::fileExtension("reportpdf"), QStringLiteral("pdf"));
        QCOMPARE(RaceLogFileRequests::fileExtension("a.PDF"), QStringLiteral("PDF"));
        QCOMPARE(RaceLogFileRequests::fileExtension("df"), QStringLiteral("df"));
    }
};

QTEST_GUILESS_MAIN(TestRaceLogWindowRules)
#include "tst_racelogwindowrules.moc"
