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
    /// `folder` is the family's: "ZV32F421".
    explicit FirmwarePackage(const QString &folder) : m_prefix(folder.toLower())
    {
        const QDir packages(QStringLiteral(CHIPLOOM_BIN_DIR "/firmware"));
        m_root = packages.filePath(packages.entryList({folder + "_Firmware_Library*"}).value(0));
        QSet<QString> folders;
        QDirIterator headers(m_root, {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (headers.hasNext()) {
            const QString path = QFileInfo(headers.next()).path();
            if (!path.contains("/middlewares/"))
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
