#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace ChipLoom {

/// What the builder remembers of a project in the file ".chiploom-manifest" of its root: which file came from which
/// state of the package. It makes a second run cheap, and tells what a user changed or added. A project without it, or
/// with one that cannot be understood, is treated as one that was never built: no file is lost by deleting it, but the
/// drivers that the user has listed beyond those in use leave the list.
class ProjectManifest
{
public:
    struct Entry
    {
        qint64 sourceSize = 0, sourceTime = 0;
        qint64 targetSize = 0, targetTime = 0; ///< when the builder left the file
    };

    explicit ProjectManifest(const QString &root);

    /// Whether the project has one.
    bool isKnown() const { return m_known; }
    QString package() const { return m_package; }
    void setPackage(const QString &package) { m_package = package; }
    /// Whether a former run did not finish the skeleton of a toolchain.
    bool isUnfinished(const QString &toolchain) const { return m_unfinished.contains(toolchain); }
    void setUnfinished(const QString &toolchain, bool unfinished);

    /// The drivers that the last run listed for a toolchain; none where no run has told.
    QStringList drivers(const QString &toolchain) const { return m_drivers.value(toolchain); }
    void setDrivers(const QString &toolchain, const QStringList &drivers) { m_drivers.insert(toolchain, drivers); }

    const Entry *entry(const QString &path) const;
    void setEntry(const QString &path, const Entry &entry) { m_entries.insert(path, entry); }
    void forget(const QString &path) { m_entries.remove(path); }

    /// The text of the file, in a fixed order.
    QByteArray content() const;
    /// What the file held when it was read, or was last told to hold.
    QByteArray savedContent() const { return m_saved; }
    void setSaved(const QByteArray &content) { m_saved = content; }

    static QString fileName() { return QStringLiteral(".chiploom-manifest"); }

private:
    QByteArray m_saved;
    bool m_known = false;
    QString m_package;
    QStringList m_unfinished;
    QMap<QString, QStringList> m_drivers; ///< by toolchain
    QMap<QString, Entry> m_entries;       ///< by path relative to the root
};

} // namespace ChipLoom
