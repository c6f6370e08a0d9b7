#include "views/dialogs/LocalTime.h"

#include <QLocale>

namespace velmor {

namespace {

// As the program's texts are, whatever the system's language is.
QString DateText(const QDateTime& time, const QDateTime& now, const QString& format) {
    const bool isThisYear = time.date().year() == now.date().year();
    return QLocale(QLocale::English).toString(time.date(), isThisYear ? format : format + " yyyy");
}

} // namespace

QDateTime LocalTimeOf(std::int64_t milliseconds) {
    return QDateTime::fromMSecsSinceEpoch(milliseconds);
}

QString ClockText(const QDateTime& time) {
    return time.toString("HH:mm");
}

QString DayText(const QDateTime& time, const QDateTime& now) {
    if (time.date() == now.date())
        return "Today";
    if (time.date().addDays(1) == now.date())
        return "Yesterday";
    return DateText(time, now, "dddd, d MMMM");
}

QString MomentText(const QDateTime& time, const QDateTime& now) {
    if (time.date() == now.date())
        return ClockText(time);
    return DateText(time, now, "d MMMM") + ", " + ClockText(time);
}

} // namespace velmor
