#pragma once

#include <QList>

class PageDocument;
class RaceLog;

// The two tables a race log is printed as, laid out into a page document. Both are built in
// one go from the runs as they stand and do not follow later edits.
namespace RaceLogPages {

// Each run with its time slip: run and date, time, and the columns from the lane to the second
// timer and the dial-in that are among shownColumns, the columns the log's window shows; a
// hidden column leaves the page too. A missing value leaves a blank cell, so the columns stay
// in line.
void showTimes(PageDocument& page, const RaceLog& log, const QList<int>& shownColumns);

// Each run with the times between its marks: 60 ft to 330 ft, 330 ft to 660 ft, 660 ft to
// 1000 ft, 1000 ft to 1320 ft, and "FULL ", 330 ft to 1320 ft. A time with either mark
// missing is blank.
void showIncrementalTimes(PageDocument& page, const RaceLog& log);

} // namespace RaceLogPages
