#pragma once

#include <QFile>
#include <QString>

#include <csignal>
#include <ctime>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ChipLoom {

/// While it lives the process is nobody in particular: root reads and writes everything, whatever a file's mode says,
/// and the tests often run as root. Without effect for whoever is not root.
class AsOrdinaryUser
{
public:
    /// `folder` becomes the property of that user, who can then work there.
    explicit AsOrdinaryUser(const QString &folder) : m_active(::geteuid() == 0)
    {
        if (!m_active)
            return;
        const bool done = ::chown(QFile::encodeName(folder).constData(), Nobody, Nobody) == 0 &&
                          ::setresgid(Nobody, Nobody, 0) == 0 && ::setresuid(Nobody, Nobody, 0) == 0;
        if (!done)
            qFatal("cannot become an ordinary user");
    }
    ~AsOrdinaryUser()
    {
        if (m_active && (::setresuid(0, 0, 0) != 0 || ::setresgid(0, 0, 0) != 0))
            qFatal("cannot become root again");
    }
    AsOrdinaryUser(const AsOrdinaryUser &) = delete;
    AsOrdinaryUser &operator=(const AsOrdinaryUser &) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    bool m_active;
};

/// Makes a file, folder or link look as if nothing had changed in it for a day.
inline void makeOld(const QString &path)
{
    const timespec dayAgo{::time(nullptr) - 24 * 3600, 0};
    const timespec times[]{dayAgo, dayAgo};
    if (::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, AT_SYMLINK_NOFOLLOW) != 0)
        qFatal("cannot set the time of %s", qPrintable(path));
}

/// While it lives no file grows past `bytes`: what a full disk does to a writer.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limited{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

/// The number of a process that is over.
inline pid_t endedProcess()
{
    const pid_t process = ::fork();
    if (process == 0)
        ::_exit(0);
    ::waitpid(process, nullptr, 0);
    return process;
}

} // namespace ChipLoom
