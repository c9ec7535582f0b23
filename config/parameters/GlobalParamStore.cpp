#include "config/parameters/GlobalParamStore.h"

#include "common/host/HostCalls.h"
#include "common/json/JsonMerge.h"
#include "config/documents/ConfigJson.h"
#include "config/documents/DocumentNames.h"
#include "config/parameters/GlobalParamBinding.h"
#include "CVelmSystemGlobal.h"
#include "data/sql/WriteTransaction.h"
#include "data/values/GlobalDefine.h"
#include "data/values/UserStore.h"

#include <QFileInfo>

#include <optional>
#include <utility>

namespace velm::detail {

namespace {

QString nameOfUser()
{
    return QStringLiteral("VelmGlobalParam");
}

/// False if the shipped default cannot be read; an empty text where there is none, or no
/// configuration at all.
bool readShipped(QString& text)
{
    text.clear();
    if (!QFileInfo::exists(CVelmSystemGlobal::Instance()->getSystemConfigDb()))
        return true;
    const Velm::ErrorStatus status = readGlobalDefine(documents::globalParameters(), text);
    return status == Velm::VelmOk || status == Velm::VelmTableNotExist;
}

/// Throws again that memory has run out: of a text that was not looked at nothing is known, and
/// none may take its place. Other problems go to @p sink.
ProblemSink unlessOutOfMemory(const ProblemSink& sink)
{
    return [sink](const json::Error& error) {
        if (dynamic_cast<const json::OutOfMemory*>(&error))
            throw json::OutOfMemory();
        sink(error);
    };
}

ProblemSink log()
{
    return unlessOutOfMemory(logAs(QStringLiteral("global parameters")));
}

bool isObject(const QString& text)
{
    return parseConfigObject(text, unlessOutOfMemory([](const json::Error&) {})).has_value();
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

/// The first of @p candidates that is an object, with the changes and, if there is a record, with
/// what that has beside them.
QString mergedText(const QStringList& candidates, const json::Value& changes,
                   const json::Value& record)
{
    json::Document document = firstObject(candidates);
    json::overlay(document, changes, document.GetAllocator());
    if (record.IsObject())
        json::complete(document, record, document.GetAllocator());
    return toStorableText(document);
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

GlobalParamStore::GlobalParamStore(UserStore& (*userStore)()) : m_userStore(userStore) {}

bool GlobalParamStore::readUser(QString& text) const
{
    UserStore& users = m_userStore();
    text.clear();
    return users.read(UserStore::inputs(), documents::globalParameters(), nameOfUser(), text)
           || (!users.isReady() && !QFileInfo::exists(users.file()));
}

bool GlobalParamStore::isUsersOpen() const
{
    return m_userStore().database().isOpen();
}

bool GlobalParamStore::load(VelmGlobalParam& param)
{
    return orFalse([&] { return loadText(param); });
}

bool GlobalParamStore::loadText(VelmGlobalParam& param)
{
    QString text;
    if (!readUser(text))
        return false;
    const bool isUsers = !text.isEmpty();
    if (!isUsers && !readShipped(text))
        return false;
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

bool GlobalParamStore::save(const VelmGlobalParam& param, bool shipped, Extent extent)
{
    return orFalse([&] { return saveText(param, shipped, extent); });
}

bool GlobalParamStore::saveText(const VelmGlobalParam& param, bool shipped, Extent extent)
{
    json::Document current = json::toDocument(param);
    const json::Document reference = json::toDocument(m_reference);
    const json::Value changes = json::difference(current, reference, current.GetAllocator());
    const bool isKnown = m_text.isEmpty() || (m_isUsers && !shipped);
    if (extent == Extent::Changes && changes.ObjectEmpty() && (isKnown || !isUsersOpen()))
        return true;
    QString text;
    const json::Value none;
    if (!saveForUser(changes, extent == Extent::Record ? current : none, text)
        || (shipped && !saveAsDefault(text)))
        return false;
    m_reference = param;
    m_text = text;
    m_isUsers = true;
    return true;
}

bool GlobalParamStore::saveForUser(const json::Value& changes, const json::Value& record,
                                   QString& text)
{
    const HostCallsLater untilCommitted;
    UserStore& users = m_userStore();
    std::optional<QString> shipped;
    for (;;) {
        if (!users.isReady())
            return false;
        WriteTransaction transaction(users.database());
        QString stored;
        if (transaction.error().isValid()
            || !users.read(UserStore::inputs(), documents::globalParameters(), nameOfUser(),
                           stored))
            return false;
        const bool hasCopy = isObject(stored);
        if (hasCopy || shipped) {
            text = hasCopy && changes.ObjectEmpty() && !record.IsObject()
                       ? stored
                       : mergedText({stored, m_text, shipped.value_or(QString())}, changes, record);
            return text == stored
                   || (store(stored, hasCopy, text) && !transaction.commit().isValid());
        }
        // Not while the user's store is locked: the other database may keep one waiting.
        transaction.rollBack();
        shipped.emplace();
        if (!readShipped(*shipped))
            return false;
    }
}

/// Puts @p text in place of what is stored, and keeps that if it is no object.
bool GlobalParamStore::store(const QString& stored, bool hasCopy, const QString& text)
{
    UserStore& users = m_userStore();
    const QString unreadable = nameOfUser() + QStringLiteral(".unreadable");
    const bool isKept = hasCopy || stored.isEmpty()
                        || users.put(UserStore::inputs(), documents::globalParameters(), unreadable,
                                     escaped(stored));
    return isKept
           && users.put(UserStore::inputs(), documents::globalParameters(), nameOfUser(), text);
}

bool GlobalParamStore::saveAsDefault(const QString& userText)
{
    const Velm::ErrorStatus status =
        updateGlobalDefine(documents::globalParameters(), [&](const QString& shipped) {
            return mergedText({shipped}, firstObject({userText}), json::Value());
        });
    return status == Velm::VelmOk;
}

}  // namespace velm::detail
