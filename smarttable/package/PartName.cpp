#include "smarttable/package/PartName.h"

#include "archive/EntryName.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace SmartTable::detail {

namespace {

const QLatin1Char kSlash('/');

QString folderOf(const QString& part)
{
    return part.left(part.lastIndexOf(kSlash) + 1);
}

QString decoded(const QString& name)
{
    return name.contains(QLatin1Char('%')) ? QUrl::fromPercentEncoding(name.toUtf8()) : name;
}

}  // namespace

QString partKey(const QString& name)
{
    QString key = decoded(name);
    for (QChar& ch : key) {
        if (ch >= QLatin1Char('A') && ch <= QLatin1Char('Z'))
            ch = QChar(ch.unicode() + ('a' - 'A'));
    }
    return key;
}

QString partNameProblem(const QString& name)
{
    const QString plain = decoded(name);
    if (plain.contains(QLatin1Char('\\')))
        return QStringLiteral("has a \"\\\"");
    if (plain.count(kSlash) != name.count(kSlash))
        return QStringLiteral("has a \"/\" in disguise");
    if (!plain.startsWith(kSlash) || plain.endsWith(kSlash))
        return QStringLiteral("is none of a part");
    return velm::detail::entryNameProblem(plain.mid(1));
}

QString relationsPartOf(const QString& source)
{
    const QString folder = folderOf(source);
    return folder + QStringLiteral("_rels/") + source.mid(folder.size()) + QStringLiteral(".rels");
}

QString sourceOfRelationsPart(const QString& part)
{
    const QString ending = QStringLiteral(".rels");
    const QString folder = folderOf(part);
    if (!partKey(folder).endsWith(QStringLiteral("/_rels/")) || !partKey(part).endsWith(ending))
        return QString();
    const QString name = part.mid(folder.size());
    return folderOf(folder.chopped(1)) + name.chopped(ending.size());
}

QString resolvedTarget(const QString& source, const QString& target)
{
    const bool isAbsolute = target.startsWith(kSlash);
    if (target.left(target.indexOf(kSlash)).contains(QLatin1Char(':')))
        return QString();
    QStringList parts;
    for (const QString& part : (isAbsolute ? target : folderOf(source) + target).split(kSlash)) {
        if (part == QLatin1String("..") && parts.isEmpty())
            return QString();
        if (part == QLatin1String(".."))
            parts.removeLast();
        else if (!part.isEmpty() && part != QLatin1String("."))
            parts.append(part);
    }
    return kSlash + parts.join(kSlash);
}

QString relativeTarget(const QString& source, const QString& part)
{
    const QStringList from = folderOf(source).split(kSlash);  // ends with an empty one
    const QStringList to = part.split(kSlash);
    const int most = std::min(from.size(), to.size()) - 1;
    int same = 0;
    while (same < most && from.at(same) == to.at(same))
        ++same;
    const int up = from.size() - 1 - same;
    return QStringLiteral("../").repeated(up) + QStringList(to.mid(same)).join(kSlash);
}

}  // namespace SmartTable::detail
