#include "Base/FileState.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

TEST(FileState, TellsLinksFromWhatTheyLeadTo)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath("b"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("1234") == 4 && file.flush());
    ASSERT_TRUE(QDir(dir.path()).mkdir("a"));
    ASSERT_TRUE(QFile::link(dir.filePath("b"), dir.filePath("link")) && QFile::link("nowhere", dir.filePath("broken")));
    EXPECT_TRUE(fileState(dir.filePath("link")).isLink());
    EXPECT_EQ(followedState(dir.filePath("link")).size, 4);
    EXPECT_EQ(followedState(dir.filePath("link")).inode, fileState(dir.filePath("b")).inode);
    EXPECT_TRUE(fileState(dir.filePath("broken")).isLink());
    EXPECT_FALSE(followedState(dir.filePath("broken")).exists());

    QStringList names;
    for (const FolderEntry &entry : folderEntries(dir.path()))
        names.append(entry.name);
    EXPECT_EQ(names, QStringList({"a", "b", "broken", "link"}));
    const QVector<FileState> states = fileStates(dir.path(), {"a", QFile::encodeName(dir.filePath("b")), "c"});
    EXPECT_TRUE(states[0].isFolder() && states[1].isFile() && !states[2].exists());
}

TEST(FileState, AChangeWithinTheSameStepOfTheClockShowsBehindAnExactTime)
{
    const QTemporaryDir dir;
    QFile file(dir.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (int i = 0; i < 100; ++i) {
        file.seek(0);
        file.write("a");
        ASSERT_TRUE(setExactTime(file.fileName()));
        const qint64 before = fileState(file.fileName()).time;
        file.seek(0);
        file.write("b");
        ASSERT_NE(fileState(file.fileName()).time, before);
    }
}

} // namespace
