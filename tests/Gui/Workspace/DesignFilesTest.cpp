#include "Gui/Clock/ZV32MCUPLLView.h"
#include "Gui/Clock/ZV32PLLConfigPage.h"
#include "Gui/DesignFixture.h"
#include "Gui/Home/MainWindow.h"
#include "Gui/Home/RecentDesignsPage.h"
#include "Gui/ScriptedFiles.h"
#include "Gui/Workspace/FormConfiguration.h"
#include "Model/RecentDesigns.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include <gtest/gtest.h>

#include <sys/wait.h>

using namespace ChipLoom;

namespace {

class DesignFilesTest : public testing::Test
{
protected:
    DesignFilesTest()
    {
        fixture.addCatalogue();
        home = std::make_unique<MainWindow>(fixture.xml(), prompt);
        home->workspace().setFileChooser(files);
    }

    FormConfiguration &window() { return home->workspace(); }
    QString path(const char *name) const { return fixture.path() + QLatin1Char('/') + QLatin1String(name); }
    void startDesign()
    {
        window().NewDesign(QStringLiteral("ZV32F403A"), QStringLiteral("SMALL"), QStringLiteral("LQFP8"));
        window().show();
    }
    void trigger(const char *text)
    {
        for (QAction *action : window().findChildren<QAction *>()) {
            if (action->text() == QLatin1String(text)) {
                action->trigger();
                return;
            }
        }
        FAIL() << "no action " << text;
    }
    void change() { window().design().apply(DesignChange::placeSignal("PA9", "USART1_TX")); }
    QStringList recent() const
    {
        QStringList paths;
        for (const ProjectFileSaveInfo &entry : GetRecentlyProjectList(fixture.xml().paths().recentDesignsFile()))
            paths.append(entry.filePath);
        return paths;
    }
    QStringList told() const
    {
        QStringList texts;
        for (const PromptRequest &request : prompt.requests)
            texts.append(request.title + ": " + request.text);
        return texts;
    }

    DesignFixture fixture;
    ScriptedPrompt prompt;
    ScriptedFiles files;
    std::unique_ptr<MainWindow> home;
};

const QString Program = QStringLiteral("ZV32 Chip Loom V1.2.05");
const QString Gap = QString(15, QLatin1Char(' '));

TEST_F(DesignFilesTest, ANewDesignIsSavedUnderAChosenNameAndThenUnderItsOwn)
{
    startDesign();
    EXPECT_EQ(window().windowTitle(), Program + "  SMALL  ");
    change();
    EXPECT_EQ(window().windowTitle(), Program + "  SMALL   *");
    trigger("Save Design");
    EXPECT_EQ(files.proposal, "SMALL_ChipLoom");
    EXPECT_TRUE(window().design().isModified()) << "the dialog was closed";

    files.answer = path("first");
    trigger("Save Design");
    EXPECT_EQ(window().windowTitle(), Program + Gap + "first.ZVWP :  " + path("first.ZVWP"));
    EXPECT_EQ(files.asked, 2);
    window().design().apply(DesignChange::labelPin("PA9", "LOG"));
    EXPECT_TRUE(window().windowTitle().endsWith(" *"));
    trigger("Save Design");
    EXPECT_EQ(files.asked, 2);
    EXPECT_FALSE(window().design().isModified());
    EXPECT_EQ(told(), QStringList());

    files.answer = path("second.zvwp");
    trigger("Design Save As");
    EXPECT_EQ(told(), QStringList("Information: Save file finished!"));
    EXPECT_EQ(recent(), QStringList({path("second.zvwp"), path("first.ZVWP")}));

    prompt.requests.clear();
    files.answer = path("no/folder/third");
    trigger("Design Save As");
    EXPECT_EQ(told(), QStringList("Error: Save file error!"));
    EXPECT_TRUE(prompt.requests.first().detail.contains("third.ZVWP"));
    EXPECT_EQ(window().design().file().path(), path("second.zvwp"));

    // The dialog of files asked about "first", which does not exist.
    prompt.requests.clear();
    files.answer = path("first");
    trigger("Design Save As");
    EXPECT_EQ(told(), QStringList("Warning: %1 already exists, do you want to overwrite it?"));
    EXPECT_EQ(window().design().file().path(), path("second.zvwp"));
}

TEST_F(DesignFilesTest, ASaveThatFailsKeepsTheWindowOpen)
{
    startDesign();
    change();
    files.answer = path("no/folder/a");
    prompt.answers = {0};
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isVisible());
    files.answer = path("a");
    prompt.answers = {0};
    EXPECT_TRUE(window().close());
    EXPECT_EQ(recent(), QStringList(path("a.ZVWP")));
}

TEST_F(DesignFilesTest, AClockValueThatWaitsForReturnIsAskedAbout)
{
    const QString question = "Warning: A value typed on the clock page is not in effect: Return takes it. Would you "
                             "like to go on without it?";
    startDesign();
    files.answer = path("a");
    trigger("Save Design");
    window().ClockConfig_PushButton_Clicked();
    auto *sclk = qobject_cast<QLineEdit *>(window().clockPage()->view()->control(ClockField::Sclk));
    ASSERT_TRUE(sclk);
    const QString before = sclk->text();
    const auto type = [&] {
        sclk->selectAll();
        QTest::keyClicks(sclk, "96");
    };
    type();
    EXPECT_FALSE(window().design().isModified()) << "nothing has changed yet";
    change();
    window().PINConfig_PushButton_Clicked();
    prompt.answers = {1, 1, 0};
    trigger("Save Design");
    EXPECT_TRUE(sclk->isVisible()) << "the user is led to it";
    EXPECT_TRUE(window().design().isModified());
    trigger("Design Save As");
    EXPECT_EQ(sclk->text(), "96");
    trigger("Save Design");
    EXPECT_EQ(told(), QStringList({question, question, question}));
    EXPECT_EQ(sclk->text(), before) << "what is shown is what was saved";
    EXPECT_FALSE(window().design().isModified());

    type();
    QTest::keyClick(sclk, Qt::Key_Return);
    trigger("Save Design");
    EXPECT_EQ(told().size(), 3);
    EXPECT_FALSE(window().design().isModified());
}

TEST_F(DesignFilesTest, WhatAnotherProgramSavedMeanwhileIsNotOverwrittenUnasked)
{
    startDesign();
    files.answer = path("shared");
    trigger("Save Design");
    trigger("Save Design");
    EXPECT_EQ(told(), QStringList());

    Design other(fixture.xml().paths(), prompt);
    ASSERT_TRUE(other.OpenDesign(path("shared.ZVWP")));
    other.apply(DesignChange::placeSignal("PA10", "USART1_RX"));
    ASSERT_TRUE(other.SaveProject(path("shared.ZVWP")));
    change();
    prompt.answers = {1, 0};
    trigger("Save Design");
    EXPECT_TRUE(window().design().isModified());
    trigger("Save Design");
    EXPECT_FALSE(window().design().isModified());
    EXPECT_EQ(told().size(), 2);
    trigger("Save Design");
    EXPECT_EQ(told().size(), 2) << "it is this design's own again";
}

TEST_F(DesignFilesTest, DesignsAreOpenedFromTheMenuAndFromTheListOfRecentOnes)
{
    startDesign();
    change();
    files.answer = path("a & b.ZVWP");
    trigger("Save Design");
    prompt.answers = {1};
    startDesign();
    trigger("Open Design");
    EXPECT_EQ(told(),
              QStringList("Question: The current design will be closed before opening another design. Would you "
                          "like to save the design?"));
    EXPECT_EQ(window().windowTitle(), Program + Gap + "a & b.ZVWP :  " + path("a & b.ZVWP"));
    EXPECT_EQ(window().design().pins().GetPinConfigedDisplayText(2), "USART1_TX");

    auto *menu = window().findChild<QMenu *>("recentDesigns");
    ASSERT_TRUE(menu);
    emit menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_TRUE(menu->actions().first()->text().startsWith(path("a && b.ZVWP-----20")));
    prompt.requests.clear();
    startDesign();
    prompt.answers = {0};
    menu->actions().first()->trigger();
    EXPECT_EQ(told(), QStringList("Information: Are you sure to open this design file?"));
    EXPECT_EQ(window().design().file().path(), path("a & b.ZVWP"));

    QFile::remove(path("a & b.ZVWP"));
    prompt.requests.clear();
    menu->actions().first()->trigger();
    EXPECT_EQ(told(), QStringList("Error: File is not exists!"));
}

TEST_F(DesignFilesTest, TheHomeWindowOpensDesignsAndStaysWithWhatIsNone)
{
    startDesign();
    change();
    files.answer = path("a.ZVWP");
    trigger("Save Design");
    window().hide();
    home->show();
    QFile bad(path("bad.ZVWP"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly) && bad.write("<Root>") > 0);
    bad.close();
    files.answer = bad.fileName();
    QTest::mouseClick(home->findChild<QPushButton *>("openDesign"), Qt::LeftButton);
    EXPECT_EQ(told(), QStringList("Error: Open file error, can not get MCU information!"));
    EXPECT_TRUE(home->isVisible());
    EXPECT_EQ(window().design().file().path(), path("a.ZVWP")) << "what was open stays";

    home->ListDisplay_PushButton_Clicked();
    auto *list = home->findChild<RecentDesignsPage *>();
    const QList<QLabel *> lines = list->findChildren<QLabel *>();
    const auto line =
        std::find_if(lines.begin(), lines.end(), [](const QLabel *label) { return label->text().contains("-----"); });
    ASSERT_NE(line, lines.end());
    prompt.answers = {0};
    QTest::mouseClick(*line, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_FALSE(home->isVisible());
    EXPECT_TRUE(window().isVisible());
    home->OpenDesignFromDoubleClickFile(path("missing.ZVWP"));
    EXPECT_EQ(window().design().file().path(), path("a.ZVWP"));
}

TEST_F(DesignFilesTest, WhatAKilledProgramLeftIsOfferedAtTheNextStart)
{
    startDesign();
    files.answer = path("a.ZVWP");
    trigger("Save Design");
    const QString folder = fixture.xml().paths().recoveryDir();
    const pid_t child = ::fork();
    if (child == 0) {
        change();
        RecoveryCopy copy(window().design(), folder);
        copy.update();
        ::kill(::getpid(), SIGKILL);
    }
    ASSERT_GT(child, 0);
    ::waitpid(child, nullptr, 0);

    prompt.answers = {2};
    EXPECT_FALSE(home->offerRecovery());
    ASSERT_EQ(prompt.requests.size(), 1);
    EXPECT_EQ(prompt.requests.first().detail, path("a.ZVWP"));
    prompt.answers = {0};
    EXPECT_TRUE(home->offerRecovery());
    EXPECT_EQ(window().windowTitle(), Program + Gap + "a.ZVWP :  " + path("a.ZVWP") + " *");
    EXPECT_EQ(window().design().pins().GetPinConfigedDisplayText(2), "USART1_TX");
    EXPECT_EQ(QDir(folder).entryList({"*.ZVWP"}).size(), 1) << "its own copy in place of the one it took";
    EXPECT_FALSE(home->offerRecovery());
    trigger("Save Design");
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList());
}

} // namespace
