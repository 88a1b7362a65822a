#include "feed/WeatherLog.h"

#include "core/DateText.h"
#include "core/ProgramFolder.h"
#include "core/Registry.h"
#include "feed/DataFolder.h"
#include "feed/WeatherLogFormat.h"

QString DateStamp(const QDate& day) {
    return DateText::FileStamp(day);
}

QString WeatherLogFolder() {
    const QString folder = GetDataFolder(QStringLiteral("\\Tarnwick"));
    return folder == FolderNotValid ? ProgramFolder::ForUserFiles() : folder;
}

QString WeatherLogPath(const QDate& day) {
    return WeatherLogFolder() + u'/' + DateStamp(day) + QStringLiteral(".csv");
}

void WeatherLog::writeRow(const WeatherRecord& reading) {
    writeRow(reading, QDateTime::currentDateTime());
}

void WeatherLog::writeRow(const WeatherRecord& reading, const QDateTime& now) {
    if (busy)
        return;
    const Hold writing(*this);

    // The day's file is found, and the settings learn of it, with the first row of the day;
    // the rows after it go straight to that file.
    if (now.date() != day) {
        day = now.date();
        path = WeatherLogPath(now.date());
        Registry::Set(SettingKeys::WeatherLog, path);
        file.close();
    }
    // The file stays open from row to row, unbuffered: each row is one write, so after a crash
    // the file holds every row but the one being written. A file that is gone from its folder,
    // or a folder that is gone, is made again for this row.
    if (!file.isOpen() || !QFile::exists(path)) {
        file.close();
        file.setFileName(path);
        if (!file.open(QIODevice::Append | QIODevice::Unbuffered)) {
            file.setFileName(WeatherLogPath(now.date()));
            file.open(QIODevice::Append | QIODevice::Unbuffered);
        }
    }
    if (file.isOpen())
        file.write(WeatherLogRow(now.time(), reading));
}
