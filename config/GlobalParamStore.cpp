#include "config/GlobalParamStore.h"

#include "common/JsonMerge.h"
#include "config/ConfigJson.h"
#include "config/GlobalParamBinding.h"
#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmSaveUserData.h"

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

/// False if the shipped default cannot be read; an empty text where there is none.
bool readShipped(QString& text)
{
    CVelmDatabase database;
    if (openSystemConfig(database) != Velm::VelmOk)
        return false;
    text = database
               .readRecord(QStringLiteral("globaldefines"), QStringLiteral("VALUE"),
                           {{QStringLiteral("KEY"), key()}}, true)
               .toString();
    return database.getLastErrorText().isEmpty();
}

/// What cannot be read is logged. That memory has run out is thrown again: of a text that was not
/// looked at nothing is known, and none may take its place.
ProblemSink log()
{
    const ProblemSink log = logAs(QStringLiteral("global parameters"));
    return [log](const json::Error& error) {
        if (dynamic_cast<const json::OutOfMemory*>(&error))
            throw json::OutOfMemory();
        log(error);
    };
}

std::optional<json::Document> parse(const QString& text)
{
    return parseConfigObject(text, log());
}

/// The first of @p texts that is a JSON object, or an empty object.
json::Document firstObject(const QStringList& texts)
{
    for (const QString& text : texts) {
        std::optional<json::Document> document = parse(text);
        if (document)
            return std::move(*document);
    }
    return json::Document(rapidjson::kObjectType);
}

/// As it can stand in a statement: without apostrophes, which would end the literal, and halves of
/// surrogate pairs, which would end it too.
QString toStorableText(const json::Value& value)
{
    const QString text = json::toText(value);
    return QString::fromUtf8(text.toUtf8()).replace(QLatin1Char('\''), QLatin1String("\\u0027"));
}

/// Any text as it can stand in a literal of a statement.
QString escaped(QString text)
{
    return text.replace(QLatin1Char('\''), QLatin1String("''"));
}

/// What @p work answers; false where memory runs out.
template<class Work>
bool orFalse(const Work& work)
{
    try {
        return json::guarded(work);
    } catch (const json::OutOfMemory&) {
        return false;
    }
}

}  // namespace

GlobalParamStore::GlobalParamStore(CVelmSaveUserData* (*userData)()) : m_userData(userData) {}

bool GlobalParamStore::readUser(QString& text) const
{
    return m_userData()->readUserInput(key(), nameOfUser(), text);
}

bool GlobalParamStore::load(VelmGlobalParam& param)
{
    return orFalse([&] { return loadText(param); });
}

bool GlobalParamStore::loadText(VelmGlobalParam& param)
{
    QString text;
    readUser(text);
    const bool isUsers = !text.isEmpty();
    if (!isUsers)
        readShipped(text);
    const std::optional<json::Document> document = parse(text);
    m_isUsers = isUsers;
    if (!document)
        return false;
    VelmGlobalParam loaded;
    readConfigObject(*document, loaded, log());
    param = loaded;
    m_reference = loaded;
    m_text = text;
    return true;
}

bool GlobalParamStore::save(const VelmGlobalParam& param, bool shipped)
{
    return orFalse([&] { return saveChanges(param, shipped); });
}

bool GlobalParamStore::saveChanges(const VelmGlobalParam& param, bool shipped)
{
    json::Document current = json::toDocument(param);
    const json::Document reference = json::toDocument(m_reference);
    const json::Value changes = json::difference(current, reference, current.GetAllocator());
    if (changes.ObjectEmpty() && (m_text.isEmpty() || (m_isUsers && !shipped)))
        return true;
    const QString text = saveForUser(changes);
    if (text.isEmpty() || (shipped && !saveAsDefault(text)))
        return false;
    m_reference = param;
    m_text = text;
    m_isUsers = true;
    return true;
}

QString GlobalParamStore::saveForUser(const json::Value& changes)
{
    QString stored;
    if (!readUser(stored))
        return QString();
    const bool readable = parse(stored).has_value();
    if (readable && changes.ObjectEmpty())
        return stored;
    const QString unreadable = nameOfUser() + QStringLiteral(".unreadable");
    if (!readable && !stored.isEmpty()
        && !m_userData()->setUserInput(key(), unreadable, escaped(stored)))
        return QString();
    QString shipped;
    readShipped(shipped);
    json::Document document = firstObject({stored, m_text, shipped});
    json::overlay(document, changes, document.GetAllocator());
    const QString text = toStorableText(document);
    return m_userData()->setUserInput(key(), nameOfUser(), text) ? text : QString();
}

bool GlobalParamStore::saveAsDefault(const QString& userText)
{
    QString shipped;
    if (!readShipped(shipped))
        return false;
    json::Document document = firstObject({shipped});
    json::overlay(document, firstObject({userText}), document.GetAllocator());
    return CVelmReadGlobaldefinesTable::Instance()->set_value(key(), toStorableText(document))
           == Velm::VelmOk;
}

}  // namespace velm::detail
