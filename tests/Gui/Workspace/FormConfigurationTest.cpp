#include "Gui/Workspace/FormConfiguration.h"

#include "Gui/App/Language.h"
#include "Gui/ChipView/ChipScene.h"
#include "Gui/ChipView/ChipView.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/Clock/ZV32MCUPLLView.h"
#include "Gui/Clock/ZV32PLLConfigPage.h"
#include "Gui/DesignFixture.h"
#include "Gui/ScriptedFiles.h"
#include "Gui/Widgets/SearchBox.h"
#include "Gui/Widgets/SearchField.h"
#include "Gui/Workspace/ConfigurationPane.h"
#include "Gui/Workspace/PeripheralPage.h"
#include "Gui/Workspace/PeripheralsConfig.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTest>
#include <QTranslator>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

const QString Series = QStringLiteral("ZV32F403A");
const QString Small = QStringLiteral("SMALL");
const QString Package = QStringLiteral("LQFP8");

class FormConfigurationTest : public testing::Test
{
protected:
    FormConfigurationTest() : settings(fixture.xml(), prompt), window(fixture.xml(), settings, prompt)
    {
        window.setFileChooser(files);
        QApplication::installTranslator(&translator);
        window.SetQTranslator(&translator);
    }
    ~FormConfigurationTest() override
    {
        QApplication::removeTranslator(&translator);
        GlobalLanguage::g_CurrentLanguage = UI_EN;
    }

    QAction *action(const QString &text) const
    {
        for (QAction *action : window.findChildren<QAction *>()) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }

    QStringList treeTexts() const
    {
        QStringList texts;
        for (QTreeWidgetItemIterator item(window.moduleTree()->tree()); *item; ++item)
            texts.append((*item)->text(0));
        return texts;
    }

    DesignFixture fixture;
    ScriptedPrompt prompt;
    ScriptedFiles files;
    Settings settings;
    QTranslator translator;
    FormConfiguration window;
};

TEST_F(FormConfigurationTest, ShowsTheDeviceItsModulesAndTheirPins)
{
    ASSERT_TRUE(window.NewDesign(Series, Small, Package));
    window.show();
    EXPECT_TRUE(window.windowTitle().endsWith(QStringLiteral("  SMALL  "))) << window.windowTitle().toStdString();
    EXPECT_EQ(treeTexts(), QStringList({"Peripherals", "System", "GPIO", "NVIC", "Communication", "USART1",
                                        "Middlewares", "RTOS", "FREERTOS"}));
    EXPECT_EQ(window.chipView()->scene()->pinItems().size(), 8);

    window.moduleTree()->choose(QStringLiteral("USART1"));
    EXPECT_EQ(window.configurationPane()->shownModule(), QStringLiteral("USART1"));
    EXPECT_EQ(window.design().pins().search().markedPositions(), QSet<int>({2, 3, 4, 5}));
    const auto titled = [this](const QString &text) {
        const QList<QLabel *> labels = window.configurationPane()->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel *label) {
            return label->isVisible() && (label->text() == text || label->toolTip() == text);
        });
    };
    EXPECT_TRUE(titled(QStringLiteral("Mode and Configuration USART1")));
    EXPECT_TRUE(titled(QStringLiteral("No Mode Settings!")));
    auto *page = window.configurationPane()->shownPage()->findChild<PeripheralPage *>();
    ASSERT_TRUE(page);
    ASSERT_EQ(page->signalTable()->topLevelItemCount(), 2);
    const QTreeWidgetItem *tx = page->signalTable()->topLevelItem(1);
    EXPECT_EQ(tx->text(0), QStringLiteral("USART1_TX"));
    EXPECT_EQ(tx->text(2), QStringLiteral("PA9, PB6, PB7"));
    EXPECT_EQ(tx->text(1), QString());
    window.design().apply(DesignChange::placeSignal(QStringLiteral("PB6"), QStringLiteral("USART1_TX")));
    EXPECT_EQ(tx->text(1), QStringLiteral("PB6"));
}

TEST_F(FormConfigurationTest, TheClockPageBelongsToTheDesign)
{
    window.NewDesign(Series, Small, Package);
    window.show();
    const auto button = [this](const QString &text) {
        const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
        return *std::find_if(buttons.begin(), buttons.end(),
                             [&text](const QPushButton *button) { return button->text() == text; });
    };
    QPushButton *clock = button(QStringLiteral("Clock Configuration"));
    EXPECT_FALSE(window.clockPage()->view()) << "made when first shown";
    QTest::mouseClick(clock, Qt::LeftButton);
    ASSERT_TRUE(window.clockPage()->view());
    EXPECT_TRUE(clock->property("chosen").toBool());
    EXPECT_FALSE(button(QStringLiteral("Pin out && Configuration"))->property("chosen").toBool());
    EXPECT_FALSE(window.design().isModified());

    const DesignSnapshot before = window.design().snapshot();
    auto *ahb = qobject_cast<QComboBox *>(window.clockPage()->view()->control(ClockField::AhbDiv));
    QTest::keyClick(ahb, Qt::Key_Down);
    EXPECT_TRUE(window.design().isModified());
    EXPECT_EQ(window.design().clock().Get_AHBCLK(), 120.0);
    ASSERT_TRUE(window.design().restore(before));
    EXPECT_EQ(window.design().clock().Get_AHBCLK(), 240.0);
    EXPECT_EQ(ahb->currentText(), QStringLiteral("/1"));

    // 240 MHz divided by 2 is more than the ADC stands.
    EXPECT_TRUE(clock->icon().isNull());
    window.design().clock().SetADC1Flag(true);
    QTest::keyClick(window.clockPage()->view()->control(ClockField::AdcDiv), Qt::Key_Home);
    EXPECT_FALSE(clock->icon().isNull());
    window.NewDesign(Series, Small, Package);
    EXPECT_TRUE(clock->icon().isNull());
    EXPECT_EQ(window.design().clock().Get_AHBCLK(), 240.0);
    window.DeleteOldConfigWidget();
    EXPECT_FALSE(window.clockPage()->view());
}

TEST_F(FormConfigurationTest, KeysAndMenuReachTheDrawingInSight)
{
    window.NewDesign(Series, Small, Package);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto scales = [this] {
        return QPair<double, double>(window.chipView()->view()->scaleFactor(),
                                     window.clockPage()->view()->getGraphicsView()->scaleFactor());
    };
    const auto zoomWithKeys = [this] {
        QTest::keyClick(&window, Qt::Key_0, Qt::ControlModifier);
        QTest::keyClick(&window, Qt::Key_Plus, Qt::ControlModifier);
    };
    const auto zoomEntries = [this] {
        QAction *reset = action(QStringLiteral("Reset All Configurations"));
        const QList<QAction *> entries = qobject_cast<QMenu *>(reset->parent())->actions();
        return std::count_if(entries.begin(), entries.end(),
                             [](const QAction *entry) { return entry->text() == QStringLiteral("Zoom in"); });
    };
    window.ClockConfig_PushButton_Clicked();
    const double chip = scales().first;
    zoomWithKeys();
    EXPECT_EQ(scales().first, chip);
    EXPECT_NEAR(scales().second, 1.2, 1e-6);
    EXPECT_EQ(zoomEntries(), 1);
    window.PINConfig_PushButton_Clicked();
    zoomWithKeys();
    EXPECT_NEAR(scales().first, 1.2, 1e-6);
    EXPECT_EQ(zoomEntries(), 1);
}

TEST_F(FormConfigurationTest, ResetAsksAndTellsInTheFixedWords)
{
    window.NewDesign(Series, Small, Package);
    window.design().apply(DesignChange::placeSignal(QStringLiteral("PA9"), QStringLiteral("USART1_TX")));
    prompt.answers = {1};
    action(QStringLiteral("Reset All Configurations"))->trigger();
    ASSERT_EQ(prompt.requests.size(), 1);
    EXPECT_EQ(prompt.requests.first().title, QStringLiteral("Warning"));
    EXPECT_EQ(prompt.requests.first().text,
              QStringLiteral("The current all configurations will be reset. Please confirm whether to continue?"));
    EXPECT_EQ(prompt.requests.first().buttons, QStringList({"Yes", "Cancel"}));
    EXPECT_EQ(window.design().pins().GetPinConfigedDisplayText(2), QStringLiteral("USART1_TX"));

    prompt.answers = {0};
    action(QStringLiteral("Reset All Configurations"))->trigger();
    ASSERT_EQ(prompt.requests.size(), 3);
    EXPECT_EQ(prompt.requests.last().title, QStringLiteral("Information"));
    EXPECT_EQ(prompt.requests.last().text, QStringLiteral("Reset succeed!"));
    EXPECT_EQ(window.design().pins().GetPinConfigedDisplayText(2), QString());
}

TEST_F(FormConfigurationTest, ADesignGoesOnlyWhenItMay)
{
    const struct
    {
        int answer; // "Yes1", "No", "Cancel"
        bool saves;
        bool goes;
    } rows[] = {{0, true, true}, {0, false, false}, {1, false, true}, {2, true, false}};
    for (const auto &row : rows) {
        files.asked = 0;
        files.answer = row.saves ? fixture.path() + QStringLiteral("/Saved") : QString();
        window.NewDesign(Series, Small, Package);
        window.show();
        prompt.requests.clear();
        prompt.answers = {row.answer};
        EXPECT_EQ(window.close(), row.goes);
        ASSERT_EQ(prompt.requests.size(), 1);
        EXPECT_EQ(prompt.requests.first().kind, PromptRequest::Kind::Question);
        EXPECT_EQ(prompt.requests.first().title, QStringLiteral("Question"));
        EXPECT_EQ(prompt.requests.first().text,
                  QStringLiteral("The current design will be closed. Would you like to save the design?"));
        EXPECT_EQ(prompt.requests.first().buttons, QStringList({"Yes1", "No", "Cancel"}));
        EXPECT_EQ(files.asked, row.answer == 0);

        window.show();
        int asked = 0;
        const auto connection =
            QObject::connect(&window, &FormConfiguration::Send_NewDesign_Signal, &window, [&] { ++asked; });
        prompt.answers = {row.answer};
        action(QStringLiteral("New Design"))->trigger();
        EXPECT_EQ(prompt.requests.last().text,
                  QStringLiteral("The current design will be closed before creating a new design. Would you like to "
                                 "save the design?"));
        EXPECT_EQ(asked, row.goes);
        EXPECT_EQ(window.isVisible(), !row.goes);
        QObject::disconnect(connection);
    }
}

TEST_F(FormConfigurationTest, AnotherLanguageChangesTextsAndKeepsTheDesign)
{
    window.NewDesign(Series, Small, Package);
    window.design().apply(DesignChange::placeSignal(QStringLiteral("PA9"), QStringLiteral("USART1_TX")));
    window.design().apply(DesignChange::labelPin(QStringLiteral("PA9"), QStringLiteral("LOG")));
    window.moduleTree()->choose(QStringLiteral("USART1"));
    action(QStringLiteral("Chinese"))->trigger();
    EXPECT_EQ(GlobalLanguage::g_CurrentLanguage, UI_CH);
    EXPECT_EQ(treeTexts().first(), QStringLiteral("外设"));
    EXPECT_TRUE(treeTexts().contains(QStringLiteral("通信"))) << "the title of a group";
    EXPECT_TRUE(treeTexts().contains(QStringLiteral("System"))) << "a group without a title";
    EXPECT_EQ(window.moduleTree()->chosen(), QStringLiteral("USART1"));
    ASSERT_TRUE(window.configurationPane()->shownPage());
    QStringList texts;
    for (const QLabel *label : window.configurationPane()->shownPage()->findChildren<QLabel *>())
        texts.append(label->text());
    EXPECT_TRUE(texts.contains(QStringLiteral("串口"))) << texts.join(' ').toStdString();
    EXPECT_EQ(window.design().pins().GetPinConfigedDisplayText(2), QStringLiteral("LOG"));
    EXPECT_EQ(settings.value(QStringLiteral("Language")), QStringLiteral("UI_CH"));
    EXPECT_TRUE(action(QStringLiteral("新建设计")));
    action(QStringLiteral("英文"))->trigger();
    EXPECT_EQ(treeTexts().first(), QStringLiteral("Peripherals"));
}

TEST_F(FormConfigurationTest, ARenewedPageShowsTheTabAndTheSearchesOfBefore)
{
    ConfigurationPane pane([](const PeripheralsBaseInfo &) {
        auto *page = new QWidget;
        auto *tabs = new QTabWidget(page);
        // A tab has its field once it was shown.
        QObject::connect(tabs, &QTabWidget::currentChanged, tabs, [tabs] {
            QWidget *shown = tabs->currentWidget();
            if (!shown->findChild<SearchField *>())
                new SearchField(QString(), shown);
        });
        for (const char *title : {"First", "Second", "Third"})
            tabs->addTab(new QWidget, QLatin1String(title));
        return page;
    });
    PeripheralsBaseInfo timer;
    timer.InstanceName = QStringLiteral("TMR1");
    const auto tabs = [&pane] { return pane.shownPage()->findChild<QTabWidget *>(); };
    const auto search = [&tabs](int tab) {
        tabs()->setCurrentIndex(tab);
        return tabs()->currentWidget()->findChild<SearchField *>();
    };
    pane.showModule(timer, timer.InstanceName);
    search(0)->setText(QStringLiteral("period"));
    search(2)->setText(QStringLiteral("PA9"));
    search(1);
    pane.renewPages();
    pane.renewPages(); // twice before it is looked at again
    pane.showModule(timer, timer.InstanceName);
    EXPECT_EQ(tabs()->currentIndex(), 1);
    pane.renewPages();
    pane.showModule(timer, timer.InstanceName);
    EXPECT_EQ(tabs()->currentIndex(), 1);
    EXPECT_EQ(search(0)->text(), QStringLiteral("period"));
    EXPECT_EQ(search(1)->text(), QString());
    EXPECT_EQ(search(2)->text(), QStringLiteral("PA9")) << "not shown in the meantime";
    pane.clearPages();
    pane.showModule(timer, timer.InstanceName);
    EXPECT_EQ(tabs()->currentIndex(), 0) << "of another design";
    EXPECT_EQ(search(0)->text(), QString());
}

TEST_F(FormConfigurationTest, ALargePageScrollsAndDoesNotWidenOrHeightenTheWindow)
{
    ConfigurationPane pane([](const PeripheralsBaseInfo &module) {
        auto *page = new QWidget;
        auto *content = new QWidget;
        content->setMinimumSize(module.InstanceName == QLatin1String("ADC1") ? QSize(400, 900) : QSize(300, 100));
        (new QVBoxLayout(page))->addWidget(content);
        return page;
    });
    PeripheralsBaseInfo large, small;
    large.InstanceName = QStringLiteral("ADC1");
    small.InstanceName = QStringLiteral("CRC");
    const QString title = QStringLiteral("a title that is longer than the pane is wide ").repeated(5);
    pane.showModule(small, title);
    const QSize least = pane.minimumSizeHint();
    pane.showModule(large, title);
    QApplication::processEvents();
    EXPECT_EQ(pane.minimumSizeHint().height(), least.height());
    EXPECT_LT(least.height(), 300);
    EXPECT_GE(pane.minimumSizeHint().width(), 400) << "nothing is cut";
    pane.showModule(small, title);
    QApplication::processEvents();
    EXPECT_EQ(pane.minimumSizeHint(), least) << "a page out of sight asks for nothing";
}

TEST_F(FormConfigurationTest, TabLeadsFromTheTreeThroughThePageToTheDrawing)
{
    ASSERT_TRUE(window.NewDesign(Series, Small, Package));
    window.show();
    ASSERT_TRUE(window.moduleTree()->choose(QStringLiteral("USART1")));
    window.moduleTree()->tree()->setFocus();
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(window.focusWidget(), key, with);
        return window.focusWidget();
    };
    int fields = 0;
    for (; window.configurationPane()->isAncestorOf(press(Qt::Key_Tab)); ++fields)
        EXPECT_FALSE(qobject_cast<QScrollArea *>(window.focusWidget())) << "it would not show that it has the focus";
    EXPECT_GT(fields, 0);
    EXPECT_TRUE(window.chipView()->isAncestorOf(window.focusWidget()));
    for (; fields > 0; --fields)
        EXPECT_TRUE(window.configurationPane()->isAncestorOf(press(Qt::Key_Backtab, Qt::ShiftModifier)));
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ShiftModifier), window.moduleTree()->tree());
}

TEST_F(FormConfigurationTest, TheSearchKeyMeansWhatThePageHasToSearch)
{
    ConfigurationPane pane([](const PeripheralsBaseInfo &module) {
        auto *page = new QWidget;
        auto *layout = new QVBoxLayout(page);
        auto *box = new QComboBox;
        box->addItem(QStringLiteral("Disable"));
        layout->addWidget(box);
        auto *tabs = new QTabWidget;
        layout->addWidget(tabs);
        if (module.InstanceName == QLatin1String("TMR1")) {
            for (const char *title : {"First", "Second"})
                tabs->addTab(new SearchField(QString()), QLatin1String(title));
            tabs->setCurrentIndex(1);
        }
        return page;
    });
    pane.show();
    PeripheralsBaseInfo module;
    const auto pressFind = [&pane] {
        auto *box = pane.shownPage()->findChild<QComboBox *>();
        box->setFocus();
        QKeyEvent question(QEvent::ShortcutOverride, Qt::Key_F, Qt::ControlModifier);
        question.ignore();
        QApplication::sendEvent(box, &question);
        return question.isAccepted();
    };
    module.InstanceName = QStringLiteral("CRM");
    pane.showModule(module, module.InstanceName);
    EXPECT_FALSE(pressFind()) << "left to the search of the chip";
    module.InstanceName = QStringLiteral("TMR1");
    pane.showModule(module, module.InstanceName);
    EXPECT_TRUE(pressFind());
    EXPECT_EQ(pane.focusWidget(), pane.shownPage()->findChild<QTabWidget *>()->currentWidget());
}

TEST_F(FormConfigurationTest, OpensWithWhatADamagedDeviceFileHas)
{
    QByteArray many = "<D><a term=\"MCUBaseInfo\"><b Package=\"WLCSP\" PinNums=\"4\"/></a><a term=\"PeripheralsList\">";
    for (int i = 0; i < 200; ++i)
        many += "<i InstanceName=\"X" + QByteArray::number(i) + "\" GroupName=\"G" + QByteArray::number(i % 7) + "\"/>";
    many += "</a></D>";
    fixture.addDevice(QStringLiteral("MANY"), many);
    QByteArray noPins = DesignFixture::smallDevice();
    noPins.replace("PinsList", "NoPins");
    fixture.addDevice(QStringLiteral("PINLESS"), noPins);
    fixture.addDevice(QStringLiteral("CUT"), DesignFixture::smallDevice().left(700));
    const struct
    {
        const char *device;
        int pins;
        int modules;
    } rows[] = {{"MANY", 0, 200}, {"PINLESS", 8, 4}, {"CUT", 0, 0}, {"MISSING", 0, 0}, {"SMALL", 8, 4}};
    window.show();
    for (const auto &row : rows) {
        window.NewDesign(Series, QLatin1String(row.device), Package);
        EXPECT_EQ(window.chipView()->scene()->pinItems().size(), row.pins) << row.device;
        EXPECT_EQ(window.design().peripherals().size() + window.design().middlewares().size(), row.modules)
            << row.device;
    }
}

TEST_F(FormConfigurationTest, AHundredDesignsLeaveNothingBehind)
{
    window.show();
    const auto round = [&] {
        window.NewDesign(Series, Small, Package);
        window.moduleTree()->choose(QStringLiteral("USART1"));
        window.chipView()->searchBox()->setEditText(QStringLiteral("PA"));
        window.chipView()->QueryEditingFinished();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.findChildren<QObject *>().size() + window.chipView()->scene()->items().size();
    };
    round();
    const int objects = round();
    for (int i = 0; i < 100; ++i)
        round();
    EXPECT_EQ(round(), objects);
    window.DeleteOldConfigWidget();
    EXPECT_TRUE(window.chipView()->scene()->items().isEmpty());
    EXPECT_TRUE(window.design().scheduler().isIdle());
    EXPECT_FALSE(window.configurationPane()->shownPage());
}

} // namespace
