#include "support/TemporaryRoot.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
constexpr char kRootVariable[] = "VELM_ROOT";
}

TemporaryRoot::TemporaryRoot()
    : m_root(QFileInfo(m_folder.path()).canonicalFilePath() + QStringLiteral("/测绘 root")),
      m_previousRoot(qgetenv(kRootVariable))
{
    EXPECT_TRUE(QDir().mkpath(path(QStringLiteral("config"))));
    EXPECT_TRUE(qputenv(kRootVariable, QFile::encodeName(m_root)));
}

TemporaryRoot::~TemporaryRoot()
{
    if (m_previousRoot.isEmpty())
        qunsetenv(kRootVariable);
    else
        qputenv(kRootVariable, m_previousRoot);
}

void TemporaryRoot::writeFile(const QString& relative, const QByteArray& content) const
{
    const QString target = path(relative);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(target).path()));
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << target.toStdString();
    ASSERT_EQ(file.write(content), content.size());
}
