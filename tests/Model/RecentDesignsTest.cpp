#include "Model/RecentDesigns.h"
#include "DatabaseFolder.h"
#include "Limits.h"
#include "QtPrinters.h"

using namespace ChipLoom;

namespace {

class RecentList : public DatabaseFolder
{
protected:
    bool add(const QString &design) { return SetRecentlyProjectToFile(m_file, design, m_time = m_time.addSecs(1)); }

    QStringList listed() const
    {
        QStringList texts;
        for (const ProjectFileSaveInfo &entry : GetRecentlyProjectList(m_file))
            texts.append(entry.filePath + " at " + entry.creatTime);
        return texts;
    }

    const QString m_file = path("resentlyProject.xml");
    QDateTime m_time = QDateTime::fromString("2024-02-03 04:05:00", "yyyy-MM-dd hh:mm:ss");
};

TEST_F(RecentList, TheNewestStandsInFront)
{
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(add("/a.zvwp"));
    EXPECT_TRUE(add(QStringLiteral("/设计 & 1.zvwp")));
    EXPECT_TRUE(add("/a.zvwp"));
    EXPECT_EQ(listed(),
              (QStringList{"/a.zvwp at 2024-02-03 04:05:03", QStringLiteral("/设计 & 1.zvwp at 2024-02-03 04:05:02")}));
    EXPECT_TRUE(DeleteRecentlyProjectToFile(m_file, "/a.zvwp"));
    EXPECT_EQ(listed(), QStringList{QStringLiteral("/设计 & 1.zvwp at 2024-02-03 04:05:02")});
}

TEST_F(RecentList, TheOldestOfMoreThanFiveGoes)
{
    for (const char *design : {"/1", "/2", "/3", "/4", "/5", "/6"})
        EXPECT_TRUE(add(design));
    EXPECT_EQ(listed().size(), 5);
    EXPECT_EQ(listed().first(), "/6 at 2024-02-03 04:05:06");
    EXPECT_EQ(listed().last(), "/2 at 2024-02-03 04:05:02");
}

TEST_F(RecentList, APathEndsAtItsFirstSemicolon)
{
    EXPECT_TRUE(add("/a;b.zvwp"));
    EXPECT_TRUE(add("/a;b.zvwp"));
    EXPECT_EQ(listed(), QStringList{"/a at 2024-02-03 04:05:02"});
    write("resentlyProject.xml", "<Root><ResentlyProject><Other>/x;1</Other><FilePath/><FilePath>/c;d;2024</FilePath>"
                                 "<FilePath>/no time</FilePath></ResentlyProject></Root>");
    EXPECT_EQ(listed(), (QStringList{"/c at 2024", "/no time at "}));
}

TEST_F(RecentList, ADamagedListIsBegunAnewAndALockedOneStands)
{
    write("resentlyProject.xml", "<Root><Resently");
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(add("/a"));
    EXPECT_EQ(listed().size(), 1);

    const AsOrdinaryUser user(m_folder.path());
    const QString own = path("own.xml");
    ASSERT_TRUE(SetRecentlyProjectToFile(own, "/mine"));
    ASSERT_TRUE(QFile::setPermissions(own, QFile::ReadOwner));
    EXPECT_FALSE(SetRecentlyProjectToFile(own, "/other"));
    EXPECT_FALSE(DeleteRecentlyProjectToFile(own, "/mine"));
    EXPECT_EQ(GetRecentlyProjectList(own).size(), 1);
}

} // namespace
