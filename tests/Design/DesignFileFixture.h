#pragma once

#include "Design/Design.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ChipLoom::Test {

inline QByteArray readAll(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

inline void writeAll(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(content), content.size());
}

/// Problems as "place reason(arguments)", for messages.
inline QStringList printed(const QList<DesignProblem> &problems)
{
    QStringList lines;
    for (const DesignProblem &problem : problems)
        lines.append(QStringLiteral("%1 %2(%3)")
                         .arg(problem.place)
                         .arg(int(problem.reason.reason))
                         .arg(problem.reason.arguments.join(QLatin1Char(','))));
    return lines;
}

/// A design over the sample database, and a folder for its files.
class DesignFileFixture : public ::testing::Test
{
protected:
    bool openNew(const char *device = "ZV32F421C8T7", const char *series = "ZV32F421", const char *package = "LQFP48")
    {
        return design.NewDesign(QLatin1String(series), QLatin1String(device), QLatin1String(package));
    }
    DesignAnswer set(const char *setting, Design *target = nullptr)
    {
        return (target ? *target : design).apply(*DesignChange::fromSetting(QString::fromUtf8(setting)));
    }
    QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }

    AppPaths paths{QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
    QTemporaryDir folder;
    ScriptedPrompt prompt;
    Design design{paths, prompt};
};

} // namespace ChipLoom::Test
