#pragma once

#include <QList>
#include <QLockFile>
#include <QString>

#include <memory>

namespace ChipLoom {

class Design;

/// Keeps the unsaved changes of a design in a file of its own, so that a crash or a kill loses little. Each running
/// program has its own copy and holds a lock on it, which ends with the program however it ends.
class RecoveryCopy
{
public:
    /// `folder` is made when it is needed.
    RecoveryCopy(const Design &design, QString folder);
    /// An orderly end leaves no copy.
    ~RecoveryCopy();
    RecoveryCopy(const RecoveryCopy &) = delete;
    RecoveryCopy &operator=(const RecoveryCopy &) = delete;

    /// Writes the copy if something changed since it was written; without unsaved changes it goes. A folder that cannot
    /// be written to leaves the design without a copy.
    void update();
    /// Whether the copy holds the design as it is now.
    bool isCurrent() const;
    void remove();

private:
    const Design &m_design;
    QString m_folder;
    QString m_file;
    std::unique_ptr<QLockFile> m_lock;
    quint64 m_revision = 0; // of the design in the copy
};

/// The copy of a program that ended without removing it. As long as this lives no other program finds it.
class AbandonedCopy
{
public:
    /// Newest first.
    static std::vector<AbandonedCopy> all(const QString &folder);

    QString file() const { return m_file; }
    /// The file of the design; empty if it had none.
    QString origin() const { return m_origin; }
    void remove();

private:
    QString m_file;
    QString m_origin;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace ChipLoom
