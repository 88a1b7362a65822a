// Any bytes as a race log file, or a real race log with some of its bytes changed: the load
// must end, without fault, and leave a log the window can show (its runs numbered from 1 and
// a reference run list to match, and a reference run in it or none).
#include "racelog/Database.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

QTemporaryDir* folder = nullptr;
QByteArray realLog; // a saved log of three runs with every field filled

QString filePath() {
    return folder->path() + QStringLiteral("/fuzzed.trl");
}

QByteArray makeRealLog() {
    RaceLogData log;
    for (int row = 1; row <= 3; ++row) {
        if (row > 1)
            log.grid.addRun();
        for (int column = 1; column < log.grid.cols(); ++column)
            log.grid.setCell(row, column, QString::number(row + column * 0.25));
        log.grid.setCell(row, 1, QStringLiteral("02:35pm"));
        log.grid.setCell(row, 2, QStringLiteral("07/04/26"));
        log.grid.setCell(row, 3, QStringLiteral("Left"));
    }
    log.refRunItems = {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")};
    log.refRunIndex = 2;
    log.notes = QStringLiteral("notes");
    require(Database::saveRaceLog(filePath(), log) == Database::SaveResult::Ok);
    QFile file(filePath());
    require(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

void removeFiles() {
    for (const char* suffix : {"", "-journal", "-wal", "-shm"})
        QFile::remove(filePath() + QLatin1String(suffix));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication application(*argc, *argv); // finds the database driver plugin
    folder = new QTemporaryDir;
    realLog = makeRealLog();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    QByteArray bytes;
    if (input.ConsumeBool()) {
        // The real log with bytes changed: offset and new value, as often as the input says.
        bytes = realLog;
        while (input.remaining_bytes() >= 3) {
            const auto offset = input.ConsumeIntegralInRange<qsizetype>(0, bytes.size() - 1);
            bytes[offset] = char(input.ConsumeIntegral<quint8>());
        }
    } else {
        const std::string rest = input.ConsumeRemainingBytesAsString();
        bytes = QByteArray(rest.data(), qsizetype(rest.size()));
    }
    removeFiles();
    {
        QFile file(filePath());
        require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    RaceLogData log;
    Database::loadLog(filePath(), log);
    const RunTable& grid = log.grid;
    require(grid.tableRows() >= 2 && grid.cols() == 34);
    require(log.refRunItems.size() == grid.tableRows() - 1);
    // -1: a log without a reference run.
    require(log.refRunIndex >= -1 && log.refRunIndex < log.refRunItems.size());
    for (int row = 1; row < grid.tableRows(); ++row)
        require(grid.cell(row, 0) == QString::number(row));
    removeFiles();
    return 0;
}
