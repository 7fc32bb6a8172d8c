#include "Gui/Project/ProjectSetting.h"
#include "Design/ModuleConfiguration.h"
#include "Gui/Modes/IP_ParamSettingWidget.h"
#include "Gui/Modes/ModePage.h"
#include "Gui/Modes/OneParamWidget.h"
#include "Gui/Project/FunctionRankPage.h"
#include "Gui/ScriptedFiles.h"
#include "Gui/Workspace/ConfigurationPane.h"
#include "Gui/Workspace/FormConfiguration.h"
#include "Gui/Workspace/PeripheralsConfig.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class ProjectSettingTest : public testing::Test
{
protected:
    ProjectSettingTest()
    {
        AppPaths paths(dir.path(), dir.path());
        paths.setDatabaseDir(QStringLiteral(CHIPLOOM_BIN_DIR "/ZV32DB"));
        QFile::link(QStringLiteral(CHIPLOOM_BIN_DIR "/firmware"), dir.path() + "/firmware");
        xml = std::make_unique<XMLOperation>(paths);
        settings = std::make_unique<Settings>(*xml, prompt);
        window = std::make_unique<FormConfiguration>(*xml, *settings, prompt);
        window->setFileChooser(files);
        window->NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48");
    }

    Design &design() { return window->design(); }
    QString project(const char *file = "") const { return dir.path() + "/lamp/" + QLatin1String(file); }
    QStringList told() const
    {
        QStringList texts;
        for (const PromptRequest &request : prompt.requests)
            texts.append(request.title + ": " + filledText(request.text, request.textArguments));
        return texts;
    }
    std::unique_ptr<ProjectSetting> openDialog()
    {
        return std::make_unique<ProjectSetting>(design(), *xml, *settings, prompt, files);
    }
    template <typename Widget> static Widget *of(QWidget &dialog, const char *name)
    {
        return dialog.findChild<Widget *>(QLatin1String(name));
    }
    static void fill(QWidget &dialog, const QString &name, const QString &location, const QString &toolchain)
    {
        of<QLineEdit>(dialog, "m_lineEditProjName")->setText(name);
        of<QLineEdit>(dialog, "m_lineEditProjLocation")->setText(location);
        of<QComboBox>(dialog, "m_comboBoxIDE")->setCurrentText(toolchain);
    }
    static void press(QWidget &dialog, const char *name) { of<QPushButton>(dialog, name)->click(); }
    /// Runs the generate action; `use` works on the dialog once it is shown.
    void generate(const std::function<void(QWidget &)> &use)
    {
        QTimer::singleShot(0, [use] {
            QWidget *dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            use(*dialog);
            if (dialog->isVisible())
                press(*dialog, "m_cancelButton");
        });
        window->GeneralCode_Action_Triggered();
    }

    QTemporaryDir dir;
    ScriptedPrompt prompt;
    ScriptedFiles files;
    std::unique_ptr<XMLOperation> xml;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<FormConfiguration> window;
};

TEST_F(ProjectSettingTest, AFirstProjectBeginsBesideItsDesignOrWhereTheLastOneWas)
{
    const auto location = [&] { return of<QLineEdit>(*openDialog(), "m_lineEditProjLocation")->text(); };
    EXPECT_EQ(location(), dir.path()) << "home";
    settings->setValue("ProjectLocation", "/work of last week");
    EXPECT_EQ(location(), "/work of last week");
    QDir(dir.path()).mkpath("boards");
    ASSERT_TRUE(design().SaveProject(dir.path() + "/boards/lamp.ZVWP"));
    EXPECT_EQ(location(), dir.path() + "/boards");
    design().apply({"project", "ProjectLocation", "/chosen"});
    EXPECT_EQ(location(), "/chosen");
}

TEST_F(ProjectSettingTest, AProjectIsBuiltFromTheButtonAndAgain)
{
    QString shown;
    const auto use = [&](QWidget &dialog) {
        fill(dialog, "lamp", dir.path(), "CMake");
        shown = of<QLabel>(dialog, "m_folderLabel")->text();
        press(dialog, "m_okButton");
    };
    generate(use);
    EXPECT_EQ(shown, "Files go to " + dir.path() + "/lamp");
    EXPECT_EQ(told(), QStringList{"Information: Generate code finished!"});
    EXPECT_EQ(prompt.requests.last().buttons, (QStringList{" Open Folder  ", "OK"}));
    EXPECT_EQ(prompt.requests.last().detail, "");
    for (const char *file : {"CMakeLists.txt", "project/src/main.c", "libraries/drivers/src/zv32f421_crm.c"})
        EXPECT_TRUE(QFileInfo::exists(project(file))) << file;
    EXPECT_EQ(design().file().path(), project("lamp.ZVWP"));
    EXPECT_FALSE(design().isModified());
    EXPECT_EQ(design().project().PackageVersion, "V2.0.0") << "the one that comes with the program";
    EXPECT_EQ(settings->value("ProjectLocation"), dir.path());
    EXPECT_EQ(settings->value("ToolchainIDE"), "CMake");

    // Asked before it is overwritten; "Cancel" is the default and writes nothing.
    const auto times = [&] {
        return QList<QDateTime>{QFileInfo(project("project/src/main.c")).lastModified(),
                                QFileInfo(project(".chiploom-stamp")).lastModified()};
    };
    const QList<QDateTime> before = times();
    EXPECT_TRUE(before.last().isValid());
    prompt.requests.clear();
    generate(use);
    EXPECT_EQ(told(), QStringList{"Warning: lamp already exists, do you want to overwrite it?"});
    EXPECT_TRUE(prompt.requests.last().detail.contains("between the marker comments stays"));
    EXPECT_FALSE(prompt.requests.last().detail.contains("replaced")) << "it is the design that is open";
    {
        Design other(xml->paths(), prompt);
        ASSERT_TRUE(other.OpenDesign(project("lamp.ZVWP")));
        other.apply(DesignChange::placeSignal("PB0", "GPIO_Output"));
        ASSERT_TRUE(other.SaveProject(project("lamp.ZVWP")));
        generate(use);
        EXPECT_TRUE(prompt.requests.last().detail.endsWith("Another program has changed the file of this design; it is "
                                                           "replaced too."));
        ASSERT_TRUE(window->OpenDesign(project("lamp.ZVWP")));
        design().apply(DesignChange::resetPin("PB0"));
        ASSERT_TRUE(design().SaveProject(project("lamp.ZVWP")));
    }
    prompt.requests.clear();
    prompt.answers = {0};
    generate(use);
    EXPECT_EQ(told().last(), "Information: Generate code finished!");
    EXPECT_EQ(times(), before) << "nothing had changed, so nothing was made";
    EXPECT_EQ(prompt.requests.last().detail, "All files were up to date; none was written.");

    generate([&](QWidget &dialog) {
        fill(dialog, "torch", dir.path(), "CMake");
        press(dialog, "m_okButton");
    });
    EXPECT_EQ(prompt.requests.last().detail, QString("The design is saved in its project now: %1/torch/torch.ZVWP. The "
                                                     "former file stays as it was: %1/lamp/lamp.ZVWP")
                                                 .arg(dir.path()));
    prompt.requests.clear();
    generate(use);
    EXPECT_TRUE(prompt.requests.last().detail.contains("lamp.ZVWP, is replaced by the open one"));
}

TEST_F(ProjectSettingTest, WhatStandsTypedInAFieldIsSavedAndGenerated)
{
    ASSERT_TRUE(design().apply({"mode", "USART1/Mode", "Asynchronous"}));
    window->show();
    QApplication::setActiveWindow(window.get());
    window->moduleTree()->choose("USART1");
    auto *page = qobject_cast<ModePage *>(window->configurationPane()->shownPage());
    ASSERT_TRUE(page);
    QLineEdit *field = page->parameterList()->row("BaudRate")->valueField();
    const auto type = [&](const char *text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    };
    const auto rate = [&] { return design().module("USART1")->parameters().parameter("BaudRate")->CurrentValue; };
    type("57600");
    files.answer = dir.path() + "/typed";
    window->SaveProject_Action_Triggered();
    EXPECT_EQ(rate(), "57600");
    EXPECT_TRUE(field->hasFocus()) << "typing goes on";
    EXPECT_FALSE(design().isModified());
    type("9600");
    generate([&](QWidget &) { EXPECT_EQ(rate(), "9600"); });
}

TEST_F(ProjectSettingTest, RefusalsStayInTheDialogAndWriteNothing)
{
    generate([&](QWidget &dialog) {
        fill(dialog, "", dir.path(), "CMake");
        press(dialog, "m_okButton");
        fill(dialog, "lamp", "", "CMake");
        press(dialog, "m_okButton");
        fill(dialog, "lamp", dir.path(), "CMake");
        of<QLineEdit>(dialog, "m_lineEditMinHeapSize")->setText("0xx");
        press(dialog, "m_okButton");
        of<QLineEdit>(dialog, "m_lineEditMinHeapSize")->setText("0x4000");
        of<QLineEdit>(dialog, "m_lineEditMinStackSize")->setText("4001");
        press(dialog, "m_okButton");
        of<QLineEdit>(dialog, "m_lineEditMinStackSize")->setText("0x4000");
        fill(dialog, "la/mp", dir.path(), "CMake");
        press(dialog, "m_okButton");
        fill(dialog, "lamp; #2", dir.path(), "CMake");
        press(dialog, "m_okButton");
    });
    EXPECT_EQ(told(), (QStringList{
                          "Error: Project name or project location is empty!",
                          "Error: Project name or project location is empty!",
                          "Error: \"Minimum Heap Size\" input error!",
                          "Error: \"Minimum Stack Size\" input error, cannot be greater than SRAM size(0x4000)",
                          "Error: The project cannot have this value.",
                          "Error: The toolchain cannot be used.",
                      }));
    EXPECT_FALSE(QFileInfo::exists(project()));
    EXPECT_TRUE(design().file().path().isEmpty());
}

TEST_F(ProjectSettingTest, AfterAFailedCopyTheUserSaysWhetherTheCodeIsWanted)
{
    QDir().mkpath(project());
    QFile(project("libraries")).open(QIODevice::WriteOnly); // a file where a folder is to be
    const auto use = [&](QWidget &dialog) {
        fill(dialog, "lamp", dir.path(), "Makefile");
        press(dialog, "m_okButton");
    };
    const QString failed = "Warning: Failed to copy firmware package file, Please confirm whether to continue?";
    prompt.answers = {0, 1};
    generate(use);
    EXPECT_EQ(told().last(), failed);
    EXPECT_TRUE(prompt.requests.last().detail.contains("libraries")) << prompt.requests.last().detail.toStdString();
    EXPECT_FALSE(QFileInfo::exists(project("project/src/main.c")));
    prompt.answers = {0, 0};
    generate(use);
    EXPECT_EQ(told().mid(3), (QStringList{failed, "Information: Generate code finished!"}));
    EXPECT_TRUE(QFileInfo::exists(project("project/src/main.c")));
}

/// Presses the button of a progress dialog as soon as it appears.
class Canceller : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QProgressDialog *>(watched))
            watched->findChild<QPushButton *>()->click();
        return false;
    }
};

TEST_F(ProjectSettingTest, ACancelledBuildStaysInTheDialogAndGeneratesNothing)
{
    Canceller canceller;
    qApp->installEventFilter(&canceller);
    bool stays = false;
    generate([&](QWidget &dialog) {
        fill(dialog, "lamp", dir.path(), "CMake");
        press(dialog, "m_okButton");
        stays = dialog.isVisible();
    });
    EXPECT_TRUE(stays);
    EXPECT_EQ(told(), QStringList());
    EXPECT_FALSE(QFileInfo::exists(project("project/src/main.c")));
    EXPECT_FALSE(QFileInfo::exists(project("CMakeLists.txt")));
    EXPECT_TRUE(design().file().path().isEmpty());
}

TEST_F(ProjectSettingTest, AMissingPackageIsAskedAboutAndTheCodeComesWithoutIt)
{
    QFile::remove(dir.path() + "/firmware");
    prompt.answers = {0};
    generate([&](QWidget &dialog) {
        fill(dialog, "lamp", dir.path(), "MDK_V5");
        press(dialog, "m_okButton");
    });
    EXPECT_EQ(told().first(), "Warning: The Firmware Package(ZV32F421_Firmware_Library_V2.x.x) by the Project is not "
                              "available, Please confirm whether to continue?");
    EXPECT_EQ(prompt.requests.last().buttons, (QStringList{" Open Folder  ", "OK"}));
    EXPECT_TRUE(QFileInfo::exists(project("project/src/main.c")));
    EXPECT_FALSE(QFileInfo::exists(project("libraries")));
}

TEST_F(ProjectSettingTest, PackagesOfAnotherFolderAreOfferedAndRemembered)
{
    const QString repository = dir.path() + "/my packages";
    const QString package = repository + "/ZV32F421/ZV32F421_Firmware_Library_V2.7.0";
    QDir().mkpath(package + "/libraries");
    const auto path = [](QWidget &dialog) { return of<QLineEdit>(dialog, "m_lineEditFirmwarePath")->text(); };
    {
        const auto dialog = openDialog();
        files.answer = dir.path();
        press(*dialog, "m_btnBrowseRepository");
        EXPECT_EQ(told(), QStringList{"Error: The folder holds no firmware package of the series."});
        EXPECT_TRUE(path(*dialog).startsWith(dir.path() + "/firmware/")) << "that of the program stays";
        files.answer = repository;
        press(*dialog, "m_btnBrowseRepository");
        EXPECT_EQ(path(*dialog), package);
    }
    EXPECT_EQ(path(*openDialog()), package);
    EXPECT_EQ(prompt.requests.size(), 1);
}

TEST_F(ProjectSettingTest, WhatTheBuilderLeftUndoneIsToldAtTheEnd)
{
    const auto use = [&](const char *heap) {
        return [&, heap](QWidget &dialog) {
            fill(dialog, "lamp", dir.path(), "Makefile");
            of<QLineEdit>(dialog, "m_lineEditMinHeapSize")->setText(heap);
            press(dialog, "m_okButton");
        };
    };
    generate(use("0x4A0"));
    EXPECT_EQ(prompt.requests.last().detail, "");
    prompt.answers = {0};
    generate(use("0x200"));
    EXPECT_EQ(told().last(), "Information: Generate code finished!");
    EXPECT_TRUE(prompt.requests.last().detail.contains("keeps its size of the heap"))
        << told().join('\n').toStdString();
}

TEST_F(ProjectSettingTest, ToolchainsThatTheDesignRulesOutAreDisabledWithTheReason)
{
    const auto itemOf = [](QWidget &dialog, const char *name) {
        auto *box = of<QComboBox>(dialog, "m_comboBoxIDE");
        return qobject_cast<QStandardItemModel *>(box->model())->item(box->findText(QLatin1String(name)));
    };
    {
        const auto dialog = openDialog();
        EXPECT_TRUE(itemOf(*dialog, "MDK_V4")->isEnabled());
        auto *compiler = of<QComboBox>(*dialog, "m_comboBoxAC5_AC6");
        of<QComboBox>(*dialog, "m_comboBoxIDE")->setCurrentText("MDK_V5");
        EXPECT_FALSE(compiler->isHidden());
        of<QComboBox>(*dialog, "m_comboBoxIDE")->setCurrentText("CMake");
        EXPECT_TRUE(compiler->isHidden());
    }
    ASSERT_TRUE(window->OpenDesign(CHIPLOOM_SOURCE_DIR "/examples/kernel.ZVWP"));
    const auto dialog = openDialog();
    EXPECT_FALSE(itemOf(*dialog, "MDK_V4")->isEnabled());
    EXPECT_EQ(itemOf(*dialog, "MDK_V4")->toolTip(), "When FREERTOS or CMSIS_DSP is activated, this option is invalid.");
    EXPECT_TRUE(itemOf(*dialog, "MDK_V5")->isEnabled());
}

TEST_F(ProjectSettingTest, CallsAreMovedBehindTheFixedOnes)
{
    const auto call = [](const char *name, int number, bool fixed) {
        MainFuncNameForRank entry;
        entry.FuncName = QLatin1String(name);
        entry.RankNum = number;
        entry.FixPosFlag = fixed;
        return entry;
    };
    FunctionRankPage page(prompt);
    page.setRank({call("clock", 1, true), call("adc", 2, false), call("usart", 3, false)});
    auto *table = of<QTableWidget>(page, "m_FuncNameTableWidget");
    const auto names = [&] {
        QStringList list;
        for (const MainFuncNameForRank &entry : page.rank())
            list.append(entry.FuncName + (entry.MainDoNotCallFlag ? "-" : ""));
        return list.join(' ');
    };
    const auto enabled = [&](int row) {
        table->setCurrentCell(row, 1);
        return QString::number(of<QPushButton>(page, "m_btnMoveUp")->isEnabled()) +
               QString::number(of<QPushButton>(page, "m_btnMoveDown")->isEnabled());
    };
    EXPECT_EQ(enabled(0), "00");
    EXPECT_EQ(enabled(1), "01") << "not above a fixed one";
    EXPECT_EQ(enabled(2), "10");
    press(page, "m_btnMoveUp");
    EXPECT_EQ(names(), "clock usart adc");
    EXPECT_EQ(table->currentRow(), 1) << "the selection goes along";
    table->item(2, 3)->setCheckState(Qt::Checked);
    EXPECT_EQ(names(), "clock usart adc-");
    of<QCheckBox>(page, "m_allCallsCheckBox")->click();
    EXPECT_EQ(names(), "clock- usart- adc-");

    press(page, "m_btnRankReset"); // answered by "Cancel"
    EXPECT_EQ(names(), "clock- usart- adc-");
    prompt.answers = {0};
    press(page, "m_btnRankReset");
    EXPECT_EQ(names(), "clock adc usart");
    EXPECT_EQ(told().last(), "Question: Are you sure you want to reset the ranking?");
}

} // namespace
