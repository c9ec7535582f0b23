#include "common/json/JsonBinding.h"

namespace velm::detail::json {

bool Reader::read(const Value& json, bool& value)
{
    if (json.IsBool())
        value = json.GetBool();
    else if (json.IsInt64())
        value = json.GetInt64() != 0;
    else if (json.IsUint64())
        value = true;  // beyond what a signed integer holds
    else
        return fail("not bool or integer", "true or false");
    return true;
}

bool Reader::read(const Value& json, int& value)
{
    if (!json.IsInt())
        return fail("not integer", "a whole number");
    value = json.GetInt();
    return true;
}

bool Reader::read(const Value& json, double& value)
{
    if (!json.IsNumber())
        return fail("not number", "a number");
    value = json.GetDouble();
    return true;
}

bool Reader::read(const Value& json, QString& value)
{
    if (!json.IsString())
        return fail("not string", "a text");
    value = toQString(json);
    return true;
}

namespace {

QString joined(const QStringList& steps)
{
    QString path;
    for (const QString& step : steps) {
        if (!path.isEmpty() && !step.startsWith(QLatin1Char('[')))
            path += QLatin1Char('.');
        path += step;
    }
    return path;
}

}  // namespace

QString Reader::pathOf(const QString& key) const
{
    return joined(m_keys + QStringList{key});
}

bool Reader::fail(const char* problem, const char* wanted)
{
    if (m_problems.size() == kMostProblems)
        m_problems.append(QStringLiteral("more than can be told"));
    if (m_problems.size() > kMostProblems)
        return false;
    m_problems.append(QLatin1String(problem) + QLatin1String(". (path:") + joined(m_path));
    m_mistyped.append({joined(m_keys), QLatin1String(wanted)});
    return false;
}

}  // namespace velm::detail::json
