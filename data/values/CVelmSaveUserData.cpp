#include "CVelmSaveUserData.h"

#include "common/host/Singleton.h"
#include "common/platform/Platform.h"
#include "data/values/UserStore.h"

#include <QSqlDatabase>

using namespace velm::detail;

namespace {

Singleton<CVelmSaveUserData>& holder()
{
    // Brings Qt's list of connections into being first, so that it outlives the store.
    static const bool listed = QSqlDatabase::contains();
    static Singleton<CVelmSaveUserData> instance;
    Q_UNUSED(listed)
    return instance;
}

}  // namespace

CVelmSaveUserData* CVelmSaveUserData::Instance()
{
    return holder().get([] { return new CVelmSaveUserData(fileName()); },
                        [](CVelmSaveUserData& data) { data.m_store->isReady(); });
}

void CVelmSaveUserData::prepareInstance()
{
    holder();
}

QString CVelmSaveUserData::fileName()
{
    QString path = platform::modulePath(nullptr);
    if (path.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive))
        path.chop(4);
    return path + QStringLiteral(".dat");
}

CVelmSaveUserData::CVelmSaveUserData(const QString& file)
    : m_store(std::make_unique<UserStore>(file))
{}

CVelmSaveUserData::~CVelmSaveUserData() = default;

QString CVelmSaveUserData::userInput(const QString& type, const QString& name)
{
    return m_store->value(UserStore::inputs(), type, name);
}

QString CVelmSaveUserData::pathRecord(const QString& type, const QString& name)
{
    return m_store->value(UserStore::paths(), type, name);
}

bool CVelmSaveUserData::setUserInput(const QString& type, const QString& name, const QString& value)
{
    return m_store->setValue(UserStore::inputs(), type, name, value);
}

bool CVelmSaveUserData::setPathRecord(const QString& type, const QString& name,
                                      const QString& value)
{
    return m_store->setValue(UserStore::paths(), type, name, value);
}
