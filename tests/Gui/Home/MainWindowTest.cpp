#include "Gui/Home/MainWindow.h"

#include "Gui/App/Language.h"
#include "Gui/Home/DeviceSelection.h"
#include "Gui/Home/HomeFixture.h"
#include "Gui/Home/New_Design_Select.h"
#include "Gui/Home/RecentDesignsPage.h"
#include "Gui/Home/SeriesTree.h"
#include "Gui/Workspace/FormConfiguration.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

using namespace ChipLoom;

namespace {

TEST(Language, TheSettingCountsOnlyAsItIsWritten)
{
    struct Row
    {
        const char *setting;
        QLocale::Language system;
        LANGUAGE language;
    };
    for (const Row &row : {Row{"UI_CH", QLocale::English, UI_CH}, Row{"UI_EN", QLocale::Chinese, UI_EN},
                           Row{"", QLocale::Chinese, UI_CH}, Row{"", QLocale::German, UI_EN},
                           Row{"ui_ch", QLocale::English, UI_EN}, Row{"ui_en", QLocale::Chinese, UI_CH}})
        EXPECT_EQ(languageFrom(row.setting, QLocale(row.system)), row.language) << row.setting;
}

class MainWindowTest : public HomeFixture
{
protected:
    void SetUp() override
    {
        HomeFixture::SetUp();
        m_translator = std::make_unique<QTranslator>();
        ASSERT_TRUE(m_translator->load(translationFile(UI_EN)));
        QCoreApplication::installTranslator(m_translator.get());
    }

    void TearDown() override
    {
        m_window.reset();
        GlobalLanguage::g_CurrentLanguage = UI_EN;
    }

    void open()
    {
        m_window = std::make_unique<MainWindow>(m_xml, m_prompt);
        m_window->SetLanguage(GlobalLanguage::g_CurrentLanguage);
        m_window->SetQTranslator(m_translator.get());
        m_window->show();
        QCoreApplication::processEvents();
    }

    QPushButton *button(const QString &text) const
    {
        for (QPushButton *button : m_window->findChildren<QPushButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }

    QComboBox *languageBox() const { return m_window->findChild<QComboBox *>("language"); }

    QString stored(const char *key) const
    {
        QString value;
        m_xml.GetConfigValueFromXml(m_xml.paths().configFile(), key, value);
        return value;
    }

    std::unique_ptr<QTranslator> m_translator;
    std::unique_ptr<MainWindow> m_window;
};

TEST_F(MainWindowTest, StartStoresTheManualsFolderButNotTheLanguage)
{
    open();
    EXPECT_EQ(m_window->windowTitle(), "ZV32 Chip Loom V1.2.05");
    EXPECT_EQ(stored("UserGuideInstallPath"), m_folder.filePath("home") + "/ChipLoom/Repository/Package");
    EXPECT_EQ(stored("Language"), "");
    EXPECT_TRUE(m_prompt.requests.isEmpty());
}

TEST_F(MainWindowTest, AChosenManualsFolderIsKept)
{
    ASSERT_TRUE(m_xml.CreateXMLFile(m_xml.paths().configFile()));
    ASSERT_TRUE(m_xml.AppendConfigToXml(m_xml.paths().configFile(), "UserGuideInstallPath", "/manuals"));
    open();
    EXPECT_EQ(stored("UserGuideInstallPath"), "/manuals");
}

TEST_F(MainWindowTest, LanguageSwitchesLiveAndIsStored)
{
    open();
    const auto heading = [this] {
        return m_window->findChild<QTableView *>()->model()->headerData(2, Qt::Horizontal).toString();
    };
    ASSERT_TRUE(button("Start a new Design"));
    EXPECT_EQ(heading(), "Product Line");

    languageBox()->setCurrentIndex(UI_CH);
    EXPECT_EQ(GlobalLanguage::g_CurrentLanguage, UI_CH);
    EXPECT_EQ(stored("Language"), "UI_CH");
    EXPECT_FALSE(button("Start a new Design"));
    EXPECT_EQ(heading(), QString::fromUtf8("产品线"));
    const QAbstractItemModel *table = m_window->findChild<QTableView *>()->model();
    EXPECT_EQ(table->index(0, DeviceTableModel::Sram).data().toString(),
              QString::fromUtf8("最大：224KB    默认：96KB"));
    const QAbstractItemModel *tree = m_window->findChild<SeriesTree *>()->model();
    EXPECT_EQ(tree->index(0, 0).data(Qt::ToolTipRole).toString(), QString::fromUtf8("小"));
    EXPECT_EQ(tree->index(0, 0).data().toString(), QString::fromUtf8("经济型"));
    EXPECT_EQ(tree->index(1, 0).data().toString(), "Main Line") << "no title in Chinese";
    EXPECT_EQ(m_window->findChild<QTextBrowser *>()->toPlainText(), QString::fromUtf8("关于 ZV32F403A"));

    languageBox()->setCurrentIndex(UI_EN);
    EXPECT_EQ(stored("Language"), "UI_EN");
    EXPECT_TRUE(button("Start a new Design"));
    EXPECT_EQ(heading(), "Product Line");
    EXPECT_EQ(tree->index(0, 0).data().toString(), "Value Line");
}

TEST_F(MainWindowTest, UnwritableSettingsAreSaidOnceAndTheProgramRuns)
{
    ASSERT_TRUE(QDir().mkpath(m_xml.paths().configFile())); // a folder in the file's place
    open();
    ASSERT_EQ(m_prompt.requests.size(), 1);
    EXPECT_EQ(m_prompt.requests[0].title, "Warning");
    EXPECT_EQ(m_prompt.requests[0].text, "The settings cannot be kept.");
    EXPECT_TRUE(m_prompt.requests[0].detail.contains(m_xml.paths().configFile()));

    languageBox()->setCurrentIndex(UI_CH);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_prompt.requests.size(), 1);
    EXPECT_EQ(GlobalLanguage::g_CurrentLanguage, UI_CH);
    EXPECT_TRUE(QFileInfo(m_xml.paths().configFile()).isDir());
}

TEST_F(MainWindowTest, HomeAndWorkspaceAreShownInTurn)
{
    write("ZV32DB/device/ZV32F403A/ZV32F403ACCT7.xml", R"(<D>
<e term="MCUBaseInfo"><e MCUName="ZV32F403ACCT7" PinNums="1" xPinNum="1" yPinNum="1" PID="0" Package="LQFP"/></e>
<e term="PinsList"><e PinNum="1" PinName="PA0"/></e><e term="PinsSignalsGroup"/><e term="PeripheralsList"/>
<e term="MiddlewaresList"/></D>)");
    open();
    FormConfiguration *workspace = nullptr;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *candidate = qobject_cast<FormConfiguration *>(window))
            workspace = candidate;
    }
    ASSERT_TRUE(workspace);
    EXPECT_FALSE(workspace->isVisible());

    QTest::mouseClick(button("New Design"), Qt::LeftButton);
    EXPECT_TRUE(workspace->isVisible());
    EXPECT_FALSE(m_window->isVisible());
    EXPECT_EQ(workspace->design().device(), "ZV32F403ACCT7");
    EXPECT_TRUE(m_prompt.requests.isEmpty());

    // The language switched there holds here too.
    workspace->Chinese_Action_Triggered();
    m_prompt.otherwise = 1; // the design need not be saved
    workspace->NewProject_Action_Triggered();
    EXPECT_FALSE(workspace->isVisible());
    EXPECT_TRUE(m_window->isVisible());
    EXPECT_EQ(languageBox()->currentIndex(), UI_CH);
    ASSERT_TRUE(button(QString::fromUtf8("最近的设计")));
    EXPECT_EQ(m_window->focusWidget(), m_window->findChild<DeviceSelection *>()->focusProxy())
        << "for the next device, though a button was pressed last";

    // Another device, whose description is missing: the workspace comes up empty, and it is said.
    m_prompt.requests.clear();
    emit m_window->findChild<DeviceSelection *>()->deviceChosen("ZV32F407", "ZV32F407RGT7", "LQFP64");
    EXPECT_TRUE(workspace->isVisible());
    ASSERT_EQ(m_prompt.requests.size(), 1);
    EXPECT_EQ(m_prompt.requests[0].text, "The description of the device cannot be read.");
    EXPECT_TRUE(m_prompt.requests[0].detail.contains("ZV32F407RGT7.xml"));
}

TEST_F(MainWindowTest, OnePageIsUnfoldedAtATime)
{
    open();
    auto *devices = m_window->findChild<DeviceSelection *>();
    auto *recent = m_window->findChild<RecentDesignsPage *>();
    EXPECT_TRUE(devices->isVisible());
    EXPECT_FALSE(recent->isVisible());
    QTest::mouseClick(button("Recent Designs"), Qt::LeftButton);
    EXPECT_FALSE(devices->isVisible());
    EXPECT_TRUE(recent->isVisible());
    QTest::mouseClick(button("Start a new Design"), Qt::LeftButton);
    EXPECT_TRUE(devices->isVisible());
    EXPECT_FALSE(recent->isVisible());
}

TEST_F(MainWindowTest, RecentDesignsAreListedAndRemoved)
{
    write("resentlyProject.xml", "<Root><ResentlyProject><FilePath>/d/a.zvwp;2026-01-02 03:04:05</FilePath>"
                                 "<FilePath>/d/b &amp; c.zvwp;2026-01-01 00:00:00</FilePath></ResentlyProject></Root>");
    open();
    QTest::mouseClick(button("Recent Designs"), Qt::LeftButton);
    const auto entries = [this] {
        QStringList texts;
        for (const QLabel *label : m_window->findChild<RecentDesignsPage *>()->findChildren<QLabel *>()) {
            if (label->text().contains("-----"))
                texts.append(label->text());
        }
        return texts;
    };
    EXPECT_EQ(entries(), QStringList({"/d/a.zvwp-----2026-01-02 03:04:05", "/d/b & c.zvwp-----2026-01-01 00:00:00"}));

    QLabel *first = nullptr;
    for (QLabel *label : m_window->findChild<RecentDesignsPage *>()->findChildren<QLabel *>()) {
        if (label->text().startsWith("/d/a"))
            first = label;
    }
    emit first->customContextMenuRequested(QPoint(2, 2));
    auto *menu = m_window->findChild<RecentDesignsPage *>()->findChild<QMenu *>();
    ASSERT_TRUE(menu);
    menu->actions().first()->trigger();
    menu->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(entries(), QStringList("/d/b & c.zvwp-----2026-01-01 00:00:00"));
    QFile file(m_folder.filePath("resentlyProject.xml"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("a.zvwp"));
}

using NewDesignSelectTest = MainWindowTest;

TEST_F(NewDesignSelectTest, BoxesFollowEachOtherAndTheButtonTakesTheDevice)
{
    const DeviceCatalogue catalogue(m_xml.GetProductLinesList());
    New_Design_Select dialog(catalogue, m_xml);
    QList<QComboBox *> boxes = dialog.findChildren<QComboBox *>(); // line, series, device, search in tab order
    ASSERT_EQ(boxes.size(), 4);
    const auto texts = [&] {
        QStringList texts;
        for (const QLineEdit *field : dialog.findChildren<QLineEdit *>()) {
            if (field->isReadOnly())
                texts.append(field->text());
        }
        return texts;
    };
    const auto box = [&](const QString &item) {
        for (QComboBox *candidate : boxes) {
            if (!candidate->isEditable() && candidate->findText(item) >= 0)
                return candidate;
        }
        return static_cast<QComboBox *>(nullptr);
    };
    ASSERT_TRUE(box("ZV32F421F8P7"));
    box("Main Line")->setCurrentText("Main Line");
    ASSERT_TRUE(box("ZV32F407"));
    ASSERT_TRUE(box("ZV32F403AVGT7"));
    box("ZV32F407")->setCurrentText("ZV32F407");
    EXPECT_TRUE(texts().contains("Max: 224KB    Default: 96KB"));
    EXPECT_TRUE(texts().contains("LQFP64"));

    for (QComboBox *search : boxes) {
        if (search->isEditable())
            QTest::keyClicks(search->lineEdit(), "f421k");
    }
    EXPECT_TRUE(texts().contains("LQFP32"));
    EXPECT_TRUE(dialog.Get_MCUName().isEmpty());
    for (QPushButton *ok : dialog.findChildren<QPushButton *>()) {
        if (ok->text() == "Ok")
            QTest::mouseClick(ok, Qt::LeftButton);
    }
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.Get_MCUSerialName(), "ZV32F421");
    EXPECT_EQ(dialog.Get_MCUName(), "ZV32F421K6T7");
    EXPECT_EQ(dialog.Get_MCUPackage(), "LQFP32");
}

} // namespace
