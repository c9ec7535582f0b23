#include "smarttable/package/Package.h"

#include "archive/ZipWriter.h"
#include "common/files/StagedFile.h"
#include "smarttable/package/PackageLimits.h"
#include "smarttable/package/PackageReader.h"
#include "smarttable/package/Packing.h"
#include "smarttable/package/PartName.h"

#include <QFile>

#include <algorithm>
#include <new>

using velm::detail::StagedFile;
using velm::detail::ZipWriter;

namespace SmartTable::detail {

namespace {

/// Does something that answers what went wrong with a file or part of that name.
template<class Operation>
QString run(const QString& name, const Operation& operation)
{
    const QString about = QStringLiteral("\"%1\": ").arg(name);
    try {
        const QString problem = operation();
        return problem.isEmpty() ? QString() : about + problem;
    } catch (const std::bad_alloc&) {
        return about + QStringLiteral("out of memory");
    }
}

/// Has a part packed with that level, unless it is as it lies in a file.
QString pack(PackagePart& part, const Packer& packer)
{
    if (part.isPacked && part.level.value_or(packer.level()) == packer.level())
        return QString();
    QByteArray content = part.content;
    QString problem = part.isPacked ? unpack(part.packed, content) : QString();
    if (problem.isEmpty() && content.size() > kMostPartBytes)
        problem = QStringLiteral("it is larger than %1 bytes").arg(kMostPartBytes);
    if (!problem.isEmpty())
        return problem;
    part.packed = packer.pack(content);
    part.level = packer.level();
    part.isPacked = true;
    part.content.clear();
    return QString();
}

/// Packs a part, if need be, and adds it to an archive.
QString add(ZipWriter& archive, PackagePart& part, const Packer& packer)
{
    QString problem = pack(part, packer);
    if (problem.isEmpty())
        problem = archive.addPacked(part.name.mid(1), part.packed);
    return problem.isEmpty() ? problem : QStringLiteral("\"%1\": ").arg(part.name) + problem;
}

}  // namespace

Package::Package()
{
    putTypes();
}

QString Package::load(const QString& file)
{
    return run(file, [&] {
        QFile device(file);
        if (!device.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return device.errorString();
        Package loaded;
        QString problem = PackageReader(loaded).read(device);
        if (problem.isEmpty())
            *this = loaded;
        return problem;
    });
}

QString Package::save(const QString& file, int level) const
{
    constexpr int kBestLevel = 12;
    return run(file, [&] {
        const Packer packer(std::clamp(level, 0, kBestLevel));
        StagedFile staged(file);
        QString problem = staged.open();
        if (problem.isEmpty())
            problem = writeTo(staged, packer);
        return problem.isEmpty() ? staged.commit() : problem;
    });
}

QString Package::writeTo(StagedFile& file, const Packer& packer) const
{
    ZipWriter archive(file.file(), 0);
    QString problem = archive.open();
    if (!m_typesPart.isPacked)
        m_typesPart.content = m_types.xml();
    if (problem.isEmpty())
        problem = add(archive, m_typesPart, packer);
    for (PackagePart& part : m_parts) {
        if (!problem.isEmpty())
            break;
        problem = add(archive, part, packer);
    }
    const QString closed = archive.close();
    if (!problem.isEmpty() || !closed.isEmpty())
        return problem.isEmpty() ? closed : problem;
    return file.file().size() <= kMostPackageBytes
               ? QString()
               : QStringLiteral("it would be larger than %1 bytes").arg(kMostPackageBytes);
}

QString Package::read(const QString& part, QByteArray& content) const
{
    return run(part, [&] {
        const int place = m_places.value(partKey(part), -1);
        return place < 0 ? QStringLiteral("there is no such part") : read(m_parts[place], content);
    });
}

QString Package::read(PackagePart& part, QByteArray& content) const
{
    if (!part.isPacked) {
        content = part.content;
        return QString();
    }
    if (!part.isRead && part.packed.size > kMostReadBytes - m_readBytes)
        return QStringLiteral("more than %1 bytes of the package would be read")
            .arg(kMostReadBytes);
    QString problem = unpack(part.packed, content);
    if (problem.isEmpty() && !part.isRead) {
        part.isRead = true;
        m_readBytes += part.packed.size;
    }
    return problem;
}

const PackagePart* Package::find(const QString& part) const
{
    const int place = m_places.value(partKey(part), -1);
    return place < 0 ? nullptr : &qAsConst(m_parts).at(place);
}

QStringList Package::parts() const
{
    QStringList names;
    for (const PackagePart& part : qAsConst(m_parts))
        names.append(part.name);
    return names;
}

void Package::write(const QString& part, const QByteArray& content, const QString& contentType)
{
    const PackagePart* old = find(part);
    const bool keepsType = contentType.isEmpty() || contentType == m_types.of(part);
    if (old && keepsType && holds(*old, content))
        return;
    change();
    if (!keepsType && m_types.set(part, contentType))
        putTypes();
    PackagePart written;
    written.name = part;
    written.content = content;
    insert(written);
}

/// Whether a part has that content already; then what is packed can stay.
bool Package::holds(const PackagePart& part, const QByteArray& content)
{
    if (!part.isPacked)
        return part.content == content;
    QByteArray packed;
    return part.packed.size == content.size() && part.packed.crc == checksum(content)
           && unpack(part.packed, packed).isEmpty() && packed == content;
}

/// Adds a part, or gives it the place of the one of its name.
void Package::insert(const PackagePart& part)
{
    const QString key = partKey(part.name);
    const int place = m_places.value(key, m_parts.size());
    if (place < m_parts.size()) {
        const QString name = m_parts.at(place).name;
        m_parts[place] = part;
        m_parts[place].name = name;
        return;
    }
    m_parts.append(part);
    m_places.insert(key, place);
}

void Package::remove(const QString& part)
{
    if (!has(part))
        return;
    change();
    erase(part);
    erase(relationsPartOf(part));
}

void Package::erase(const QString& part)
{
    const int place = m_places.value(partKey(part), -1);
    if (place < 0)
        return;
    if (m_types.remove(part))
        putTypes();
    m_parts.remove(place);
    m_places.clear();
    for (int i = 0; i < m_parts.size(); ++i)
        m_places.insert(partKey(m_parts.at(i).name), i);
}

Relations Package::relations(const QString& source) const
{
    const PackagePart* own = find(source);
    Relations relations(own ? own->name : source);
    const PackagePart* part = find(relationsPartOf(source));
    if (!part)
        return relations;
    // Those of a file have been found sound when it was loaded.
    QByteArray xml = part->content;
    if (part->isPacked)
        unpack(part->packed, xml);
    relations.read(xml);
    return relations;
}

void Package::setRelations(const QString& source, const Relations& relations)
{
    const QString part = relationsPartOf(source);
    if (relations.isEmpty()) {
        remove(part);
        return;
    }
    Relations own = relations;
    if (partKey(own.source()) != partKey(source))
        own.setSource(source);
    write(part, own.xml(),
          QStringLiteral("application/vnd.openxmlformats-package.relationships+xml"));
}

/// Comes before every change.
void Package::change()
{
    if (!m_isChanged)
        dropSignatures();
    m_isChanged = true;
}

void Package::dropSignatures()
{
    Relations ofPackage = relations(QStringLiteral("/"));
    bool isRelated = false;
    for (const QString& part : parts()) {
        if (!partKey(part).startsWith(QLatin1String("/_xmlsignatures/")))
            continue;
        for (const Relation& relation : ofPackage.leadingTo(part))
            isRelated = ofPackage.remove(relation.id);
        erase(part);
    }
    m_isChanged = true;
    if (isRelated)
        setRelations(QStringLiteral("/"), ofPackage);
}

/// The content types become a part anew when the package is saved.
void Package::putTypes()
{
    m_typesPart = PackagePart();
    m_typesPart.name = QStringLiteral("/[Content_Types].xml");
}

}  // namespace SmartTable::detail
