#pragma once

#include "Project/GenerateProjectThread.h"
#include "Project/ProjectFiles.h"
#include "Project/ToolchainEditor.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace ChipLoom {

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

inline void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.write(content);
}

/// Renames the template as the real ones do, and fails on demand.
class RecordingEditor : public ToolchainEditor
{
public:
    bool ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const override
    {
        const QString path = order.projectFullPath + QLatin1Char('/') + order.startupFile();
        return !linkerFails && (startup.isEmpty() || writeProjectBytes(order, path, startup, account));
    }
    bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const override
    {
        seen = order;
        firsts.append(first);
        if (projectFails) {
            account.detail = QStringLiteral("no project");
            return false;
        }
        const QString project = order.toolchainDir() + QLatin1Char('/') + order.projectName;
        return !first || QFile::rename(order.toolchainDir() + QLatin1String("/template"), project);
    }

    bool linkerFails = false;
    bool projectFails = false;
    QByteArray startup; ///< what the start-up file becomes with its sizes
    mutable QList<bool> firsts;
    mutable ProjectOrder seen;
};

/// A tiny package of the series ZV32F421 and a project that is made of it.
class PackageFixture
{
public:
    explicit PackageFixture(const QString &series = QStringLiteral("ZV32F421"))
    {
        order.series = series;
        order.device = series + QLatin1String("C8T7");
        order.ideType = IDE_MDK_V5;
        order.projectName = QStringLiteral("blink");
        order.projectFullPath = m_dir.path() + QLatin1String("/out/blink");
        order.packagePath = package(QStringLiteral("V2.0.0"));
        order.flashSizeFlag = QLatin1Char('8');
        order.validIPFileNameList = QStringList{order.filePrefix() + QLatin1String("_crm")};
    }

    QString path() const { return m_dir.path(); }
    QString in(const QString &file) const { return order.projectFullPath + QLatin1Char('/') + file; }
    QString inPackage(const QString &file) const { return order.packagePath + QLatin1Char('/') + file; }

    /// A package whose files tell its version.
    QString package(const QString &version) const
    {
        const QString root = m_dir.path() + QLatin1String("/package_") + version;
        const QString prefix = order.filePrefix();
        for (const QString &file :
             {order.startupFile(), order.coreIncludeDir() + QLatin1String("/core.h"),
              order.deviceIncludeDir() + QLatin1String("/device.h"),
              QString(QLatin1String("libraries/drivers/inc/") + prefix + QLatin1String("_crm.h")),
              QString(QLatin1String("libraries/drivers/src/") + prefix + QLatin1String("_crm.c")),
              QStringLiteral("libraries/cmsis/dsp/dsp.c"), QStringLiteral("middlewares/freertos/kernel.c"),
              QStringLiteral("middlewares/3rd_party/lwip_v2/port/ethernetif.c"),
              QString(QLatin1String("project/zv_start_") + order.series.mid(4).toLower() +
                      QLatin1String("/templates/MDK_V5/template"))})
            writeFile(root + QLatin1Char('/') + file, version.toUtf8());
        return root;
    }

    BuilderAccount build()
    {
        GenerateProjectThread builder(order);
        builder.setEditor(&editor);
        return builder.build();
    }

    /// Path, size and time of every file of the project.
    QStringList state() const
    {
        QStringList files;
        QDirIterator all(order.projectFullPath, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            all.next();
            files.append(QStringLiteral("%1 %2 %3")
                             .arg(all.filePath())
                             .arg(all.fileInfo().size())
                             .arg(all.fileInfo().lastModified().toMSecsSinceEpoch()));
        }
        files.sort();
        return files;
    }

    ProjectOrder order;
    RecordingEditor editor;

private:
    QTemporaryDir m_dir;
};

} // namespace ChipLoom
