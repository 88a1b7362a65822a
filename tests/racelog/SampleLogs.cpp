#include "SampleLogs.h"

#include "racelog/ColumnTable.h"

#include <QStringList>

namespace SampleLogs {

void fillRun(RunTable& grid, int row, int seed) {
    const auto two = [](int value) { return QStringLiteral("%1").arg(value, 2, 10, QChar(u'0')); };
    const QString digit = QString::number(1 + seed % 9);        // 1 to 9
    const QString hundredths = QString::number(10 + seed % 90); // 10 to 99
    const QString tenThousandths = QString::number(1000 + seed % 9000);
    const QStringList texts{
        QString::number(row),
        two(1 + seed % 12) + u':' + two(seed % 60) + QStringLiteral("pm"),  // Time
        QStringLiteral("07/") + two(1 + seed % 28) + QStringLiteral("/26"), // Date
        seed % 2 ? QStringLiteral("Right") : QStringLiteral("Left"),        // Lane
        u'.' + tenThousandths,                                              // RT
        QStringLiteral("0.") + digit,                                       // Delay Box
        QStringLiteral("1.") + tenThousandths,                              // 60 ft
        QStringLiteral("4.") + tenThousandths,                              // 330 ft
        QStringLiteral("7.") + tenThousandths,                              // 660 ft
        QStringLiteral("95.") + hundredths,                                 // 660 MPH
        QStringLiteral("9.") + tenThousandths,                              // 1000 ft
        QStringLiteral("110.") + hundredths,                                // 1000 MPH
        QStringLiteral("11.") + tenThousandths,                             // 1320 ft
        QStringLiteral("118.") + hundredths,                                // 1320 MPH
        QStringLiteral("2.") + digit,                                       // Timer 2
        QStringLiteral("1.") + digit,                                       // Timer 1
        QStringLiteral("3.") + digit,                                       // Shift Time
        QStringLiteral("11.") + hundredths,                                 // Dial-In
        QStringLiteral("10") + digit + QStringLiteral(".5"),                // T. Temp
        QString::number(1200 + seed),                                       // AA
        QString::number(1500 + seed),                                       // DA
        QStringLiteral("0.") + hundredths,                                  // VP
        QStringLiteral("29.") + hundredths,                                 // ABP
        QStringLiteral("8") + digit + QStringLiteral(".5"),                 // Temp
        QStringLiteral("4") + digit + QStringLiteral(".25"),                // RH
        QStringLiteral("0.00") + digit,                                     // AH
        QString::number(60 + seed % 40),                                    // GR
        QString::number(50 + seed % 20),                                    // DP
        QStringLiteral("0.9") + digit,                                      // ADR
        QString::number(-200 + seed),                                       // PA
        QString::number(seed % 360),                                        // WD
        QString::number(seed % 25),                                         // WS
        QString::number(seed % 30),                                         // WG
        QString::number(seed % 100),                                        // AL
    };
    for (int column = 1; column < texts.size(); ++column)
        grid.setCell(row, column, texts[column]);
}

void fillLog(RaceLogData& log, int runs) {
    while (log.grid.tableRows() <= runs) {
        log.grid.addRun();
        log.refRunItems << QString::number(log.refRunItems.size() + 1);
    }
    for (int row = 1; row <= runs; ++row)
        fillRun(log.grid, row, row);
    log.date = QStringLiteral("07/04/2026");
    log.carNumber = QStringLiteral("A123");
    log.raceTrack = QStringLiteral("Maple Grove Raceway");
    log.pageIdentifier = QStringLiteral("SUPERPRO");
    log.refRunIndex = runs > 1 ? 1 : 0;
    log.pf = QStringLiteral("1.5");
    log.tsr = QStringLiteral("0.85");
    log.targetET = QStringLiteral("10.9");
    log.notes = QStringLiteral("Warm, light tail wind.\nNew tyres from run 2.");
    log.aa = QStringLiteral("1250");
    log.vp = QStringLiteral("0.55");
}

int runsOfGeneration(int generation) {
    return 200 + generation % 5;
}

void fillGeneration(RaceLogData& log, int generation) {
    const QString tag = QString::number(generation);
    while (log.grid.tableRows() - 1 < runsOfGeneration(generation))
        log.grid.addRun();
    while (log.grid.tableRows() - 1 > runsOfGeneration(generation))
        log.grid.removeRun(log.grid.tableRows() - 1);
    for (int row = 1; row < log.grid.tableRows(); ++row) {
        for (int column = 1; column < ColumnTable::Count; ++column)
            log.grid.setCell(row, column, tag);
        log.grid.setCell(row, 1, QStringLiteral("10:15am"));
        log.grid.setCell(row, 2, QStringLiteral("07/04/26"));
    }
    log.notes = QStringLiteral("generation ") + tag;
    log.pf = tag;
}

} // namespace SampleLogs
