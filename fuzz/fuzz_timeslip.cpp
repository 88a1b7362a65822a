// Any bytes as the time-slip receiver's log: the CSV reader and the pair rules must read them
// without fault. Every record has a field, and a record's fields never hold more characters
// than the text; a log that reads holds whole pairs of 21 fields, one that doesn't is left
// empty; the file read through the settings gives what the bytes give; and a found slip is
// always one of the car asked for, within 15 minutes.
#include "core/DateText.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "exchange/CsvRecords.h"
#include "exchange/TimeSlip.h"

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

QString logPath;

void checkRecords(const QString& text) {
    CsvRecords records(text);
    qsizetype characters = 0;
    qsizetype count = 0;
    while (!records.atEnd()) {
        const QStringList fields = records.next();
        require(!fields.isEmpty());
        for (const QString& field : fields)
            characters += field.size();
        require(characters <= text.size());
        require(++count <= text.size());
    }
    require(records.next().isEmpty());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QTemporaryDir home;
    qputenv("XDG_DATA_HOME", (home.path() + QStringLiteral("/data")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/config")).toLocal8Bit());
    static QCoreApplication application(*argc, *argv);
    logPath = home.filePath(QStringLiteral("icard.csv"));
    Registry::set(SettingKeys::ReceiverLogFile, logPath);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    const int minute = input.ConsumeIntegralInRange<int>(0, 24 * 60 - 1);
    const quint8 pick = input.ConsumeIntegral<quint8>();
    const std::string bytes = input.ConsumeRemainingBytesAsString();
    const QByteArray file(bytes.data(), qsizetype(bytes.size()));

    checkRecords(QString::fromLatin1(file));
    checkRecords(QString::fromUtf8(file));

    TimeSlipLog read;
    const bool whole = readTimeSlipLog(read, file);
    if (whole) {
        require(read.rows.size() % 2 == 0);
        for (const QStringList& row : read.rows)
            require(row.size() == TimeSlipFieldCount);
    } else {
        require(read.rows.isEmpty());
    }
    require(read.secondOfLastPair() == read.firstOfLastPair() + 1);

    {
        QFile out(logPath);
        require(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        out.write(file);
    }
    // A car of the log when there is one, so that matching gets to the run times.
    const QString car = read.rows.isEmpty() ? QStringLiteral("7")
                                            : read.rows[pick % read.rows.size()][SlipCarNumber];
    const QDateTime when(QDate(2025, 10, 12), QTime(minute / 60, minute % 60));
    TimeSlipLog log;
    const TimeSlipSearch search = findTimeSlip(log, when, car);
    require(search.load == (whole ? TimeSlipLoad::Read : TimeSlipLoad::Unreadable));
    require(log.rows == read.rows);
    if (search.row >= 0) {
        require(search.row < log.rows.size());
        require(log.rows[search.row][SlipCarNumber] == car);
        require(DateText::isDate(log.rows[search.row][SlipRunTime]));
        require(search.row == matchTimeSlip(read, when, car));
    }
    return 0;
}
