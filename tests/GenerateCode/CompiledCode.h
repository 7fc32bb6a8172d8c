#pragma once

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace ChipLoom::Test {

/// The sample firmware package of a family, and compilers that find its headers.
class FirmwarePackage
{
public:
    /// `folder` is the family's: "ZV32F421". `withoutConfiguration` leaves the choice of modules to a project.
    explicit FirmwarePackage(const QString &folder, bool withoutConfiguration = false) : m_prefix(folder.toLower())
    {
        const QDir packages(QStringLiteral(CHIPLOOM_BIN_DIR "/firmware"));
        m_root = packages.filePath(packages.entryList({folder + "_Firmware_Library*"}).value(0));
        QSet<QString> folders;
        QDirIterator headers(m_root, {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (headers.hasNext()) {
            const QString path = QFileInfo(headers.next()).path();
            if (!path.contains("/middlewares/") && !(withoutConfiguration && path.contains("/templates/")))
                folders.insert("-I" + path);
        }
        m_includes = folders.values();
        m_includes.sort();
    }

    QString deviceHeader() const { return m_prefix + ".h"; }
    QString driver(const QString &module) const
    {
        return m_root + "/libraries/drivers/src/" + m_prefix + '_' + module + ".c";
    }

    /// What the compiler of the chip says of a source; empty if it takes it without a warning.
    QString complaints(const QString &source, const QStringList &includes = {}) const
    {
        return output("arm-none-eabi-gcc", QStringList{"-mcpu=cortex-m4", "-mthumb", "-std=gnu11", "-Wall", "-Wextra",
                                                       "-Werror", "-DUSE_STDPERIPH_DRIVER"} +
                                               includes + m_includes + QStringList{"-c", source, "-o", "/dev/null"});
    }

    /// Builds a program of the host; its faults, as above.
    QString buildOnHost(const QStringList &sources, const QString &program) const
    {
        return output("gcc", QStringList{"-std=gnu11", "-Wall", "-Wextra", "-Werror", "-Wno-int-to-pointer-cast", "-O1",
                                         "-DUSE_STDPERIPH_DRIVER"} +
                                 m_includes + sources + QStringList{"-o", program});
    }

    static QString output(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        const bool ended = process.waitForFinished(120000);
        const QString text = QString::fromLocal8Bit(process.readAll());
        return ended && process.exitCode() == 0 ? text : program + " failed\n" + text.left(4000);
    }

private:
    QString m_prefix;
    QString m_root;
    QStringList m_includes;
};

inline bool writeFile(const QString &path, const QString &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content.toLatin1()) == content.size();
}

} // namespace ChipLoom::Test
