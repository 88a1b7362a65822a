#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

// Comma-separated text as the time-slip receiver writes it, one record at a time. Fields are
// separated by commas; a field in double quotes may hold commas, line ends and doubled quotes
// (""), which stand for one quote. A record ends at CR LF, at LF, at a lone CR or at the end of
// the text, so a last line without a line end is a record too, and the line end after the last
// record starts none. Every field comes back as it stands between the separators: nothing is
// trimmed or converted. A record never takes fields from the line after it, so a short line
// stays short and its reader sees how many fields it really had.
class CsvRecords {
public:
    explicit CsvRecords(QStringView text) : text(text) {}

    bool atEnd() const { return position >= text.size(); }

    // The fields of the next record; an empty list once the text is used up.
    QStringList next();

private:
    QString field(bool& endOfRecord);

    QStringView text;
    qsizetype position = 0;
};
