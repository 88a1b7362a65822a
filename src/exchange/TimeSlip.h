#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

// The time slips of an event as the track's timing receiver logs them: a CSV file of records
// of 21 fields, in pairs, the two lanes of one pairing. The program only reads that file. Each
// look-up reads the whole file again, so a log that grows during the event is always seen up to
// date.

// The fields of a record that the program reads; the others are the receiver's own business
// and are kept as opaque text.
enum TimeSlipField {
    SlipRunTime = 1,  // date and time of the run
    SlipCategory = 2, // category and session; empty on the second record of a pair ends the data
    SlipCarNumber = 4,
    SlipLane = 6, // "L" or "R"
    SlipReactionTime = 9,
    Slip60ft = 10,
    Slip330ft = 11,
    Slip660ft = 12,
    Slip660Mph = 13,
    Slip1000ft = 14,
    Slip1000Mph = 15,
    Slip1320ft = 16,
    Slip1320Mph = 17,
    TimeSlipFieldCount = 21
};

// The records read, in file order, each with exactly TimeSlipFieldCount fields. The last pair
// read is always the last two rows, so the index of its first record is rows.size() - 2 and of
// its second rows.size() - 1: -2 and -1 when nothing has been read.
struct TimeSlipLog {
    QList<QStringList> rows;

    int firstOfLastPair() const { return int(rows.size()) - 2; }
    int secondOfLastPair() const { return int(rows.size()) - 1; }
    void reset() { rows.clear(); }
};

// How a load went. Without a log file to read no message is due: the caller says that no time
// slip was imported. An unreadable file (locked, a record with too few fields, a pair cut off
// at the end) comes with the message of timeSlipLogUnreadable for the user.
enum class TimeSlipLoad {
    Read,
    NoLogFile, // neither the receiver's nor the program's settings name a log file
    Missing,   // the file named doesn't exist
    Unreadable,
};

// The box an unreadable log gives, for the window to show.
struct TimeSlipMessage {
    QString title;
    QString text;
};
TimeSlipMessage timeSlipLogUnreadable();

// The log file: where the receiver's software says it writes, or else the file named in the
// program's own settings; empty when neither is set.
QString timeSlipLogPath();

// Reads the log file named in the settings into log. On anything but Read the log is empty.
TimeSlipLoad loadTimeSlipLog(TimeSlipLog& log);
// The same with the file given.
TimeSlipLoad loadTimeSlipLog(TimeSlipLog& log, const QString& path);
// The pair rules on the bytes of a file; false, and the log empty, when they don't make up
// whole pairs of whole records.
bool readTimeSlipLog(TimeSlipLog& log, const QByteArray& bytes);

// The first row of the log for the car whose run time lies fewer than 15 minute boundaries
// from when, or -1. The car number must match as it is typed; seconds don't count.
int matchTimeSlip(const TimeSlipLog& log, const QDateTime& when, const QString& carNumber);

// A look-up of a time slip: the log is loaded anew and then matched.
struct TimeSlipSearch {
    TimeSlipLoad load = TimeSlipLoad::NoLogFile;
    int row = -1;
};
TimeSlipSearch findTimeSlip(TimeSlipLog& log, const QDateTime& when, const QString& carNumber);
