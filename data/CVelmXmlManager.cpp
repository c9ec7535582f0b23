#include "CVelmXmlManager.h"

#include "data/XmlEntities.h"

#include <QDomDocument>
#include <QFile>
#include <QXmlInputSource>

// Of Qt's parsers only the deprecated one builds what setContent() makes of a text.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace {

/// A text for Qt's parser that ends early when the parser has gone too deep. It calls itself
/// for whatever can be nested, elements and declarations alike, so what it needs is measured on
/// the stack itself.
class BoundedSource : public QXmlInputSource
{
public:
    explicit BoundedSource(const QString& text) { setData(text); }

    QChar next() override
    {
        m_ended = m_ended || m_start - stackPosition() > kDeepest;
        return m_ended ? QChar(EndOfDocument) : QXmlInputSource::next();
    }

private:
    static constexpr quintptr kDeepest = 256 * 1024;  // bytes; some hundred nested elements

    static quintptr stackPosition()
    {
        return reinterpret_cast<quintptr>(__builtin_frame_address(0));
    }

    quintptr m_start = stackPosition();  // the stack grows downwards
    bool m_ended = false;
};

}  // namespace

class CVelmXmlManagerPrivate
{
public:
    QDomElement root;  // of the last malformed text, hence null
    QDomDocument document;
};

CVelmXmlManager::CVelmXmlManager() : d(std::make_shared<CVelmXmlManagerPrivate>()) {}

CVelmXmlManager::CVelmXmlManager(const CVelmXmlManager& other) = default;

CVelmXmlManager& CVelmXmlManager::operator=(const CVelmXmlManager& other) = default;

CVelmXmlManager::~CVelmXmlManager() = default;

Velm::ErrorStatus CVelmXmlManager::initXmlFile(const QString& path, QString*, int*, int*)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return Velm::VelmXmlInitFailed;
    const QByteArray bytes = file.readAll();
    return setXmlData(QString::fromUtf8(bytes.constData()), nullptr, nullptr, nullptr);
}

Velm::ErrorStatus CVelmXmlManager::setXmlData(const QString& text, QString* errorMsg,
                                              int* errorLine, int* errorColumn)
{
    if (text.isEmpty() || text.startsWith(QChar::Null))
        return Velm::VelmNoData;
    BoundedSource source(velm::detail::withoutEntityBomb(text));
    if (d->document.setContent(&source, false, errorMsg, errorLine, errorColumn))
        return Velm::VelmInvalidValue;
    d->document = QDomDocument();  // without what was read before the error
    d->root = d->document.documentElement();
    return Velm::VelmOk;
}

bool CVelmXmlManager::hasElement(const QString&)
{
    return false;
}
