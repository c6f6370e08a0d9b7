#pragma once

#include <QDateTime>
#include <QString>
#include <cstdint>

namespace velmor {

// Times that are kept as milliseconds since 1970, as the user reads them: in local time, with the day where it is
// not that of `now`.

QDateTime LocalTimeOf(std::int64_t milliseconds);
/// "14:32".
QString ClockText(const QDateTime& time);
/// "Today", "Yesterday", "Friday, 20 November", with the year where it is another.
QString DayText(const QDateTime& time, const QDateTime& now);
/// "14:32", or "20 November, 14:32".
QString MomentText(const QDateTime& time, const QDateTime& now);

} // namespace velmor
