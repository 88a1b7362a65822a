#include "feed/WeatherLog.h"

#include "core/DateText.h"
#include "core/ProgramFolder.h"
#include "core/Registry.h"
#include "feed/DataFolder.h"
#include "feed/WeatherLogFormat.h"

QString dateStamp(const QDate& day) {
    return DateText::fileStamp(day);
}

QString weatherLogFolder() {
    const QString folder = dataFolder(QStringLiteral("\\Tarnwick"));
    return folder == FolderNotValid ? ProgramFolder::forUserFiles() : folder;
}

QString weatherLogPath(const QDate& day) {
    return weatherLogFolder() + u'/' + dateStamp(day) + QStringLiteral(".csv");
}

void WeatherLog::writeRow(const ReadingTexts& reading) {
    writeRow(reading, QDateTime::currentDateTime());
}

void WeatherLog::writeRow(const ReadingTexts& reading, const QDateTime& now) {
    if (busy)
        return;
    const Hold writing(*this);

    // The day's file is found, and the settings learn of it, with the first row of the day;
    // the rows after it go straight to that file.
    if (now.date() != day) {
        day = now.date();
        path = weatherLogPath(now.date());
        Registry::set(SettingKeys::WeatherLog, path);
        file.close();
    }
    // The file stays open from row to row, unbuffered: each row is one write, so after a crash
    // the file holds every row but the one being written. A file that is gone from its folder,
    // or a folder that is gone, is made again for this row.
    if (!file.isOpen() || !QFile::exists(path)) {
        file.close();
        file.setFileName(path);
        if (!file.open(QIODevice::Append | QIODevice::Unbuffered)) {
            file.setFileName(weatherLogPath(now.date()));
            file.open(QIODevice::Append | QIODevice::Unbuffered);
        }
    }
    if (file.isOpen())
        file.write(weatherLogRow(now.time(), reading));
}
