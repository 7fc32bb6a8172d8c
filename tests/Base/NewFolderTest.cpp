#include "Base/NewFolder.h"
#include "Base/AtomicFile.h"
#include "Base/Beside.h"
#include "Limits.h"
#include "QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

using namespace ChipLoom;

namespace {

const QDir::Filters Everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

/// Takes all threads of the pool away.
class NoOtherThread
{
public:
    NoOtherThread()
    {
        while (m_threads.activeThreadCount() < m_threads.maxThreadCount() || m_taken == 0) {
            m_threads.reserveThread();
            ++m_taken;
        }
    }
    ~NoOtherThread()
    {
        for (; m_taken > 0; --m_taken)
            m_threads.releaseThread();
        m_threads.waitForDone();
    }

private:
    QThreadPool &m_threads = *QThreadPool::globalInstance();
    int m_taken = 0;
};

TEST(Beside, DoesEveryPieceOnceAndBeforeItsEnd)
{
    constexpr int Pieces = 200;
    const auto sumOfAll = [] {
        std::array<int, Pieces> done{}; // apart from each other, as pieces are
        Beside beside;
        for (int round = 1; round <= 3; ++round) {
            for (int &one : done)
                beside.add([&one] { ++one; });
            beside.finish();
            for (const int one : done)
                EXPECT_EQ(one, round);
        }
        bool isDone = false;
        const auto piece = beside.add([&] { isDone = true; });
        beside.add([] {});
        beside.finish(piece);
        EXPECT_TRUE(isDone);
        isDone = false;
        {
            Beside leaving;
            leaving.add([&] { isDone = true; });
        }
        EXPECT_TRUE(isDone);
    };
    sumOfAll();
    const NoOtherThread alone;
    sumOfAll();
}

class NewFolders : public ::testing::Test
{
protected:
    QString path(const QString &name = {}) const { return m_folder.filePath("made/project") + name; }
    QStringList besideIt() const { return QDir(m_folder.filePath("made")).entryList(Everything); }

    QTemporaryDir m_folder;
    Beside m_beside;
    const QStringList m_folders{"inc", "src"};
};

TEST_F(NewFolders, ComeIntoPlaceAsAWhole)
{
    const std::string large(300000, 'c');
    NewFolder folder(path(), m_folders, m_beside);
    const std::vector<std::string_view> parts(3000, "part\n"); // more than one call of the system takes
    folder.put("src/main.c", {large, "", "end\n"});
    folder.put("src/parts.c", parts);
    folder.put("inc/main.h", {});
    m_beside.finish();
    EXPECT_FALSE(QFileInfo::exists(path()));
    EXPECT_EQ(folder.moveIntoPlace(), QString());
    EXPECT_EQ(readFile(path("/src/main.c"), 1 << 20).content.toStdString(), large + "end\n");
    EXPECT_EQ(readFile(path("/src/parts.c"), 1 << 20).content, QByteArray("part\n").repeated(3000));
    EXPECT_TRUE(QFileInfo::exists(path("/inc/main.h")));
    EXPECT_EQ(besideIt(), QStringList("project"));
}

TEST_F(NewFolders, LeaveNothingWhereTheyDoNot)
{
    {
        NewFolder folder(path(), m_folders, m_beside);
        folder.put("src/main.c", {"c"});
    }
    EXPECT_EQ(besideIt(), QStringList());
    {
        const FullDisk disk(100000);
        const std::string large(300000, 'c');
        NewFolder folder(path(), m_folders, m_beside);
        folder.put("inc/main.h", {"h"});
        folder.put("src/main.c", {"begin\n", large});
        EXPECT_EQ(folder.moveIntoPlace(), path("/src/main.c: File too large"));
        EXPECT_EQ(folder.failedFolder(), QString());
    }
    EXPECT_EQ(besideIt(), QStringList());
}

TEST_F(NewFolders, DoNotTakeThePlaceOfAnother)
{
    NewFolder folder(path(), m_folders, m_beside);
    folder.put("src/main.c", {"c"});
    ASSERT_TRUE(QDir().mkpath(path("/src")));
    ASSERT_EQ(putFile(path("/src/main.c"), "mine"), QString());
    EXPECT_EQ(folder.moveIntoPlace(), path(": Directory not empty"));
    EXPECT_EQ(readFile(path("/src/main.c"), 1 << 20).content, "mine");
}

TEST_F(NewFolders, TellWhichFolderCannotBeMade)
{
    ASSERT_EQ(putFile(m_folder.filePath("made"), "a file"), QString());
    NewFolder folder(path(), m_folders, m_beside);
    folder.put("src/main.c", {"c"});
    EXPECT_EQ(folder.moveIntoPlace(), path(": Not a directory"));
    EXPECT_EQ(folder.failedFolder(), path());
}

} // namespace
