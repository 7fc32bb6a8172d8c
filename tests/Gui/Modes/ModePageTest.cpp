#include "Gui/Modes/ModePage.h"

#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Gui/Modes/IP_ParamSettingWidget.h"
#include "Gui/Modes/ModeArea.h"
#include "Gui/Modes/OneParamWidget.h"
#include "Gui/ScriptedPrompt.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class ModePageTest : public testing::Test
{
protected:
    ModePageTest() : design(AppPaths(CHIPLOOM_BIN_DIR, CHIPLOOM_BIN_DIR), prompt)
    {
        EXPECT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403ARGT7", "LQFP64"));
    }

    std::unique_ptr<ModePage> open(const QString &instance)
    {
        auto page = std::make_unique<ModePage>(design, *design.peripheral(instance), PeripheralsBaseInfo());
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
    EXPECT_TRUE(page->noteLine()->text().contains("too large for BaudRate")) << page->noteLine()->text().toStdString();
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

TEST_F(ModePageTest, TheSearchNarrowsTheParametersAndResetAsksFirst)
{
    const auto page = open("USART1");
    choose(page->modeArea()->comboBox("Mode"), 1);
    OneParamWidget *baud = page->parameterList()->row("BaudRate");
    QTest::keyClicks(page->parameterList()->searchField(), "no such parameter");
    EXPECT_FALSE(baud->isVisible());
    page->parameterList()->searchField()->clear();
    EXPECT_TRUE(baud->isVisible());

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
        if (IP_ModeAndConfiguration *peripheral = design.peripheral(part->instanceName())) {
            ModePage page(design, *peripheral, peripheral->baseInfo());
            page.show();
            for (const auto &control : peripheral->controls()) {
                if (control->itemCanbeChoosed(1) && !control->isOn())
                    peripheral->chooseItem(control->modeName(),
                                           control->isCheckBox() ? "TRUE" : control->items().front().Name);
            }
        }
    }
    EXPECT_TRUE(design.scheduler().drain());
    design.clear();
}

} // namespace
