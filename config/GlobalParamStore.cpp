#include "config/GlobalParamStore.h"

#include "common/JsonMerge.h"
#include "config/GlobalParamBinding.h"
#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmSaveUserData.h"

#include <QDebug>

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

/// Whether @p text is a JSON object; why it does not parse is logged.
bool parseObject(const QString& text, json::Document& document)
{
    if (text.isEmpty())
        return false;
    try {
        document = json::parse(text);
    } catch (const json::Error& error) {
        log(error);
        return false;
    }
    return document.IsObject();
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
    json::Document document;
    if (!parseObject(text, document))
        return false;
    VelmGlobalParam loaded;
    try {
        json::read(document, loaded);
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
    json::Document document;
    const bool saved = saveForUser(changes, document) && (!shipped || saveAsDefault(document));
    if (saved) {
        m_reference = param;
        m_text = json::toText(document);
    }
    return saved;
}

/// @p document becomes the user's record with the changes.
bool GlobalParamStore::saveForUser(const json::Value& changes, json::Document& document)
{
    const QString stored = userText();
    const bool readable = parseObject(stored, document);
    if (readable && changes.ObjectEmpty())
        return true;
    if (!readable && !stored.isEmpty()
        && !m_userData()->setUserInput(key(), nameOfUser() + QStringLiteral(".unreadable"), stored))
        return false;
    if (!readable && !parseObject(m_text, document) && !parseObject(shippedText(), document))
        document.SetObject();
    json::overlay(document, changes, document.GetAllocator());
    return m_userData()->setUserInput(key(), nameOfUser(), toStorableText(document));
}

bool GlobalParamStore::saveAsDefault(const json::Document& userDocument)
{
    json::Document document;
    if (!parseObject(shippedText(), document))
        document.SetObject();
    json::overlay(document, userDocument, document.GetAllocator());
    return CVelmReadGlobaldefinesTable::Instance()->set_value(key(), toStorableText(document))
           == Velm::VelmOk;
}

}  // namespace velm::detail
