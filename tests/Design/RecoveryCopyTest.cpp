#include "Design/RecoveryCopy.h"

#include "DesignFileFixture.h"

#include <QDir>

#include <sys/wait.h>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

class RecoveryCopyTest : public DesignFileFixture
{
protected:
    QStringList copies() const { return QDir(recovery).entryList({"*.ZVWP"}, QDir::Files); }
    QString recovery = path("recovery");
};

TEST_F(RecoveryCopyTest, LivesAsLongAsThereAreUnsavedChanges)
{
    RecoveryCopy copy(design, recovery);
    copy.update();
    openNew();
    copy.update();
    EXPECT_FALSE(QDir(recovery).exists());
    ASSERT_TRUE(set("pin/PA9=USART1_TX"));
    copy.update();
    ASSERT_EQ(copies().size(), 1);
    const QByteArray first = readAll(recovery + '/' + copies().first());
    EXPECT_FALSE(first.contains("RecoveredFrom"));
    ASSERT_TRUE(set("pin/PA10=USART1_RX"));
    copy.update();
    EXPECT_NE(readAll(recovery + '/' + copies().first()), first);
    ASSERT_TRUE(design.SaveProject(path("a.ZVWP")));
    copy.update();
    EXPECT_EQ(QDir(recovery).entryList(QDir::Files), QStringList());
    {
        RecoveryCopy another(design, recovery);
        set("pin/PA10=");
        another.update();
        EXPECT_EQ(copies().size(), 1);
    }
    EXPECT_EQ(copies().size(), 0) << "an orderly end leaves nothing";
}

TEST_F(RecoveryCopyTest, OnlyTheCopyOfADeadProgramIsFound)
{
    openNew();
    ASSERT_TRUE(design.SaveProject(path("a.ZVWP")));
    ASSERT_TRUE(set("pin/PA9=USART1_TX"));
    const pid_t child = ::fork();
    if (child == 0) {
        RecoveryCopy copy(design, recovery);
        copy.update();
        ::kill(::getpid(), SIGKILL);
    }
    ASSERT_GT(child, 0);
    ::waitpid(child, nullptr, 0);
    ASSERT_TRUE(set("pin/PA10=USART1_RX"));
    RecoveryCopy living(design, recovery);
    living.update();
    ASSERT_EQ(copies().size(), 2);

    std::vector<AbandonedCopy> found = AbandonedCopy::all(recovery);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found.front().origin(), path("a.ZVWP"));
    EXPECT_TRUE(AbandonedCopy::all(recovery).empty()) << "another program takes none that is being offered";

    Design other(paths, prompt);
    ASSERT_TRUE(other.file().OpenCopy(found.front().file()));
    EXPECT_EQ(other.file().path(), path("a.ZVWP"));
    EXPECT_TRUE(other.isModified());
    EXPECT_EQ(other.pins().GetPinConfigedDisplayText(30), "USART1_TX");
    EXPECT_EQ(other.pins().GetPinConfigedDisplayText(31), "");
    EXPECT_FALSE(other.file().content().contains("RecoveredFrom"));
    found.front().remove();
    EXPECT_EQ(copies().size(), 1);
    EXPECT_TRUE(AbandonedCopy::all(recovery).empty());
}

TEST_F(RecoveryCopyTest, AFolderThatCannotBeWrittenToDoesNoHarm)
{
    writeAll(recovery, "a file");
    openNew();
    set("pin/PA9=USART1_TX");
    RecoveryCopy copy(design, recovery);
    copy.update();
    EXPECT_EQ(readAll(recovery), "a file");
    EXPECT_TRUE(AbandonedCopy::all(recovery).empty());
}

} // namespace
