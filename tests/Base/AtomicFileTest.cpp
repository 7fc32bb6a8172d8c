#include "Base/AtomicFile.h"
#include "Limits.h"
#include "QtPrinters.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <thread>

using namespace ChipLoom;

namespace {

class AtomicFile : public ::testing::Test
{
protected:
    QString path(const char *name) const { return m_folder.filePath(name); }

    QString write(const char *name, const QByteArray &content)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QByteArray contentOf(const QString &file) const { return readFile(file, 1 << 20).content; }

    QTemporaryDir m_folder;
};

TEST_F(AtomicFile, ReplacesAndLeavesUnchangedContentUntouched)
{
    const QString file = path("config.xml");
    EXPECT_EQ(replaceFile(file, "one").outcome, ReplaceOutcome::Written);
    EXPECT_EQ(replaceFile(file, "two").outcome, ReplaceOutcome::Written);
    EXPECT_EQ(contentOf(file), "two");

    ASSERT_TRUE(QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    const QFile::Permissions permissions = QFileInfo(file).permissions();
    QFile touched(file);
    ASSERT_TRUE(touched.open(QIODevice::ReadWrite));
    touched.setFileTime(QDateTime::fromSecsSinceEpoch(1000), QFileDevice::FileModificationTime);
    touched.close();
    EXPECT_EQ(replaceFile(file, "two").outcome, ReplaceOutcome::Unchanged);
    EXPECT_EQ(QFileInfo(file).lastModified().toSecsSinceEpoch(), 1000);

    EXPECT_EQ(replaceFile(file, "three").outcome, ReplaceOutcome::Written);
    EXPECT_EQ(QFileInfo(file).permissions(), permissions);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList("config.xml"));
}

TEST_F(AtomicFile, WhatCannotBeReadIsTheSameAsNothing)
{
    EXPECT_TRUE(sameContent(write("one", "text"), write("two", "text")));
    EXPECT_FALSE(sameContent(path("one"), write("two", "Text")));
    EXPECT_FALSE(sameContent(path("missing"), path("absent")));
    EXPECT_FALSE(sameContent(m_folder.path(), m_folder.path()));
}

TEST_F(AtomicFile, ASymbolicLinkKeepsPointingAtItsTarget)
{
    const QString target = write("target", "old");
    ASSERT_TRUE(QFile::link(target, path("link")));
    EXPECT_TRUE(replaceFile(path("link"), "new").ok());
    EXPECT_TRUE(QFileInfo(path("link")).isSymLink());
    EXPECT_EQ(contentOf(target), "new");
}

TEST_F(AtomicFile, WhatCannotBeReplacedIsToldAndStands)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("folder"));
    EXPECT_EQ(replaceFile(path("folder"), "x").error, path("folder") + " is no regular file");
    EXPECT_FALSE(replaceFile(path("missing/file"), "x").ok());
    EXPECT_FALSE(replaceFile("/dev/null", "x").ok());

    AsOrdinaryUser user(m_folder.path());
    const QString locked = write("locked", "mine");
    ASSERT_TRUE(QFile::setPermissions(locked, QFile::ReadOwner));
    EXPECT_EQ(replaceFile(locked, "x").error, locked + " is read-only");
    EXPECT_EQ(contentOf(locked), "mine");

    const QString secret = write("secret", "mine");
    ASSERT_TRUE(QFile::setPermissions(secret, {}));
    EXPECT_EQ(replaceFile(secret, "x").error, secret + ": Permission denied");

    const QString still = write("still", "mine");
    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_FALSE(replaceFile(still, "x").ok());
    EXPECT_FALSE(replaceFile(path("new"), "x").ok());
    EXPECT_EQ(contentOf(still), "mine");
    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

TEST_F(AtomicFile, AFullDiskLeavesTheOldContentAndNoRemains)
{
    const QString file = write("design.zvwp", "old");
    for (const int size : {5000, 100000}) {
        FullDisk disk(4096);
        const ReplaceResult result = replaceFile(file, QByteArray(size, 'x'));
        EXPECT_EQ(result.outcome, ReplaceOutcome::Failed);
        EXPECT_TRUE(result.error.contains("File too large")) << result.error.toStdString();
    }
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList("design.zvwp"));
}

TEST_F(AtomicFile, PutsIntoPlaceWhatCanBeMadeAgain)
{
    EXPECT_EQ(putFile(path("new"), "1"), QString());
    EXPECT_EQ(contentOf(path("new")), "1");
    EXPECT_EQ(putFile(path("tool"), "2", true), QString());
    EXPECT_EQ(contentOf(path("tool")), "2");
    EXPECT_TRUE(QFileInfo(path("tool")).isExecutable());

    EXPECT_TRUE(putFile(path("missing/file"), "x").startsWith(path("missing/file") + ": "));
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("folder"));
    EXPECT_FALSE(putFile(path("folder"), "x").isEmpty());
    {
        FullDisk disk(4096);
        EXPECT_TRUE(putFile(path("new"), QByteArray(100000, 'x')).contains("File too large"));
    }
    EXPECT_EQ(contentOf(path("new")), "1");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList({"new", "tool"}));
}

TEST_F(AtomicFile, PutsFilesOfTheLongestNamesThatThereAre)
{
    for (const QString &name : {QString(255, 'a'), QString(85, QChar(0x9505)), 'b' + QString(84, QChar(0x9505))}) {
        const QString file = m_folder.filePath(name);
        for (const char *content : {"1", "2"})
            EXPECT_EQ(putFile(file, content), QString());
        EXPECT_EQ(contentOf(file), "2");
        EXPECT_TRUE(QDir().mkdir(partPath(file)));
    }
    EXPECT_FALSE(putFile(m_folder.filePath(QString(256, 'a')), "1").isEmpty());
}

TEST_F(AtomicFile, TwoWritersOfOneFileDoNotMeet)
{
    const QString file = path("main.c");
    const QString source = write("source", QByteArray(300000, 'c'));
    QStringList errors[2];
    const auto writeOften = [&](int writer) {
        for (int i = 0; i < 200; ++i) {
            const QString error = writer == 0 ? putCopy(source, file) : putFile(file, QByteArray(200000, 'p'));
            const QByteArray content = contentOf(file);
            if (!error.isEmpty())
                errors[writer].append(error);
            else if (content != QByteArray(300000, 'c') && content != QByteArray(200000, 'p'))
                errors[writer].append(QStringLiteral("a part of %1 bytes").arg(content.size()));
        }
    };
    std::thread other(writeOften, 1);
    writeOften(0);
    other.join();
    EXPECT_EQ(errors[0] + errors[1], QStringList());
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList({"main.c", "source"}));
}

TEST_F(AtomicFile, TakesAwayThePartsOfRunsThatAreOver)
{
    const std::string over = "main.c.chiploom-part-" + std::to_string(endedProcess());
    const std::string goingOn = "main.c.chiploom-part-" + std::to_string(getppid()) + "-1f";
    write((over + "-1f").c_str(), "half");
    ASSERT_TRUE(QFile::link(path("gone"), path((over + "-20").c_str())));
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(QString::fromStdString(over) + "-21/sub"));
    write(goingOn.c_str(), "half");
    write((over + "-notes").c_str(), "mine");
    QFile own(partPath(path("main.c")));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    for (const QString &name : QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
        makeOld(path(name.toUtf8().constData()));
    const std::string fresh = over + "-22"; // its process may be seen elsewhere
    write(fresh.c_str(), "half");

    removeLeftParts(m_folder.path());
    QStringList left{QFileInfo(own).fileName(), QString::fromStdString(goingOn), QString::fromStdString(fresh),
                     QString::fromStdString(over) + "-notes"};
    left.sort();
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot), left);
}

TEST_F(AtomicFile, CopiesRegularFilesAlone)
{
    const QString source = write("source", QByteArray(200000, 'x'));
    ASSERT_TRUE(QFile::setPermissions(source, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    write("copy", "old");
    {
        FullDisk disk(100000);
        EXPECT_TRUE(putCopy(source, path("copy")).contains("File too large"));
        EXPECT_EQ(contentOf(path("copy")), "old");
    }
    EXPECT_EQ(putCopy(source, path("copy")), QString());
    EXPECT_EQ(contentOf(path("copy")).size(), 200000);
    EXPECT_TRUE(QFileInfo(path("copy")).isExecutable());

    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    EXPECT_EQ(putCopy(path("pipe"), path("copy")), path("pipe") + " is no regular file");
    EXPECT_EQ(putCopy(m_folder.path(), path("copy")), m_folder.path() + " is no regular file");
    EXPECT_EQ(putCopy(path("nothing"), path("copy")), path("nothing") + ": No such file or directory");
    EXPECT_EQ(contentOf(path("copy")).size(), 200000);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList({"copy", "source"}));
}

TEST_F(AtomicFile, ReadingKeepsToItsBound)
{
    const QString file = write("file", "12345");
    EXPECT_TRUE(readFile(file, 5).ok);
    const ReadResult large = readFile(file, 4);
    EXPECT_FALSE(large.ok);
    EXPECT_TRUE(large.exists);
    EXPECT_EQ(large.error, file + " has 5 bytes; at most 4 are read");
    EXPECT_FALSE(readFile(path("nothing"), 4).exists);
    EXPECT_EQ(readFile(path("nothing"), 4).error, path("nothing") + " does not exist");
}

} // namespace
