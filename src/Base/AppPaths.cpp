#include "Base/AppPaths.h"

#include <QCoreApplication>
#include <QDir>

#include <utility>

namespace ChipLoom {

AppPaths::AppPaths(QString executableDir, QString homeDir)
    : m_executableDir(std::move(executableDir)), m_homeDir(std::move(homeDir)),
      m_databaseDir(m_executableDir + QLatin1String("/ZV32DB"))
{
}

AppPaths AppPaths::ofThisProcess()
{
    return {QCoreApplication::applicationDirPath(), QDir::homePath()};
}

QString AppPaths::databaseDir() const
{
    return m_databaseDir;
}

void AppPaths::setDatabaseDir(const QString &dir)
{
    m_databaseDir = QDir(dir).absolutePath();
}

QString AppPaths::configFile() const
{
    return m_executableDir + QLatin1String("/config.xml");
}

QString AppPaths::recoveryDir() const
{
    return m_executableDir + QLatin1String("/recovery");
}

QString AppPaths::recentDesignsFile() const
{
    return m_executableDir + QLatin1String("/resentlyProject.xml");
}

QString AppPaths::defaultPackageDir() const
{
    return m_homeDir + QLatin1String("/ChipLoom/Repository/Package");
}

} // namespace ChipLoom
