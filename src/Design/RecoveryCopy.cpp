#include "Design/RecoveryCopy.h"

#include "Base/AtomicFile.h"
#include "Design/Design.h"
#include "Design/DesignFile.h"

#include <QDir>
#include <QLoggingCategory>
#include <QUuid>

#include <utility>

namespace ChipLoom {

namespace {

Q_LOGGING_CATEGORY(recoveryLog, "chiploom.recovery")

/// The lock beside a copy. It is stale when the process that took it is gone, however old or young it is.
std::unique_ptr<QLockFile> lockOf(const QString &copy)
{
    auto lock = std::make_unique<QLockFile>(copy + QLatin1String(".lock"));
    lock->setStaleLockTime(0);
    return lock;
}

} // namespace

RecoveryCopy::RecoveryCopy(const Design &design, QString folder) : m_design(design), m_folder(std::move(folder)) {}

RecoveryCopy::~RecoveryCopy()
{
    remove();
}

void RecoveryCopy::update()
{
    if (!m_design.isOpen() || !m_design.isModified()) {
        remove();
        return;
    }
    if (m_lock && m_revision == m_design.revision())
        return;
    if (!m_lock) {
        const QString file = m_folder + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::Id128) + DesignSuffix;
        std::unique_ptr<QLockFile> lock = lockOf(file);
        if (!QDir().mkpath(m_folder) || !lock->tryLock(0))
            return;
        m_file = file;
        m_lock = std::move(lock);
    }
    const ReplaceResult result = replaceFile(m_file, m_design.file().contentFrom(m_design.file().path()));
    if (!result.ok()) {
        qCWarning(recoveryLog, "no recovery copy: %s", qUtf8Printable(result.error));
        return;
    }
    m_revision = m_design.revision();
}

void RecoveryCopy::remove()
{
    if (!m_lock)
        return;
    QFile::remove(m_file);
    m_lock.reset();
}

std::vector<AbandonedCopy> AbandonedCopy::all(const QString &folder)
{
    std::vector<AbandonedCopy> copies;
    const QDir dir(folder);
    for (const QString &name : dir.entryList({QLatin1Char('*') + DesignSuffix}, QDir::Files, QDir::Time)) {
        AbandonedCopy copy;
        copy.m_file = dir.filePath(name);
        copy.m_lock = lockOf(copy.m_file);
        if (!copy.m_lock->tryLock(0))
            continue;
        copy.m_origin = DesignFile::originOf(copy.m_file);
        copies.push_back(std::move(copy));
    }
    return copies;
}

void AbandonedCopy::remove()
{
    QFile::remove(m_file);
    m_lock.reset();
}

bool RecoveryCopy::isCurrent() const
{
    return m_lock && m_revision == m_design.revision();
}

} // namespace ChipLoom
