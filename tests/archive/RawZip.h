#pragma once

#include <QByteArray>
#include <QVector>

/// One entry of an archive that is put together byte by byte, so that nobody keeps it honest.
struct RawEntry
{
    QByteArray name;
    QByteArray content = "x";
    quint16 flags = 0;
    quint16 method = 0;
    quint32 attributes = 0;    ///< in the upper half those of a Unix, if they are not 0
    qint64 claimedSize = -1;   ///< -1: the size of the content
    quint32 crc = 0x8CDC1683;  ///< that of "x"
};

/// An archive of stored entries.
inline QByteArray rawZip(const QVector<RawEntry>& entries)
{
    QByteArray zip, directory;
    const auto put = [](QByteArray& to, std::initializer_list<std::pair<quint32, int>> numbers) {
        for (const auto& [number, size] : numbers) {
            for (int i = 0; i < size; ++i)
                to.append(static_cast<char>(number >> (8 * i) & 0xFF));
        }
    };
    for (const RawEntry& entry : entries) {
        const auto at = static_cast<quint32>(zip.size());
        const auto nameSize = static_cast<quint32>(entry.name.size());
        const auto stored = static_cast<quint32>(entry.content.size());
        const quint32 size =
            entry.claimedSize < 0 ? stored : static_cast<quint32>(entry.claimedSize);
        const auto common = [&](QByteArray& to) {
            put(to, {{20, 2},
                     {entry.flags, 2},
                     {entry.method, 2},
                     {0, 2},
                     {0x5A21, 2},
                     {entry.crc, 4},
                     {stored, 4},
                     {size, 4},
                     {nameSize, 2},
                     {0, 2}});
        };
        put(zip, {{0x04034B50, 4}});
        common(zip);
        zip += entry.name + entry.content;
        put(directory, {{0x02014B50, 4}, {entry.attributes ? 0x0314U : 20U, 2}});
        common(directory);
        put(directory, {{0, 2}, {0, 2}, {0, 2}, {entry.attributes, 4}, {at, 4}});
        directory += entry.name;
    }
    const auto count = static_cast<quint32>(entries.size());
    const auto at = static_cast<quint32>(zip.size());
    zip += directory;
    put(zip, {{0x06054B50, 4},
              {0, 2},
              {0, 2},
              {count, 2},
              {count, 2},
              {static_cast<quint32>(directory.size()), 4},
              {at, 4},
              {0, 2}});
    return zip;
}
