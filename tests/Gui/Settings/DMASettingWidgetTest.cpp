#include "Gui/Settings/DMASettingWidget.h"

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/DmaFixture.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Gui/Modes/ModePage.h"
#include "Gui/Settings/DMAParameterArea.h"
#include "Gui/Settings/DMASettingModel.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class DMASettingWidgetTest : public ::testing::Test
{
protected:
    DMASettingWidgetTest() { EXPECT_TRUE(design.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48")); }

    void apply(const QString &setting)
    {
        EXPECT_TRUE(design.apply(*DesignChange::fromSetting(setting))) << setting.toStdString();
    }

    std::unique_ptr<DMASettingWidget> open(const QString &instance = {})
    {
        auto widget = std::make_unique<DMASettingWidget>(design, *design.dma(), instance);
        widget->resize(600, 700);
        widget->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
        return widget;
    }

    /// The editor that is open in the table.
    static QComboBox *editor(const DMASettingWidget &widget)
    {
        return widget.table()->view()->viewport()->findChild<QComboBox *>();
    }

    static void choose(QComboBox *box, const QString &text)
    {
        ASSERT_TRUE(box);
        const int index = box->findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        box->setCurrentIndex(index);
        emit box->activated(index);
    }

    static QString cell(const DMASettingWidget &widget, int row, int column)
    {
        return widget.model()->index(row, column).data().toString();
    }

    static bool canEdit(const DMASettingWidget &widget, int row, int column)
    {
        return widget.model()->flags(widget.model()->index(row, column)).testFlag(Qt::ItemIsEditable);
    }

    ScriptedPrompt prompt;
    Design design{AppPaths(CHIPLOOM_BIN_DIR, CHIPLOOM_BIN_DIR), prompt};
};

TEST_F(DMASettingWidgetTest, AFreshRowAsksForARequestAndGetsAChannel)
{
    apply("mode/USART1/Mode=Asynchronous");
    const auto page = open();
    const auto tab = open("USART1");
    QTest::mouseClick(tab->addButton(), Qt::LeftButton);
    ASSERT_EQ(tab->model()->rowCount(), 1);
    EXPECT_EQ(cell(*tab, 0, 0), "Select");
    EXPECT_FALSE(canEdit(*tab, 0, 1));
    ASSERT_TRUE(editor(*tab));
    EXPECT_EQ(editor(*tab)->findText("MEMTOMEM"), -1) << "a peripheral offers its own requests only";
    choose(editor(*tab), "USART1_TX");
    EXPECT_EQ(cell(*tab, 0, 0), "USART1_TX");
    EXPECT_EQ(cell(*tab, 0, 1), "DMA1_Channel2");
    EXPECT_EQ(cell(*tab, 0, 2), "Memory to peripheral");
    EXPECT_FALSE(canEdit(*tab, 0, 2)) << "the request fixes its direction";
    EXPECT_EQ(page->model()->rowCount(), 1) << "taken in one table, taken in all";
    EXPECT_EQ(tab->parameterArea()->groupTitles(), (QStringList{"DMA Request Settings", "Interrupt Settings"}));

    // From the keyboard, and taken away again.
    page->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(page.get()));
    page->table()->view()->setFocus();
    QTest::keyClick(page->table()->view(), Qt::Key_Insert);
    choose(editor(*page), "USART1_RX");
    EXPECT_EQ(tab->model()->rowCount(), 2);
    QTest::keyClick(page->table()->view(), Qt::Key_Delete);
    EXPECT_EQ(cell(*page, 0, 0), "USART1_TX");
    EXPECT_EQ(page->model()->rowCount(), 1);
    EXPECT_EQ(page->table()->selectedRows(), QVector<int>{0}) << "for the next press of the key";
    EXPECT_TRUE(prompt.requests.isEmpty());
}

TEST_F(DMASettingWidgetTest, WhatCannotBeHadIsToldInABox)
{
    struct Told
    {
        QString text;
        QStringList arguments;
    };
    const auto told = [this] {
        EXPECT_EQ(prompt.requests.size(), 1);
        const PromptRequest request = prompt.requests.isEmpty() ? PromptRequest() : prompt.requests.takeFirst();
        EXPECT_EQ(request.title, "Error");
        EXPECT_EQ(request.buttons, QStringList{"OK"});
        return Told{request.text, request.textArguments};
    };
    const auto page = open();
    const auto tab = open("USART1");
    QTest::mouseClick(tab->addButton(), Qt::LeftButton);
    EXPECT_EQ(told().text, "No available DMA requests for configurated peripherals!");
    EXPECT_EQ(tab->model()->rowCount(), 0);

    apply("mode/USART1/Mode=Asynchronous");
    apply("mode/SPI1/Mode=Full_Duplex_Master");
    apply("dma/any=SPI1_RX");
    QTest::mouseClick(tab->addButton(), Qt::LeftButton);
    choose(editor(*tab), "USART1_TX");
    const Told refused = told();
    EXPECT_EQ(filledText(refused.text, refused.arguments),
              "No available channel for configurated DMA Request! DMA1_Channel2/DMA1_Channel4 has been used");
    EXPECT_EQ(cell(*tab, 0, 0), "Select") << "the row asks again";

    for (int i = 0; i < 4; ++i)
        apply("dma/any=MEMTOMEM");
    QTest::mouseClick(page->addButton(), Qt::LeftButton);
    EXPECT_EQ(told().text, "No available DMA channels for configurated peripherals!");
}

TEST_F(DMASettingWidgetTest, OneEditReachesAllSelectedRequests)
{
    apply("mode/USART1/Mode=Asynchronous");
    apply("dma/any=USART1_TX");
    apply("dma/any=MEMTOMEM");
    apply("dma/any=MEMTOMEM");
    const auto page = open();
    page->table()->view()->selectAll();
    choose(page->parameterArea()->box("Priority"), "High");
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(cell(*page, row, 3), "High");
    page->table()->setForSelection(page->table()->viewIndex(0, 3), "DMA_PRIORITY_VERY_HIGH", Qt::EditRole);
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(cell(*page, row, 3), "Very high");
    EXPECT_EQ(page->table()->copiedText().section('\n', 0, 1),
              "DMA Request\tChannel\tDirection\tPriority\nUSART1_TX\tDMA1_Channel2\tMemory to peripheral\tVery high");
    // What a memory transfer cannot do stays with those that can.
    page->table()->selectRow(0);
    choose(page->parameterArea()->box("Mode"), "Circular");
    page->table()->view()->selectAll();
    EXPECT_TRUE(page->parameterArea()->box("Mode")->isEnabled());
    page->table()->filterField()->setText("memtomem");
    EXPECT_EQ(page->table()->view()->model()->rowCount(), 2);
    page->table()->view()->selectAll();
    QTest::mouseClick(page->deleteButton(), Qt::LeftButton);
    page->table()->filterField()->clear();
    EXPECT_EQ(page->model()->rowCount(), 1);
    EXPECT_TRUE(prompt.requests.isEmpty());
}

TEST_F(DMASettingWidgetTest, ANarrowTableOfStreamsLeavesColumnsAwayInsteadOfScrolling)
{
    ASSERT_TRUE(design.NewDesign("ZV32F437", "ZV32F437ZMT7", "LQFP144"));
    apply("edma/any=MEMTOMEM");
    DMASettingWidget page(design, *design.edma(), QString());
    page.show();
    const QHeaderView *header = page.table()->view()->horizontalHeader();
    page.resize(600, 600);
    EXPECT_FALSE(header->isSectionHidden(3));
    EXPECT_TRUE(header->isSectionHidden(7));
    EXPECT_LE(header->length(), page.table()->view()->viewport()->width());
    page.resize(1400, 600);
    EXPECT_FALSE(header->isSectionHidden(7));
    EXPECT_LE(header->length(), page.table()->view()->viewport()->width());
}

TEST_F(DMASettingWidgetTest, ThePageOfAPeripheralHasATabWhileItIsOn)
{
    ModePage page(design, *design.peripheral("USART1"), PeripheralsBaseInfo());
    page.show();
    const auto titles = [&] {
        QStringList list;
        for (int i = 0; i < page.tabs()->count(); ++i)
            list.append(page.tabs()->tabText(i));
        return list;
    };
    EXPECT_FALSE(titles().contains("DMA Settings"));
    apply("mode/USART1/Mode=Asynchronous");
    EXPECT_EQ(titles().indexOf("DMA Settings"), 1);
    apply("mode/USART1/Mode=");
    EXPECT_FALSE(titles().contains("DMA Settings"));
}

TEST_F(DMASettingWidgetTest, AStreamShowsTheGroupsThatAreOn)
{
    const ChipLoom::Test::DmaFixture fixture;
    Design streams(fixture.paths(), prompt);
    ASSERT_TRUE(streams.NewDesign(fixture.Series, fixture.Device, fixture.Package));
    const auto apply = [&](const QString &setting) { streams.apply(*DesignChange::fromSetting(setting)); };
    apply("mode/DVP/On=TRUE");
    apply("edma/any=DVP");
    DMASettingWidget widget(streams, *streams.edma(), "DVP");
    widget.show();
    widget.table()->selectRow(0);
    EXPECT_EQ(widget.model()->columnCount(), 8);
    EXPECT_EQ(widget.model()->headerData(0, Qt::Horizontal, Qt::DisplayRole), "EDMA Request");
    EXPECT_EQ(
        widget.parameterArea()->groupTitles(),
        (QStringList{"EDMA Request Settings", "Double memory mode", "Two-dimensional mode",
                     "Linked table transfer Mode", "EDMA Request Synchronization Settings", "Interrupt Settings"}));
    EXPECT_FALSE(widget.parameterArea()->field("XAxisCount"));
    choose(widget.parameterArea()->box("2DMode"), "TRUE");
    QLineEdit *count = widget.parameterArea()->field("XAxisCount");
    ASSERT_TRUE(count);
    count->selectAll();
    QTest::keyClicks(count, "40");
    QTest::keyClick(count, Qt::Key_Return);
    EXPECT_EQ(count->text(), "1") << "out of range, and said so";
    count->selectAll();
    QTest::keyClicks(count, "16");
    QTest::keyClick(count, Qt::Key_Return);
    EXPECT_EQ(count->text(), "16");
    EXPECT_FALSE(canEdit(widget, 0, 5)) << "no threshold without the FIFO";
    choose(widget.parameterArea()->box("FIFOMode"), "TRUE");
    EXPECT_TRUE(canEdit(widget, 0, 5));
}

} // namespace
