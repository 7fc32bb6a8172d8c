#pragma once

#include "Design/Design.h"
#include "GenerateCode/CodeGeneration.h"
#include "Middlewares/Middlewares.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ChipLoom::Test {

/// A design of the sample database and a folder to generate it into.
class GenerationFixture : public ::testing::Test
{
protected:
    GenerationFixture()
    {
        registerMiddlewares(design);
        EXPECT_TRUE(folder.isValid());
    }

    void open(const QString &series, const QString &device, const QString &package)
    {
        ASSERT_TRUE(design.NewDesign(series, device, package));
    }
    void openSmall() { open("ZV32F421", "ZV32F421C8T7", "LQFP48"); }

    void set(const QStringList &settings)
    {
        for (const QString &setting : settings) {
            const std::optional<DesignChange> change = DesignChange::fromSetting(setting);
            ASSERT_TRUE(change.has_value()) << setting.toStdString();
            ASSERT_TRUE(bool(design.apply(*change))) << setting.toStdString();
        }
        ASSERT_TRUE(design.scheduler().drain());
    }

    GenerationRecord generate(bool write = true) { return generateCode(design, folder.path() + "/project", write); }

    QString path(const QString &name) const { return folder.path() + "/project/" + name; }
    QString text(const QString &name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return QString::fromLatin1(file.readAll());
    }
    void replaceIn(const QString &name, const QString &from, const QString &to) const
    {
        QString content = text(name);
        ASSERT_TRUE(content.contains(from)) << from.toStdString();
        content.replace(content.indexOf(from), from.size(), to);
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content.toLatin1());
    }
    QStringList files() const
    {
        QStringList names;
        QDirIterator it(folder.path() + "/project", QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            names.append(QDir(folder.path() + "/project").relativeFilePath(it.next()));
        names.sort();
        return names;
    }

    void expectNoMarkers() const
    {
        for (const QString &name : files()) {
            const QString content = text(name);
            for (const char *rest : {"[#", "[/#", "//add ", "\r"})
                EXPECT_FALSE(content.contains(rest)) << name.toStdString() << ": " << rest;
        }
    }

    static GeneratedFileRecord::State stateOf(const GenerationRecord &record, const QString &name)
    {
        for (const GeneratedFileRecord &file : record.files) {
            if (file.path == name)
                return file.state;
        }
        ADD_FAILURE() << name.toStdString();
        return GeneratedFileRecord::State::New;
    }

    AppPaths paths{QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
    ScriptedPrompt prompt;
    Design design{paths, prompt};
    QTemporaryDir folder;
};

} // namespace ChipLoom::Test
