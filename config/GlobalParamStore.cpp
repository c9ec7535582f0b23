#include "config/GlobalParamStore.h"

#include "common/JsonMerge.h"
#include "config/GlobalParamBinding.h"
#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmSaveUserData.h"

#include <QDebug>

#include <optional>
#include <utility>

namespace velm::detail {

namespace {

QString key()
{
    return QStringLiteral("GlobalParam");
}

QString nameOfUser()
{
    return QStringLiteral("VelmGlobalParam");
}

QString shippedText()
{
    CVelmDatabase database;
    if (openSystemConfig(database) != Velm::VelmOk)
        return QString();
    return database
        .readRecord(QStringLiteral("globaldefines"), QStringLiteral("VALUE"),
                    {{QStringLiteral("KEY"), key()}}, true)
        .toString();
}

void log(const json::Error& error)
{
    for (const QString& problem : error.messages())
        qWarning().noquote() << "global parameters:" << problem;
}

/// The JSON object that @p text holds, if it is one; why it does not parse is logged.
std::optional<json::Document> parseObject(const QString& text)
{
    if (text.isEmpty())
        return std::nullopt;
    try {
        json::Document document = json::parse(text);
        if (document.IsObject())
            return document;
    } catch (const json::Error& error) {
        log(error);
    }
    return std::nullopt;
}

/// The first of @p texts that is a JSON object, or an empty object.
json::Document firstObject(const QStringList& texts)
{
    for (const QString& text : texts) {
        std::optional<json::Document> document = parseObject(text);
        if (document)
            return std::move(*document);
    }
    return json::Document(rapidjson::kObjectType);
}

/// An apostrophe would end the literal of the statement that stores the text.
QString toStorableText(const json::Value& value)
{
    return json::toText(value).replace(QLatin1Char('\''), QLatin1String("\\u0027"));
}

}  // namespace

GlobalParamStore::GlobalParamStore(CVelmSaveUserData* (*userData)()) : m_userData(userData) {}

QString GlobalParamStore::userText() const
{
    return m_userData()->userInput(key(), nameOfUser());
}

bool GlobalParamStore::load(VelmGlobalParam& param)
{
    QString text = userText();
    if (text.isEmpty())
        text = shippedText();
    const std::optional<json::Document> document = parseObject(text);
    if (!document)
        return false;
    VelmGlobalParam loaded;
    try {
        json::read(*document, loaded);
    } catch (const json::Error& error) {
        log(error);
    }
    param = loaded;
    m_reference = loaded;
    m_text = text;
    return true;
}

bool GlobalParamStore::save(const VelmGlobalParam& param, bool shipped)
{
    json::Document current = json::toDocument(param);
    const json::Document reference = json::toDocument(m_reference);
    const json::Value changes = json::difference(current, reference, current.GetAllocator());
    if (m_text.isEmpty() && changes.ObjectEmpty())
        return true;
    const QString text = saveForUser(changes);
    if (text.isEmpty() || (shipped && !saveAsDefault(text)))
        return false;
    m_reference = param;
    m_text = text;
    return true;
}

QString GlobalParamStore::saveForUser(const json::Value& changes)
{
    QString stored = userText();
    const bool readable = parseObject(stored).has_value();
    if (readable && changes.ObjectEmpty())
        return stored;
    if (!readable && !stored.isEmpty()
        && !m_userData()->setUserInput(key(), nameOfUser() + QStringLiteral(".unreadable"), stored))
        return QString();
    json::Document document = firstObject({stored, m_text, shippedText()});
    json::overlay(document, changes, document.GetAllocator());
    const QString text = toStorableText(document);
    return m_userData()->setUserInput(key(), nameOfUser(), text) ? text : QString();
}

bool GlobalParamStore::saveAsDefault(const QString& userText)
{
    json::Document document = firstObject({shippedText()});
    json::overlay(document, firstObject({userText}), document.GetAllocator());
    return CVelmReadGlobaldefinesTable::Instance()->set_value(key(), toStorableText(document))
           == Velm::VelmOk;
}

}  // namespace velm::detail
