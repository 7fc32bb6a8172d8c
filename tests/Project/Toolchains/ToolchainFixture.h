#pragma once

#include "Model/SeriesHelpers.h"
#include "Packages/FirmwarePackages.h"
#include "Project/GenerateProjectThread.h"
#include "Project/ProjectManifest.h"
#include "Project/ToolchainEditor.h"
#include "QtPrinters.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ChipLoom::Test {

inline constexpr IDE_TYPE AllToolchains[] = {IDE_ZV32_IDE, IDE_ECLIPSE_GCC, IDE_IAR_V7_4, IDE_IAR_V8_2, IDE_IAR_V9_3,
                                             IDE_MDK_V4,   IDE_MDK_V5,      IDE_MAKEFILE, IDE_CMAKE};

/// A project in a folder of its own, made of a sample package and of lists as the generators give them.
class ToolchainFixture : public ::testing::Test
{
protected:
    ToolchainFixture() { EXPECT_TRUE(folder.isValid()); }

    void begin(IDE_TYPE type, const QString &device = "ZV32F421C8T7", quint32 flashKB = 64, quint32 sramKB = 16)
    {
        order.ideType = type;
        setDevice(device, flashKB, sramKB);
        order.projectName = "Test";
        order.projectFullPath = folder.path() + "/Test project";
        order.projectSources =
            QStringList{order.filePrefix() + "_lm_config.c", "main.c", order.filePrefix() + "_int.c"};
        for (const char *name : {"crm", "gpio", "misc", "usart"})
            order.validIPFileNameList.append(order.filePrefix() + '_' + name);
        order.deleteProjectFileList = QStringList{"lm_usart.c", "lm_usart.h"};
    }
    void setDevice(const QString &device, quint32 flashKB, quint32 sramKB)
    {
        order.device = device;
        order.series = device.left(device.startsWith("ZV32F403A") ? 9 : 8);
        order.flashSize = flashKB * 1024;
        order.sramSize = sramKB * 1024;
        order.flashSizeFlag = GetFlashSizeFlagFromSize(int(flashKB));
        order.packagePath = firmwarePackageIn(QStringLiteral(CHIPLOOM_BIN_DIR "/firmware"), order.series).path;
        ASSERT_FALSE(order.packagePath.isEmpty()) << order.series.toStdString();
    }
    BuilderAccount build()
    {
        if (!order.validMidNameList.isEmpty()) {
            // The sample packages bring no middlewares along, so only the files of the toolchain are tried with them.
            BuilderAccount account;
            ProjectManifest manifest(order.projectFullPath);
            order.formerDrivers = manifest.drivers(getIDEPathName(order.ideType));
            manifest.setDrivers(getIDEPathName(order.ideType), order.drivers());
            put(ProjectManifest::fileName(), manifest.content());
            const ToolchainEditor *editor = ToolchainEditor::of(order.ideType);
            const bool done =
                editor->ConfigLinkerSettings(order, account) && editor->ConfigProjectFile(order, false, account);
            account.code = done ? 0 : 3;
            return account;
        }
        GenerateProjectThread builder(order);
        return builder.build();
    }
    void buildWell()
    {
        const BuilderAccount account = build();
        ASSERT_EQ(account.code, 0) << account.detail.toStdString();
        EXPECT_EQ(account.notes, QStringList());
    }
    void useFreeRtos()
    {
        order.validMidNameList = QStringList{"FREERTOS", "CMSIS_DSP"};
        order.validMidProjectFileList = {{"middlewares/freertos",
                                          {{"tasks.c", "../../middlewares/freertos/source/tasks.c"},
                                           {"queue.c", "..\\..\\middlewares\\freertos\\source\\queue.c"}}},
                                         {"user", {{"freertos_app.c", "../src/freertos_app.c"}}}};
        order.validProjectIncludePathList = QStringList{"../../middlewares/freertos/source/include", "../inc/rtos"};
        order.deleteProjectIncludePathList.clear();
    }
    void leaveFreeRtos()
    {
        order.validMidNameList.clear();
        order.validMidProjectFileList.clear();
        order.validProjectIncludePathList.clear();
        order.deleteProjectIncludePathList = QStringList{"../../middlewares/freertos/source/include", "../inc/rtos"};
        order.deleteProjectFileList.append("freertos_app.c");
    }

    QString path(const QString &relative) const { return order.projectFullPath + '/' + relative; }
    QByteArray bytes(const QString &relative) const
    {
        QFile file(path(relative));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << relative.toStdString();
        return file.readAll();
    }
    void put(const QString &relative, const QByteArray &content) const
    {
        QFile file(path(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << relative.toStdString();
        file.write(content);
    }
    void replace(const QString &relative, const QByteArray &old, const QByteArray &by) const
    {
        QByteArray content = bytes(relative);
        ASSERT_TRUE(content.contains(old)) << relative.toStdString() << ": " << old.constData();
        const int at = content.indexOf(old);
        put(relative, content.replace(at, old.size(), by));
    }
    /// The files that belong to the toolchain, relative to the root.
    QStringList projectFiles() const
    {
        if (order.ideType == IDE_MAKEFILE)
            return {"Makefile"};
        if (order.ideType == IDE_CMAKE)
            return {"CMakeLists.txt", "CMakePresets.json", "cmake/gcc-arm-none-eabi.cmake",
                    "cmake/zv32_chiploom/CMakeLists.txt"};
        QStringList files;
        QDirIterator walk(order.toolchainDir(), QDir::Files | QDir::Hidden);
        while (walk.hasNext()) {
            walk.next();
            files.append(order.toolchainFolder() + '/' + walk.fileName());
        }
        files.sort();
        return files;
    }
    /// The file that lists the sources.
    QString mainFile() const
    {
        for (const QString &file : projectFiles()) {
            for (const char *end :
                 {".project", ".ewp", ".uvproj", ".uvprojx", "Makefile", "zv32_chiploom/CMakeLists.txt"}) {
                if (file.endsWith(QLatin1String(end)))
                    return file;
            }
        }
        ADD_FAILURE() << "no project file";
        return {};
    }

    QTemporaryDir folder;
    ProjectOrder order;
};

} // namespace ChipLoom::Test
