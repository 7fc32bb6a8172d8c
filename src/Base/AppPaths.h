#pragma once

#include <QString>

namespace ChipLoom {

/// The two folders from which all other places follow. Everything that touches files takes one of these, so that
/// tests run side by side in folders of their own.
class AppPaths
{
public:
    /// `executableDir` is the folder of the executable, `homeDir` the user's home folder; both without a final slash.
    AppPaths(QString executableDir, QString homeDir);

    /// The paths of the running program. A `QCoreApplication` must exist.
    static AppPaths ofThisProcess();

    QString executableDir() const { return m_executableDir; }
    QString homeDir() const { return m_homeDir; }

    QString databaseDir() const; ///< `ZV32DB` beside the executable, unless `setDatabaseDir` named another
    void setDatabaseDir(const QString &dir);
    QString configFile() const;        ///< `config.xml`
    QString recoveryDir() const;       ///< copies of unsaved designs
    QString recentDesignsFile() const; ///< `resentlyProject.xml`
    QString defaultPackageDir() const; ///< the repository of manuals and firmware packages below the home folder

private:
    QString m_executableDir;
    QString m_homeDir;
    QString m_databaseDir;
};

} // namespace ChipLoom
