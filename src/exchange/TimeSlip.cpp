#include "exchange/TimeSlip.h"

#include "core/DateText.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "exchange/CsvRecords.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <cstdlib>
#include <optional>

namespace {

// The receiver is a Windows program: its file is UTF-8 or, more likely, the ANSI code page.
// Fields are opaque, so Latin-1 is a faithful enough reading of anything that isn't UTF-8.
QString decode(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(bytes);
    if (utf8.hasError())
        return QString::fromLatin1(bytes);
    return text;
}

// A date and time counted in minutes on the clock of the track, seconds dropped, so that two
// times lie as many minutes apart as minute boundaries lie between them. A time alone stands on
// 30 December 1899, where Windows dates count from, and a date alone at midnight.
qint64 clockMinute(const QDate& date, const QTime& time) {
    return date.toJulianDay() * 24 * 60 + time.hour() * 60 + time.minute();
}

std::optional<qint64> clockMinute(const QString& text) {
    const auto value = DateText::parse(text);
    if (!value)
        return std::nullopt;
    return clockMinute(value->date.value_or(QDate(1899, 12, 30)),
                       value->time.value_or(QTime(0, 0)));
}

} // namespace

TimeSlipMessage timeSlipLogUnreadable() {
    return {QStringLiteral("Tarnwick - iCardRX Import"),
            QStringLiteral("Error:\n"
                           "  Unable to import race log file!\n"
                           "\n"
                           "  Please try closing the file if it is open or select\n"
                           "  a valid formated iCard Race Log CSV file")};
}

QString timeSlipLogPath() {
    for (const SettingKey* key : {&SettingKeys::ReceiverLogFile, &SettingKeys::TimeSlipLogFile}) {
        const QString path = Registry::get(*key);
        if (path != Registry::NoKeyValue)
            return path;
    }
    return {};
}

TimeSlipLoad loadTimeSlipLog(TimeSlipLog& log) {
    const QString path = timeSlipLogPath();
    if (path.isEmpty()) {
        log.reset();
        return TimeSlipLoad::NoLogFile;
    }
    return loadTimeSlipLog(log, path);
}

TimeSlipLoad loadTimeSlipLog(TimeSlipLog& log, const QString& path) {
    log.reset();
    if (!QFileInfo(path).isFile())
        return TimeSlipLoad::Missing;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return TimeSlipLoad::Unreadable;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return TimeSlipLoad::Unreadable;
    return readTimeSlipLog(log, bytes) ? TimeSlipLoad::Read : TimeSlipLoad::Unreadable;
}

bool readTimeSlipLog(TimeSlipLog& log, const QByteArray& bytes) {
    log.reset();
    const QString text = decode(bytes);
    CsvRecords records(text);
    // A pair is the two lanes of one pairing and is read as a unit: a file that ends inside a
    // pair, or a record cut short, is not a log this program can trust.
    auto readRecord = [&records](QStringList& fields) {
        if (records.atEnd())
            return false;
        fields = records.next();
        if (fields.size() < TimeSlipFieldCount)
            return false;
        // A later receiver may append fields of its own; they mean nothing here.
        fields.resize(TimeSlipFieldCount);
        return true;
    };
    while (!records.atEnd()) {
        QStringList first, second;
        if (!readRecord(first) || !readRecord(second)) {
            log.reset();
            return false;
        }
        log.rows.append(std::move(first));
        log.rows.append(std::move(second));
        // The receiver ends its data with a pair whose second lane has no category. The first
        // pair never ends the data, so a log that starts with a blank pair is still read on.
        if (log.rows.last()[SlipCategory].isEmpty() && log.secondOfLastPair() - 2 >= 1) {
            log.rows.resize(log.rows.size() - 2);
            break;
        }
    }
    return true;
}

int matchTimeSlip(const TimeSlipLog& log, const QDateTime& when, const QString& carNumber) {
    if (!when.date().isValid() || !when.time().isValid())
        return -1;
    const qint64 target = clockMinute(when.date(), when.time());
    for (int row = 0; row < log.rows.size(); ++row) {
        const QStringList& fields = log.rows[row];
        if (fields[SlipCarNumber] != carNumber)
            continue;
        const auto minute = clockMinute(fields[SlipRunTime]);
        // The first slip that fits wins, even when a later one lies closer.
        if (minute && std::abs(*minute - target) < 15)
            return row;
    }
    return -1;
}

TimeSlipSearch findTimeSlip(TimeSlipLog& log, const QDateTime& when, const QString& carNumber) {
    TimeSlipSearch search;
    search.load = loadTimeSlipLog(log);
    if (search.load == TimeSlipLoad::Read)
        search.row = matchTimeSlip(log, when, carNumber);
    return search;
}
