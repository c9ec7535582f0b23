#include "CVelmXmlManager.h"

#include "data/xml/CVelmXmlManagerPrivate.h"
#include "data/xml/XmlBounds.h"

#include <QFile>

#include <new>

using namespace velm::detail;

namespace {

void tell(const xml::Excess& excess, QString* message, int* line, int* column)
{
    if (message)
        *message = excess.message;
    if (line)
        *line = excess.line;
    if (column)
        *column = excess.column;
}

/// The whole file, or as much of it as makes more characters than a text may have.
QString readText(QFile& file)
{
    constexpr qint64 kMostBytes = 3 * (qint64{xml::kMostCharacters} + 1);  // to a character at most
    const QByteArray bytes = file.read(kMostBytes);
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

}  // namespace

CVelmXmlManager::CVelmXmlManager() : d(std::make_shared<CVelmXmlManagerPrivate>()) {}

CVelmXmlManager::CVelmXmlManager(const CVelmXmlManager& other) = default;

CVelmXmlManager& CVelmXmlManager::operator=(const CVelmXmlManager& other) = default;

CVelmXmlManager::~CVelmXmlManager() = default;

Velm::ErrorStatus CVelmXmlManager::initXmlFile(const QString& path, QString*, int*, int*)
{
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            return Velm::VelmXmlInitFailed;
        return setXmlData(readText(file), nullptr, nullptr, nullptr);
    } catch (const std::bad_alloc&) {
        return Velm::VelmXmlInitFailed;
    }
}

Velm::ErrorStatus CVelmXmlManager::setXmlData(const QString& text, QString* errorMsg,
                                              int* errorLine, int* errorColumn)
{
    if (text.isEmpty())
        return Velm::VelmNoData;
    try {
        QDomDocument document;
        const std::optional<xml::Excess> excess = xml::findExcess(text);
        if (excess)
            tell(*excess, errorMsg, errorLine, errorColumn);
        else if (document.setContent(text, errorMsg, errorLine, errorColumn)) {
            d->document = document;
            return Velm::VelmInvalidValue;
        }
        d->document = QDomDocument();  // without what was read before the error
        return Velm::VelmOk;
    } catch (const std::bad_alloc&) {
        return Velm::VelmXmlInitFailed;
    }
}

bool CVelmXmlManager::hasElement(const QString&)
{
    return false;
}
