#pragma once

#include "Base/AppPaths.h"
#include "Model/xmloperation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ChipLoom {

/// A test with a folder of its own, in which it writes the few files that it reads. Each test begins in English.
class DatabaseFolder : public ::testing::Test
{
protected:
    DatabaseFolder() { GlobalLanguage::g_CurrentLanguage = UI_EN; }
    ~DatabaseFolder() override { GlobalLanguage::g_CurrentLanguage = UI_EN; }

    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Writes a file, making the folders above it, and gives its path.
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QByteArray contentOf(const QString &name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir m_folder;
    XMLOperation m_reader{AppPaths(m_folder.path(), m_folder.path())};
};

} // namespace ChipLoom
