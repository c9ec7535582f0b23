#include "archive/ZipTime.h"

#include "archive/ZipFields.h"
#include "common/platform/Clock.h"

#include <QtEndian>

#include <limits>

namespace velm::detail {

namespace {

constexpr quint16 kTimeField = 0x5455;
constexpr char kHasModified = 1;

}  // namespace

QByteArray timeField(const QDateTime& modified)
{
    const qint64 seconds = modified.toSecsSinceEpoch();
    using Limits = std::numeric_limits<qint32>;
    if (!modified.isValid() || seconds < Limits::min() || seconds > Limits::max())
        return QByteArray();
    QByteArray field(9, '\0');
    qToLittleEndian<quint16>(kTimeField, field.data());
    qToLittleEndian<quint16>(5, field.data() + 2);
    field[4] = kHasModified;
    qToLittleEndian<qint32>(static_cast<qint32>(seconds), field.data() + 5);
    return field;
}

QDateTime timeOfFields(const QByteArray& fields, quint32 dos)
{
    constexpr int kFirstWithoutSign = 2038;
    const QByteArray field = extraField(fields, kTimeField);
    if (field.size() < 5 || (field.at(0) & kHasModified) == 0)
        return QDateTime();
    const auto seconds = fieldOf<qint32>(field, 1);
    const bool hasSign = timeOfDos(dos).date().year() < kFirstWithoutSign;
    const qint64 since1970 = hasSign ? qint64(seconds) : qint64(static_cast<quint32>(seconds));
    return QDateTime::fromSecsSinceEpoch(since1970, Qt::UTC);
}

quint32 dosTime(const QDateTime& modified)
{
    constexpr int kFirstYear = 1980;
    constexpr int kLastYear = 2107;
    constexpr quint32 kFirst = 1U << 21 | 1U << 16;
    constexpr quint32 kLast = 0xFF9FBF7D;  // 2107-12-31 23:59:58
    const QDateTime clock = platform::clockTime(modified);
    const QDate date = clock.date();
    const QTime time = clock.time();
    if (!clock.isValid() || date.year() < kFirstYear)
        return kFirst;
    if (date.year() > kLastYear)
        return kLast;
    const int day = (date.year() - kFirstYear) << 9 | date.month() << 5 | date.day();
    const int second = time.hour() << 11 | time.minute() << 5 | time.second() / 2;
    return static_cast<quint32>(day) << 16 | static_cast<quint32>(second);
}

QDateTime timeOfDos(quint32 dos)
{
    const auto bits = [dos](int first, int count) {
        return static_cast<int>(dos >> first & ((1U << count) - 1));
    };
    return QDateTime(QDate(1980 + bits(25, 7), bits(21, 4), bits(16, 5)),
                     QTime(bits(11, 5), bits(5, 6), 2 * bits(0, 5)));
}

}  // namespace velm::detail
