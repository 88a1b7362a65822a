#pragma once

#include "feed/LoggedWeather.h"
#include "feed/WeatherQuantities.h"

#include <QByteArray>
#include <QString>
#include <QTime>
#include <optional>
#include <string_view>

// The text of the weather log: rows of 16 comma-separated fields, no header,
//   "10:42:07am",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340
// each ended by CR LF: the quoted clock time, then the fifteen quantities with floats in
// general form and integers as plain digits. A day file holds up to 86,400 rows, so reading
// works on views into the file's bytes and allocates nothing per row.

// One row, CR LF included.
QByteArray weatherLogRow(const QTime& time, const ReadingTexts& texts);

// The rows of a log file, one line at a time, without the line ends and skipping blank lines.
class WeatherLogLines {
public:
    explicit WeatherLogLines(const QString& path); // reads the whole file
    bool isOpen() const { return open; }
    // The next line; false at the end of the file.
    bool next(std::string_view& line);
    // How much of the file the lines read so far cover, from 0 to 1.
    double fractionRead() const;

private:
    QByteArray bytes;
    qsizetype position = 0;
    bool open = false;
};

// The weather log's one rule for what counts as a time: a row's time text, its quotes taken
// off, as seconds after midnight; nullopt when it is no time of day. The replay, the lookup
// and anything that checks a row they found read the time through this, so all of them agree
// on every row. The text form reads the log's 8-bit characters back as they were.
std::optional<int> readClockTime(std::string_view time);
std::optional<int> readClockTime(const QString& time);

// The clock time of a row as seconds after midnight, read from its first field; nullopt when
// that field is no time of day.
std::optional<int> readRowSecond(std::string_view line);

// All 16 fields of a row into `row`, with the clock time as seconds after midnight. False
// for a malformed row: not 16 fields, a time that is no time, a number that is not a number
// or does not fit its field.
bool readWeatherLogRow(std::string_view line, LoggedWeather& row, int& second);
