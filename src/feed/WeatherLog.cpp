#include "feed/WeatherLog.h"

#include "core/DateText.h"
#include "core/ProgramFolder.h"
#include "core/Registry.h"
#include "feed/DataFolder.h"
#include "feed/WeatherLogFormat.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

// Whether the open file still stands in its folder. On Unix a file taken out of its folder
// (or a folder removed with it) has no link left, which the open file tells without a look up
// its path; that look would be paid on every feed line.
bool stillInFolder(const QFile& file) {
#ifdef Q_OS_UNIX
    struct stat status {};
    return ::fstat(file.handle(), &status) == 0 && status.st_nlink > 0;
#else
    return QFile::exists(file.fileName());
#endif
}

} // namespace

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
    if (!file.isOpen() || !stillInFolder(file)) {
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
