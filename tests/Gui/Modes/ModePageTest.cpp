#include "Gui/Modes/ModePage.h"

#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Gui/ChipView/ChipView.h"
#include "Gui/Modes/IP_ParamSettingWidget.h"
#include "Gui/Modes/ModeArea.h"
#include "Gui/Modes/OneParamWidget.h"
#include "Gui/Workspace/PeripheralPage.h"
#include "Middlewares/Middlewares.h"
#include "ScriptedPrompt.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class ModePageTest : public testing::Test
{
protected:
    ModePageTest() : design(AppPaths(CHIPLOOM_BIN_DIR, CHIPLOOM_BIN_DIR), prompt)
    {
        registerMiddlewares(design);
        EXPECT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403ARGT7", "LQFP64"));
    }

    std::unique_ptr<ModePage> open(const QString &instance)
    {
        auto page = std::make_unique<ModePage>(design, *design.module(instance), PeripheralsBaseInfo());
        page->resize(420, 700);
        page->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(page.get()));
        return page;
    }

    static void choose(QComboBox *box, int index)
    {
        box->setFocus();
        box->setCurrentIndex(index);
        emit box->activated(index);
    }

    static bool isOffered(QComboBox *box, int index)
    {
        return qobject_cast<QStandardItemModel *>(box->model())->item(index)->isEnabled();
    }

    ScriptedPrompt prompt;
    Design design;
};

TEST_F(ModePageTest, AModeBringsItsPinsItsParametersAndTheNextMode)
{
    const auto page = open("USART1");
    QComboBox *mode = page->modeArea()->comboBox("Mode");
    QComboBox *flow = page->modeArea()->comboBox("Hardware_Flow_Control");
    ASSERT_TRUE(mode);
    EXPECT_EQ(page->tabs()->count(), 1) << "no parameters while it is off";
    ASSERT_TRUE(flow);
    EXPECT_FALSE(flow->isEnabled());

    choose(mode, 1);
    EXPECT_EQ(page->tabs()->tabText(0), "Parameters Settings");
    EXPECT_TRUE(page->parameterList()->row("BaudRate"));
    EXPECT_TRUE(design.peripheral("USART1")->GetIPValidFlag());
    EXPECT_TRUE(flow->isEnabled());

    choose(mode, 0);
    EXPECT_EQ(page->tabs()->count(), 1);
    EXPECT_FALSE(design.peripheral("USART1")->GetIPValidFlag());
}

TEST_F(ModePageTest, AValueOutOfRangeIsRefusedWithItsLimitAndPutBack)
{
    const auto page = open("USART1");
    choose(page->modeArea()->comboBox("Mode"), 1);
    QLineEdit *field = page->parameterList()->row("BaudRate")->valueField();
    field->selectAll();
    QTest::keyClicks(field, "9600");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(design.scheduler().drain());
    EXPECT_EQ(page->parameterList()->row("BaudRate")->valueField()->text(), "9600");

    field = page->parameterList()->row("BaudRate")->valueField();
    field->selectAll();
    QTest::keyClicks(field, "999999999");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(field->text(), "9600");
    EXPECT_TRUE(page->noteLine()->text().contains("too large for Baud rate")) << page->noteLine()->text().toStdString();
}

TEST_F(ModePageTest, ATakenPinClosesTheEntryAndSaysWhoHoldsIt)
{
    const auto page = open("USART1");
    QComboBox *mode = page->modeArea()->comboBox("Mode");
    ASSERT_TRUE(isOffered(mode, 1));
    for (const char *pin : {"PA9", "PA10", "PB6", "PB7"})
        ASSERT_TRUE(design.apply(DesignChange::placeSignal(pin, "GPIO_Output")));
    EXPECT_FALSE(isOffered(mode, 1));
    const QString hint = mode->itemData(1, Qt::ToolTipRole).toString();
    EXPECT_TRUE(hint.startsWith("Conflict with:")) << hint.toStdString();
    EXPECT_TRUE(hint.contains("GPIO_Output")) << hint.toStdString();
}

TEST_F(ModePageTest, APinThatIsTakenFromAModeIsSaidBesideTheDrawing)
{
    ChipView view(design);
    QStringList asked;
    QObject::connect(&view, &ChipView::moduleAsked, &view, [&](const QString &module) { asked.append(module); });
    const auto usart = open("USART1");
    choose(usart->modeArea()->comboBox("Mode"), 1);
    EXPECT_TRUE(view.noteLine()->isHidden());
    ASSERT_TRUE(design.apply(DesignChange::placeSignal("PC0", "GPIO_Output")));
    EXPECT_TRUE(view.noteLine()->isHidden()) << "nobody needs that pin";
    ASSERT_TRUE(design.apply(DesignChange::placeSignal("PA9", "GPIO_Output")));
    EXPECT_FALSE(view.noteLine()->isHidden());
    EXPECT_TRUE(view.noteLine()->text().contains("USART1 lost a pin. Off now: Mode (Asynchronous)"))
        << view.noteLine()->text().toStdString();
    emit view.noteLine()->linkActivated("USART1");
    EXPECT_EQ(asked, QStringList("USART1"));
    choose(usart->modeArea()->comboBox("Mode"), 1);
    EXPECT_TRUE(view.noteLine()->isHidden()) << "it is on again, on another pin";
}

TEST_F(ModePageTest, ALineOnAnAnalogPinSaysThatItSeesNothing)
{
    const auto lines = open("EXINT");
    ASSERT_TRUE(design.apply(DesignChange::placeSignal("PA1", "EXINT1")));
    EXPECT_TRUE(lines->noteLine()->isHidden());
    ASSERT_TRUE(design.apply({"mode", "ADC1/IN1", "TRUE"}));
    EXPECT_TRUE(lines->noteLine()->text().contains("EXINT1 sees no edges: ADC1_IN1 makes PA1 an analog pin."))
        << lines->noteLine()->text().toStdString();
    ASSERT_TRUE(design.apply({"mode", "ADC1/IN1", "FALSE"}));
    EXPECT_TRUE(lines->noteLine()->isHidden());

    const auto power = open("PWC");
    ASSERT_TRUE(design.apply({"mode", "PWC/WKUP1", "TRUE"}));
    EXPECT_TRUE(power->noteLine()->isHidden());
    ASSERT_TRUE(design.apply({"mode", "ADC1/IN0", "TRUE"}));
    EXPECT_FALSE(power->noteLine()->isHidden());
}

// What happens elsewhere is asked for when the page is shown, and when pins change beside it.
TEST_F(ModePageTest, ATriggerThatNobodyGivesIsMarkedUntilItIsGiven)
{
    ASSERT_TRUE(design.apply({"mode", "ADC1/IN1", "TRUE"}));
    ASSERT_TRUE(design.apply({"param", "ADC1/OrdinaryTriggerSource", "ADC12_ORDINARY_TRIG_TMR2CH2"}));
    design.scheduler().drain();
    const auto page = open("ADC1");
    OneParamWidget *trigger = page->parameterList()->row("OrdinaryTriggerSource");
    ASSERT_TRUE(trigger);
    EXPECT_TRUE(trigger->warningLine()->text().contains("No timer gives TMR2CH2 now"))
        << trigger->warningLine()->text().toStdString();
    EXPECT_FALSE(page->tabs()->tabIcon(0).isNull());
    page->hide();
    ASSERT_TRUE(design.apply({"mode", "TMR2/Activated", "TRUE"}));
    ASSERT_TRUE(design.apply({"mode", "TMR2/Channel2_mode", "PWM_Generation_No_Output"}));
    page->show();
    EXPECT_EQ(trigger->warningLine()->text(), "");
    EXPECT_TRUE(page->tabs()->tabIcon(0).isNull());
    for (const char *mode : {"Disable", "PWM_Generation"})
        ASSERT_TRUE(design.apply({"mode", "TMR2/Channel2_mode", mode}));
    design.scheduler().drain();
    EXPECT_EQ(trigger->warningLine()->text(), "");
    ASSERT_TRUE(design.apply({"pin", "PB3", ""})) << "its pin is taken away in the drawing";
    design.scheduler().drain();
    EXPECT_NE(trigger->warningLine()->text(), "");
    EXPECT_FALSE(page->tabs()->tabIcon(0).isNull());
}

TEST_F(ModePageTest, AClosedEntryLeadsToWhoHoldsIt)
{
    const auto usart = open("USART1");
    QStringList asked;
    const auto follow = [&](ModePage &page) {
        QObject::connect(&page, &ModePage::moduleAsked, &page,
                         [&asked](const QString &module) { asked.append(module); });
    };
    follow(*usart);
    const auto trigger = [](QMenu *menu, const QString &text) {
        for (QAction *action : menu->actions()) {
            if (action->text() == text && action->isEnabled())
                action->trigger();
        }
        delete menu;
    };

    QMenu *open1 = usart->modeArea()->explanationMenu("Mode");
    EXPECT_TRUE(open1->isEmpty()) << "nothing is closed";
    delete open1;
    ASSERT_TRUE(design.apply({"mode", "TMR1/Activated", "TRUE"}));
    for (const char *pin : {"PA9", "PA10", "PB6", "PB7"})
        ASSERT_TRUE(design.apply(DesignChange::placeSignal(pin, "GPIO_Output")));
    trigger(usart->modeArea()->explanationMenu("Mode"), "Show GPIO");
    EXPECT_TRUE(asked.contains("GPIO"));

    // The timer that SYSTEM uses as its time base, and SYSTEM while the timer is active.
    asked.clear();
    const auto system = open("SYSTEM");
    follow(*system);
    trigger(system->modeArea()->explanationMenu("Time_Base"), "Show TMR1");
    EXPECT_EQ(asked, QStringList("TMR1"));
    ASSERT_TRUE(design.apply({"mode", "SYSTEM/Time_Base", "TMR6"}));
    const auto timer = open("TMR6");
    follow(*timer);
    EXPECT_FALSE(timer->modeArea()->checkBox("Activated")->isEnabled());
    EXPECT_EQ(timer->modeArea()->checkBox("Activated")->toolTip(),
              "SYSTEM uses this timer as its time base\nTo be changed in: SYSTEM");
    trigger(timer->modeArea()->explanationMenu("Activated"), "Show SYSTEM");
    EXPECT_EQ(asked, QStringList({"TMR1", "SYSTEM"}));
}

TEST_F(ModePageTest, AClosedValueLeadsToWhatOpensIt)
{
    ASSERT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
    ASSERT_TRUE(design.apply({"mode", "TMR16/Activated", "TRUE"}));
    ASSERT_TRUE(design.apply({"mode", "TMR16/Channel1_mode", "PWM_Generation_No_Output"}));
    ASSERT_TRUE(design.apply({"mode", "TMR17/Activated", "TRUE"}));
    const auto page = open("IRTMR");
    QCheckBox *activated = page->modeArea()->findChild<QCheckBox *>();
    ASSERT_TRUE(activated);
    activated->click();
    OneParamWidget *source = page->parameterList()->row("IR_Source");
    ASSERT_TRUE(source);
    QComboBox *box = source->valueBox();
    const int port = box->findData("SCFG_IR_SOURCE_USART1");
    EXPECT_FALSE(isOffered(box, port));
    EXPECT_EQ(box->itemData(port, Qt::ToolTipRole).toString(), "USART1 is off\nTo be changed in: USART1");
    QString asked;
    QObject::connect(page.get(), &ModePage::moduleAsked, page.get(), [&](const QString &module) { asked = module; });
    std::unique_ptr<QMenu> menu(source->explanationMenu());
    for (QAction *action : menu->actions()) {
        if (action->text() == "Show USART1")
            action->trigger();
    }
    EXPECT_EQ(asked, "USART1");
    ASSERT_TRUE(design.apply({"mode", "USART1/Mode", "Asynchronous"}));
    EXPECT_TRUE(design.scheduler().drain());
    EXPECT_TRUE(isOffered(box, port));
}

TEST_F(ModePageTest, ALanguageLosesNothingThatIsShown)
{
    const auto page = open("USART1");
    choose(page->modeArea()->comboBox("Mode"), 1);
    ASSERT_TRUE(design.apply({"param", "USART1/BaudRate", "9600"}));
    ASSERT_TRUE(design.apply({"base", "USART1/BaudRate", "16"}));
    EXPECT_TRUE(design.scheduler().drain());
    for (const LANGUAGE language : {UI_CH, UI_EN}) {
        GlobalLanguage::g_CurrentLanguage = language;
        design.updateLanguage();
        EXPECT_TRUE(design.scheduler().drain());
        const auto again = open("USART1");
        for (const ModePage *shown : {page.get(), again.get()}) {
            EXPECT_EQ(shown->modeArea()->comboBox("Mode")->currentIndex(), 1);
            OneParamWidget *baud = shown->parameterList()->row("BaudRate");
            ASSERT_TRUE(baud);
            EXPECT_EQ(baud->valueField()->text(), "0x2580");
            EXPECT_EQ(baud->labelText() == "Baud rate", language == UI_EN) << baud->labelText().toStdString();
        }
    }
}

TEST_F(ModePageTest, AKernelOnSysTickLinksToItsConflict)
{
    ASSERT_TRUE(design.apply({"mode", "FREERTOS/Activated", "TRUE"}));
    const auto page = open("FREERTOS");
    EXPECT_EQ(page->tabs()->tabText(0), "Parameters Settings");
    QString asked;
    QObject::connect(page.get(), &ModePage::moduleAsked, page.get(), [&](const QString &module) { asked = module; });
    EXPECT_TRUE(page->noteLine()->text().contains("<a href=\"SYSTEM\">")) << page->noteLine()->text().toStdString();
    emit page->noteLine()->linkActivated("SYSTEM");
    EXPECT_EQ(asked, "SYSTEM");
    ASSERT_TRUE(design.apply({"mode", "SYSTEM/Time_Base", "TMR6"}));
    EXPECT_FALSE(page->noteLine()->isVisible());
}

TEST_F(ModePageTest, WhatIsOutOfSightIsMadeLater)
{
    ASSERT_TRUE(design.apply({"mode", "FREERTOS/Activated", "TRUE"}));
    const auto page = open("FREERTOS");
    QStringList wanted;
    for (const RefParameter &parameter : design.module("FREERTOS")->parameters().GetRefParameterList()) {
        if (parameter.Visible)
            wanted.append(parameter.Name);
    }
    const auto shown = [&] {
        QStringList names;
        for (const OneParamWidget *row : page->parameterList()->findChildren<OneParamWidget *>())
            names.append(row->isVisible() ? row->parameterName() : "hidden " + row->parameterName());
        return names;
    };
    for (int round = 0; round < 1000 && shown().size() < wanted.size(); ++round)
        QApplication::processEvents();
    QStringList names = shown();
    EXPECT_GT(names.size(), 30) << "more than are in sight";
    names.sort();
    wanted.sort();
    EXPECT_EQ(names, wanted);

    EXPECT_FALSE(page->tabs()->findChild<PeripheralPage *>());
    page->tabs()->setCurrentIndex(page->tabs()->count() - 1);
    EXPECT_TRUE(qobject_cast<PeripheralPage *>(page->tabs()->currentWidget()));
    EXPECT_EQ(page->tabs()->tabText(page->tabs()->currentIndex()), "About");
}

TEST_F(ModePageTest, TheNarrowestPageCutsNoParameter)
{
    ASSERT_TRUE(design.apply({"mode", "TMR1/Activated", "TRUE"}));
    ASSERT_TRUE(design.apply({"mode", "USART1/Mode", "Asynchronous"}));
    for (const char *instance : {"TMR1", "USART1"}) {
        const auto page = open(instance);
        const QString widest = QLatin1String(instance) == "TMR1" ? "Period" : "BaudRate";
        OneParamWidget *row = page->parameterList()->row(widest);
        ASSERT_TRUE(row);
        QApplication::processEvents();
        page->resize(page->minimumSizeHint().width(), 700);
        QApplication::processEvents();
        auto *area = page->parameterList()->findChild<QScrollArea *>();
        EXPECT_LE(area->widget()->width(), area->viewport()->width()) << instance;
        EXPECT_GE(row->valueField()->width(), 60);
        EXPECT_LT(page->width(), 420) << "what the window gives a page";
    }
}

TEST_F(ModePageTest, TheWheelChangesNothingOnItsWay)
{
    const auto page = open("USART1");
    QComboBox *mode = page->modeArea()->comboBox("Mode");
    const auto turn = [](QComboBox *box) {
        QWheelEvent event({5, 5}, box->mapToGlobal({5, 5}), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &event);
    };
    page->parameterList()->searchField()->setFocus();
    turn(mode);
    EXPECT_EQ(mode->currentIndex(), 0);
    choose(mode, 1);
    QComboBox *parity = page->parameterList()->row("Parityselection")->valueBox();
    const int before = parity->currentIndex();
    ASSERT_LT(before + 1, parity->count());
    turn(parity);
    EXPECT_EQ(parity->currentIndex(), before);
    QApplication::setActiveWindow(page.get());
    parity->setFocus();
    turn(parity);
    EXPECT_NE(parity->currentIndex(), before) << "where the user is, it chooses";
}

TEST_F(ModePageTest, AnyUnitLeavesTheFieldsInOneColumn)
{
    ASSERT_TRUE(design.apply({"mode", "FREERTOS/Activated", "TRUE"}));
    const auto page = open("FREERTOS");
    const auto rightEnd = [&](const QWidget *field) { return field->mapTo(page.get(), QPoint(field->width(), 0)).x(); };
    const OneParamWidget *heap = page->parameterList()->row("TOTAL_HEAP_SIZE");
    QApplication::processEvents();
    EXPECT_EQ(rightEnd(heap->baseBox()), rightEnd(page->parameterList()->row("Memory_allocation")->valueBox()))
        << "bytes";
}

TEST_F(ModePageTest, TheModesTakeWhatTheyNeedUntilTheLineIsDrawn)
{
    const auto shares = [](ModePage &page) { return page.findChild<QSplitter *>()->sizes(); };
    const auto scrolls = [](ModePage &page) {
        const QScrollArea *area = qobject_cast<QScrollArea *>(page.modeArea()->parentWidget()->parentWidget());
        return area->verticalScrollBar()->maximum() > 0;
    };
    const auto page = open("USART1");
    const int needed = shares(*page).first();
    EXPECT_FALSE(scrolls(*page));
    EXPECT_LT(needed, 700 / 4);
    const auto timer = open("TMR1");
    EXPECT_TRUE(scrolls(*timer));
    EXPECT_GT(shares(*timer).first(), 700 / 4);

    page->noteLine()->setText("A note");
    page->noteLine()->show();
    QApplication::processEvents();
    EXPECT_GT(shares(*page).first(), needed);
    EXPECT_FALSE(scrolls(*page)) << "the note takes its line from the parameters";

    // The modes of one line have a least height, which goes before what the note needs.
    const auto oneMode = open("WDT");
    oneMode->noteLine()->setText(QStringLiteral("A note that takes a few lines. ").repeated(6));
    oneMode->noteLine()->show();
    QApplication::processEvents();
    EXPECT_GE(oneMode->noteLine()->height(), oneMode->noteLine()->heightForWidth(oneMode->noteLine()->width()));

    auto *line = page->findChild<QSplitter *>();
    line->setSizes({300, 400});
    emit line->splitterMoved(300, 1); // as a drag does
    page->resize(420, 710);
    EXPECT_GT(shares(*page).first(), 250);
}

TEST_F(ModePageTest, AFieldShowsItsRangeAndWhyAnEntryIsWrong)
{
    const auto page = open("USART1");
    choose(page->modeArea()->comboBox("Mode"), 1);
    OneParamWidget *row = page->parameterList()->row("BaudRate");
    QLineEdit *field = row->valueField();
    QApplication::setActiveWindow(page.get());
    field->setFocus();
    ASSERT_TRUE(row->entryHint());
    EXPECT_TRUE(row->entryHint()->isVisible());
    EXPECT_EQ(row->entryHint()->text(), "120 to 15000000");
    field->selectAll();
    QTest::keyClicks(field, "7");
    EXPECT_TRUE(row->entryHint()->text().contains("too small for Baud rate")) << row->entryHint()->text().toStdString();
    ASSERT_TRUE(design.apply({"param", "USART1/UART_Printf", "TRUE"}));
    EXPECT_TRUE(design.scheduler().drain());
    EXPECT_EQ(field->text(), "7") << "what is being typed stays";
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(field->text(), "115200");
    EXPECT_TRUE(row->entryHint()->text().contains("too small for Baud rate")) << "the reason stays beside the field";
    field->selectAll();
    QTest::keyClicks(field, "x");
    EXPECT_EQ(row->entryHint()->text(), "\"x\" is no value for Baud rate. Allowed: 120 to 15000000.");
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(field->text(), "115200");
    EXPECT_FALSE(field->isModified());
    page->modeArea()->comboBox("Mode")->setFocus();
    EXPECT_FALSE(row->entryHint()->isVisible());

    row->baseBox()->setCurrentIndex(1);
    emit row->baseBox()->activated(1);
    EXPECT_EQ(field->text(), "0x1C200");
    EXPECT_TRUE(design.isModified());
}

TEST_F(ModePageTest, TheSearchNarrowsTheParametersAndResetAsksFirst)
{
    const auto page = open("USART1");
    choose(page->modeArea()->comboBox("Mode"), 1);
    OneParamWidget *baud = page->parameterList()->row("BaudRate");
    QTest::keyClicks(page->parameterList()->searchField(), "no such parameter");
    EXPECT_FALSE(baud->isVisible());
    page->parameterList()->searchField()->clear();
    EXPECT_TRUE(baud->isVisible());
    QPushButton *group = nullptr;
    for (QPushButton *header : page->parameterList()->findChildren<QPushButton *>()) {
        if (header->isCheckable() && header->parentWidget()->isAncestorOf(baud))
            group = header;
    }
    ASSERT_TRUE(group);
    group->click();
    EXPECT_FALSE(baud->isVisible());
    QTest::keyClicks(page->parameterList()->searchField(), "baudrate");
    EXPECT_TRUE(baud->isVisible()) << "a folded group opens for what is found in it";
    page->parameterList()->searchField()->clear();
    EXPECT_FALSE(baud->isVisible());

    ASSERT_TRUE(design.apply({"param", "USART1/BaudRate", "9600"}));
    QPushButton *reset = nullptr;
    for (QPushButton *button : page->findChildren<QPushButton *>()) {
        if (button->text() == "Reset Configuration")
            reset = button;
    }
    ASSERT_TRUE(reset);
    prompt.answers = {1, 0};
    reset->click();
    EXPECT_EQ(design.peripheral("USART1")->parameters().parameter("BaudRate")->CurrentValue, "9600");
    reset->click();
    EXPECT_EQ(design.peripheral("USART1")->parameters().parameter("BaudRate")->CurrentValue, "115200");
}

TEST_F(ModePageTest, EveryPageOfTheDeviceOpensAndClosesWithItsDesign)
{
    for (const auto &part : design.parts()) {
        if (ModuleConfiguration *module = design.module(part->instanceName())) {
            ModePage page(design, *module, module->baseInfo());
            page.show();
            for (const auto &control : module->controls()) {
                if (control->itemCanbeChoosed(1) && !control->isOn())
                    module->chooseItem(control->modeName(),
                                       control->isCheckBox() ? "TRUE" : control->items().front().Name);
            }
        }
    }
    EXPECT_TRUE(design.scheduler().drain());
    design.clear();
}

} // namespace
