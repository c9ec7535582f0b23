#include "smarttable/package/PackageReader.h"

#include "smarttable/package/PackageLimits.h"
#include "smarttable/package/Packing.h"
#include "smarttable/package/PartName.h"

#include <zlib.h>

#include <algorithm>

using velm::detail::ZipEntry;
using velm::detail::ZipReader;

namespace SmartTable::detail {

namespace {

/// "NAME": and what is wrong with it.
QString about(const QString& name, const QString& problem)
{
    return QStringLiteral("\"%1\": %2").arg(name, problem);
}

QString fileProblem(QIODevice& file)
{
    if (file.size() > kMostPackageBytes)
        return QStringLiteral("it is larger than %1 bytes").arg(kMostPackageBytes);
    if (file.peek(4) == "\xD0\xCF\x11\xE0")
        return QStringLiteral("is an older or an encrypted document, not a package");
    return QString();
}

/// By what the file claims of an entry.
QString claimProblem(const ZipEntry& entry, qint64 fileSize)
{
    if (entry.isEncrypted)
        return QStringLiteral("it is encrypted, which is not read");
    if (entry.method != 0 && entry.method != Z_DEFLATED)
        return QStringLiteral("it is compressed by a method that is not read (%1)")
            .arg(entry.method);
    const bool isStored = entry.method == 0;
    if (entry.compressedSize > fileSize || (isStored && entry.size != entry.compressedSize))
        return QStringLiteral("its size cannot be true");
    if (entry.size > kMostPartBytes)
        return QStringLiteral("it is larger than %1 bytes").arg(kMostPartBytes);
    if (entry.size > kAlwaysFineBytes && entry.size / kMostRatio > entry.compressedSize)
        return QStringLiteral("it is more than %1 times as large as in the file, which no honest "
                              "part is")
            .arg(kMostRatio);
    return QString();
}

QString entryProblem(const ZipEntry& entry, qint64 fileSize)
{
    QString name = QLatin1Char('/') + entry.name;
    if (entry.isFolder && entry.name.size() > 1)
        name.chop(1);
    if (entry.hasBackslash)
        return QStringLiteral("its name has a \"\\\"");
    QString problem = partNameProblem(name);
    if (!problem.isEmpty())
        return QStringLiteral("its name ") + problem;
    return claimProblem(entry, fileSize);
}

/// Looks at them before anything is read.
QString entriesProblem(const QVector<ZipEntry>& entries, qint64 fileSize)
{
    for (const ZipEntry& entry : entries) {
        const QString problem = entryProblem(entry, fileSize);
        if (!problem.isEmpty())
            return about(entry.name, problem);
    }
    return QString();
}

}  // namespace

QString PackageReader::read(QIODevice& file)
{
    QString problem = fileProblem(file);
    ZipReader archive(file);
    QVector<ZipEntry> entries;
    if (problem.isEmpty())
        problem = archive.open();
    if (problem.isEmpty())
        problem = archive.readEntries(entries, kMostParts);
    if (problem.isEmpty())
        problem = entriesProblem(entries, file.size());
    if (problem.isEmpty())
        problem = takeAll(archive, entries);
    if (problem.isEmpty())
        problem = takeTypes();
    return problem.isEmpty() ? checkRelations() : problem;
}

QString PackageReader::takeAll(ZipReader& archive, const QVector<ZipEntry>& entries)
{
    for (const ZipEntry& entry : entries) {
        const QString problem = take(archive, entry);
        if (!problem.isEmpty())
            return about(entry.name, problem);
    }
    return QString();
}

/// Folders, which some programs put into the file, are no parts.
QString PackageReader::take(ZipReader& archive, const ZipEntry& entry)
{
    if (entry.isFolder)
        return QString();
    PackagePart part;
    part.name = QLatin1Char('/') + entry.name;
    part.isPacked = true;
    if (m_package.has(part.name))
        return QStringLiteral("another part has this name");
    QString problem = archive.readPacked(entry, part.packed);
    if (problem.isEmpty())
        m_package.insert(part);
    return problem;
}

QString PackageReader::takeTypes()
{
    const QString name = QStringLiteral("/[Content_Types].xml");
    const PackagePart* part = m_package.find(name);
    if (!part)
        return QStringLiteral("it is no package: [Content_Types].xml is missing");
    QByteArray xml;
    QString problem = readSmall(*part, xml);
    if (problem.isEmpty())
        problem = m_package.m_types.read(xml);
    if (!problem.isEmpty())
        return about(part->name, problem);
    m_package.m_typesPart = *part;
    m_package.erase(name);
    return QString();
}

QString PackageReader::checkRelations()
{
    for (const PackagePart& part : qAsConst(m_package.m_parts)) {
        const QString source = sourceOfRelationsPart(part.name);
        if (source.isNull())
            continue;
        QByteArray xml;
        QString problem = readSmall(part, xml);
        if (problem.isEmpty())
            problem = Relations(source).read(xml);
        if (!problem.isEmpty())
            return about(part.name, problem);
    }
    return QString();
}

/// Reads a part of which there may be thousands.
QString PackageReader::readSmall(const PackagePart& part, QByteArray& xml)
{
    m_smallBytes += part.packed.size;
    if (m_smallBytes > kMostSmallXmlBytes)
        return QStringLiteral("the relations and content types have more than %1 bytes")
            .arg(kMostSmallXmlBytes);
    return unpack(part.packed, xml);
}

}  // namespace SmartTable::detail
