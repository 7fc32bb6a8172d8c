#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Gui/Modes/ModePage.h"
#include "Gui/Settings/GPIOSettingModel.h"
#include "Gui/Settings/GPIOSettingWidget.h"
#include "Gui/Settings/GPIO_ConfigurationPage.h"
#include "Gui/Settings/Interrupt_Settings.h"
#include "Gui/Settings/LabelField.h"
#include "Gui/Settings/NVICSettingModel.h"
#include "Gui/Settings/NVIC_Settings.h"
#include "Gui/Widgets/ListedComboBox.h"
#include "Gui/Widgets/SettingsTable.h"
#include "ScriptedPrompt.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

class SettingsPagesTest : public testing::Test
{
protected:
    SettingsPagesTest() : design(AppPaths(CHIPLOOM_BIN_DIR, CHIPLOOM_BIN_DIR), prompt)
    {
        EXPECT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403ARGT7", "LQFP64"));
        for (const QString setting : {"pin/PA0=GPIO_Output", "pin/PA1=GPIO_Output", "pin/PA2=GPIO_Input",
                                      "pin/PA10=GPIO_Output", "mode/USART1/Mode=Asynchronous"})
            EXPECT_TRUE(design.apply(*DesignChange::fromSetting(setting))) << setting.toStdString();
    }

    template <typename Page> std::unique_ptr<Page> shown(std::unique_ptr<Page> page)
    {
        page->resize(800, 500);
        page->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(page.get()));
        return page;
    }

    std::unique_ptr<GPIO_ConfigurationPage> pins() { return shown(std::make_unique<GPIO_ConfigurationPage>(design)); }
    std::unique_ptr<NVIC_Settings> interrupts() { return shown(std::make_unique<NVIC_Settings>(design, QString())); }

    static QPoint centre(const SettingsTable &table, const QModelIndex &cell)
    {
        return table.view()->visualRect(cell).center();
    }

    static void click(const SettingsTable &table, const QModelIndex &cell, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(table.view()->viewport(), Qt::LeftButton, keys, centre(table, cell));
    }

    // The indicator stands at the left of a cell without text.
    static void tick(const SettingsTable &table, const QModelIndex &cell)
    {
        const QRect rect = table.view()->visualRect(cell);
        for (int x = rect.left() + 4; x < rect.right(); x += 4) {
            const QVariant before = cell.data(Qt::CheckStateRole);
            QTest::mouseClick(table.view()->viewport(), Qt::LeftButton, {}, {x, rect.center().y()});
            if (cell.data(Qt::CheckStateRole) != before)
                return;
        }
        FAIL() << "the cell has no tick";
    }

    QString value(const QString &pin, const QString &name) const
    {
        return GPIO_Configuration::setting(*design.gpio()->row(pin), name)->CurrentValue;
    }

    static QStringList column(const SettingsTable &table, int number)
    {
        QStringList texts;
        const QAbstractItemModel &model = *table.view()->model();
        for (int row = 0; row < model.rowCount(); ++row)
            texts.append(model.index(row, number).data().toString());
        return texts;
    }

    ScriptedPrompt prompt;
    Design design;
};

TEST_F(SettingsPagesTest, OneEditByKeyboardReachesAllSelectedRows)
{
    const auto page = pins();
    SettingsTable &table = *page->settings()->table();
    GPIOSettingModel &model = *page->settings()->model();
    int pull = -1;
    for (int i = 0; i < design.gpio()->settings().size(); ++i) {
        if (design.gpio()->settings().at(i).Name == "GPIO_PullType")
            pull = model.settingColumn(i);
    }
    click(table, table.viewIndex(model.rowOf("PA0"), pull));
    click(table, table.viewIndex(model.rowOf("PA2"), pull), Qt::ControlModifier);
    EXPECT_EQ(table.selectedRows().size(), 2);
    QTest::keyClick(table.view(), Qt::Key_F2);
    auto *editor = table.view()->findChild<QComboBox *>();
    ASSERT_TRUE(editor) << "a choice opens a box";
    editor->setCurrentIndex(editor->findText("Pull-up"));
    emit editor->activated(editor->currentIndex());
    EXPECT_EQ(value("PA0", "GPIO_PullType"), "GPIO_PULL_UP");
    EXPECT_EQ(value("PA2", "GPIO_PullType"), "GPIO_PULL_UP");
    EXPECT_EQ(value("PA1", "GPIO_PullType"), "GPIO_PULL_NONE");
    EXPECT_EQ(model.index(model.rowOf("PA0"), model.modifiedColumn()).data(Qt::CheckStateRole).toInt(), Qt::Checked);

    // The rows differ, and a choice that is opened and left says nothing about them.
    ASSERT_TRUE(design.apply({"gpio", "PA2/GPIO_PullType", "GPIO_PULL_DOWN"}));
    QTest::keyClick(table.view(), Qt::Key_F2);
    editor = table.view()->findChild<QComboBox *>();
    ASSERT_TRUE(editor);
    QApplication::processEvents(); // the list opens
    editor->hidePopup();
    table.filterField()->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(value("PA0", "GPIO_PullType"), "GPIO_PULL_UP");
    EXPECT_EQ(value("PA2", "GPIO_PullType"), "GPIO_PULL_DOWN");
    table.view()->setFocus();

    // A setting that one of the rows lacks goes to the others.
    QComboBox *type = page->settings()->settingBox("GPIO_OutputType");
    table.selectRow(model.rowOf("PA0"));
    click(table, table.viewIndex(model.rowOf("PA2"), 1), Qt::ControlModifier);
    table.view()->selectionModel()->setCurrentIndex(table.viewIndex(model.rowOf("PA0"), 1),
                                                    QItemSelectionModel::NoUpdate);
    ASSERT_TRUE(type->isEnabled());
    type->setCurrentIndex(1);
    emit type->activated(1);
    EXPECT_EQ(value("PA0", "GPIO_OutputType"), "GPIO_OUTPUT_OPEN_DRAIN");
    EXPECT_EQ(value("PA1", "GPIO_OutputType"), "GPIO_OUTPUT_PUSH_PULL");

    QTest::keyClick(table.view(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 4) << "headers, two rows and the last line break";
    EXPECT_TRUE(lines.at(0).startsWith("Pin Name\tSignal on Pin\t"));
    EXPECT_TRUE(lines.at(1).startsWith("PA0\tGPIO_Output\t"));
    EXPECT_TRUE(lines.at(1).endsWith("\tYes"));
}

TEST_F(SettingsPagesTest, RowsAreFilteredSortedAndKeptSelectedWhenOthersCome)
{
    const auto page = pins();
    SettingsTable &table = *page->settings()->table();
    const QStringList natural = column(table, 0);
    const auto clickHeader = [&] {
        QHeaderView *header = table.view()->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {header->sectionViewportPosition(0) + 20, 8});
        return column(table, 0);
    };
    const QStringList ascending = clickHeader();
    EXPECT_LT(ascending.indexOf("PA2"), ascending.indexOf("PA10")) << "numbers as numbers";
    QStringList reversed = ascending;
    std::reverse(reversed.begin(), reversed.end());
    EXPECT_EQ(clickHeader(), reversed);
    EXPECT_EQ(clickHeader(), ascending);
    EXPECT_NE(natural.size(), 0);

    click(table, table.viewIndex(page->settings()->model()->rowOf("PA2"), 1));
    EXPECT_EQ(design.pins().search().hits(), QSet<int>{design.gpio()->row("PA2")->signalInPinNum});

    page->settings()->ReceivePinCurrentSignal("GPIO_Output", design.gpio()->row("PA10")->signalInPinNum);
    EXPECT_EQ(table.selectedRows(), QVector<int>{page->settings()->model()->rowOf("PA10")});

    table.filterField()->setText("gpio_in");
    EXPECT_EQ(column(table, 0), QStringList("PA2"));
    table.filterField()->clear();

    table.selectRow(page->settings()->model()->rowOf("PA1"));
    ASSERT_TRUE(design.apply(DesignChange::placeSignal("PA3", "GPIO_Analog")));
    ASSERT_EQ(table.selectedRows().size(), 1);
    EXPECT_EQ(page->settings()->model()->rowKey(table.selectedRows().first()), "PA1");
}

TEST_F(SettingsPagesTest, ATextThatIsCutIsReadInTheToolTip)
{
    const auto tip = [](QWidget *widget, const QPoint &place) {
        QHelpEvent asks(QEvent::ToolTip, place, widget->mapToGlobal(place));
        QApplication::sendEvent(widget, &asks);
        const QString text = QToolTip::text();
        QToolTip::hideText();
        return text;
    };
    const auto page = interrupts();
    SettingsTable &table = *page->table();
    const QModelIndex cell = table.viewIndex(page->model()->rowOf("USART1_IRQn"), NVICSettingModel::NameColumn);
    const QString name = cell.data().toString();
    table.view()->scrollTo(cell);
    table.view()->setColumnWidth(cell.column(), 400);
    EXPECT_TRUE(tip(table.view()->viewport(), centre(table, cell)).startsWith("USART1_IRQn"));
    table.view()->setColumnWidth(cell.column(), 30);
    EXPECT_TRUE(tip(table.view()->viewport(), centre(table, cell)).startsWith(name + "\nUSART1_IRQn"));

    QWidget row;
    row.setToolTip("<b>Mode</b>");
    ListedComboBox box(&row);
    box.addItem("A text that needs more");
    box.resize(60, 24);
    EXPECT_EQ(tip(&box, {5, 5}), "<p>A text that needs more</p><b>Mode</b>");
}

TEST_F(SettingsPagesTest, ColumnsKeepToTheWidthOfTheTableUntilOneIsDrawn)
{
    const auto page = interrupts();
    QTableView *view = page->table()->view();
    const QHeaderView *header = view->horizontalHeader();
    const auto widths = [&](int pageWidth) {
        page->resize(pageWidth, 500);
        QVector<int> sizes;
        for (int column = 0; column < header->count(); ++column)
            sizes.append(header->sectionSize(column));
        return sizes;
    };
    const QVector<int> wide = widths(1000);
    const int lowHeader = header->height();
    EXPECT_EQ(header->length(), view->viewport()->width());
    const auto labels = pins();
    EXPECT_GT(labels->settings()->table()->view()->columnWidth(labels->settings()->model()->labelColumn()),
              view->fontMetrics().horizontalAdvance("LED_GREEN"))
        << "before there is one";

    // The widest one gives first.
    int closer = 1000;
    while (closer > 300 && widths(closer).first() == wide.first())
        closer -= 10;
    EXPECT_LT(widths(closer).first(), wide.first());
    EXPECT_EQ(header->length(), view->viewport()->width());
    EXPECT_EQ(widths(closer).mid(1, 3), wide.mid(1, 3));

    const QVector<int> narrow = widths(250);
    EXPECT_GT(header->length(), view->viewport()->width());
    EXPECT_LT(narrow.first(), wide.first()) << "what does not fit shows as much as it can";
    EXPECT_EQ(narrow.at(1), wide.at(1));
    EXPECT_LT(narrow.at(2), wide.at(2)) << "its title stands in three lines";
    EXPECT_GT(header->height(), lowHeader);
    EXPECT_EQ(narrow.at(3), wide.at(3));

    // What the RTOS leaves nothing to choose of gives its place to what it brings.
    design.nvic()->Set_Fixed_NVICPriorityGroup(4);
    design.nvic()->SetFREERTOSEnableFlag(true);
    EXPECT_FALSE(view->isColumnHidden(NVICSettingModel::RtosColumn));
    EXPECT_TRUE(view->isColumnHidden(NVICSettingModel::SubColumn));
    widths(1000);
    EXPECT_FALSE(view->isColumnHidden(NVICSettingModel::SubColumn));

    view->horizontalHeader()->resizeSection(0, 90); // as a drag does
    EXPECT_EQ(widths(300).first(), 90);
    EXPECT_EQ(widths(1000).first(), 90);
    EXPECT_EQ(header->length(), view->viewport()->width());
}

TEST_F(SettingsPagesTest, ALabelIsCheckedAtEveryKeystrokeAndTheReasonToldOnce)
{
    const auto page = pins();
    GPIOSettingWidget &settings = *page->settings();
    EXPECT_FALSE(settings.labelField()->isEnabled()) << "no row is selected";
    settings.table()->selectRow(settings.model()->rowOf("PA0"));
    settings.labelField()->setFocus();
    QTest::keyClicks(settings.labelField(), "1");
    EXPECT_EQ(settings.labelField()->text(), "");
    QApplication::processEvents();
    ASSERT_EQ(prompt.requests.size(), 1);
    EXPECT_EQ(prompt.requests.first().text,
              "Label must be letters/numbers/underscores, and start with a letter or an underscore.");
    EXPECT_EQ(prompt.requests.first().title, "Error");
    EXPECT_EQ(prompt.requests.first().buttons, QStringList("Ok"));
    QTest::keyClicks(settings.labelField(), "LED 2-a");
    QApplication::processEvents();
    EXPECT_EQ(settings.labelField()->text(), "LED2a");
    EXPECT_EQ(prompt.requests.size(), 1);
    EXPECT_EQ(design.gpio()->row("PA0")->signalUserLabel, "LED2a");
    settings.labelField()->selectAll();
    QTest::keyClick(settings.labelField(), Qt::Key_Delete);
    EXPECT_EQ(design.gpio()->row("PA0")->signalUserLabel, "");

    // A cell of the table is checked alike.
    settings.table()->view()->setCurrentIndex(
        settings.table()->viewIndex(settings.model()->rowOf("PA1"), settings.model()->labelColumn()));
    QTest::keyClick(settings.table()->view(), Qt::Key_F2);
    auto *editor = settings.table()->view()->findChild<LabelField *>();
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, "KEY-1");
    EXPECT_EQ(editor->text(), "KEY1");
    QApplication::processEvents();
    EXPECT_EQ(prompt.requests.size(), 2);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(design.gpio()->row("PA1")->signalUserLabel, "KEY1");
}

TEST_F(SettingsPagesTest, TheBoxChoosesWhosePinsAreShown)
{
    const auto page = pins();
    QComboBox *box = page->showTypeBox();
    box->setCurrentIndex(box->findData("USART1"));
    emit box->activated(box->currentIndex());
    EXPECT_EQ(column(*page->settings()->table(), 1), QStringList({"USART1_TX", "USART1_RX"}));
    ASSERT_TRUE(design.apply({"mode", "USART1/Mode", ""}));
    EXPECT_EQ(box->currentText(), "USART1") << "empty, but still what is shown";
    EXPECT_TRUE(column(*page->settings()->table(), 1).isEmpty());
}

TEST_F(SettingsPagesTest, OneTickReachesAllSelectedVectors)
{
    ASSERT_TRUE(design.apply({"mode", "USART3/Mode", "Asynchronous"}));
    ASSERT_TRUE(design.apply({"nvic", "ShowType", "0"}));
    const auto page = interrupts();
    SettingsTable &table = *page->table();
    const auto cell = [&](const QString &vector, int column) {
        return table.viewIndex(page->model()->rowOf(vector), column);
    };
    table.view()->scrollToBottom();
    click(table, cell("USART1_IRQn", 0));
    click(table, cell("USART3_IRQn", 0), Qt::ControlModifier);
    tick(table, cell("USART3_IRQn", NVICSettingModel::EnabledColumn));
    EXPECT_TRUE(design.nvic()->vector("USART1_IRQn")->enabledFlag);
    EXPECT_TRUE(design.nvic()->vector("USART3_IRQn")->enabledFlag);
    EXPECT_EQ(table.selectedRows().size(), 2);

    table.view()->setCurrentIndex(cell("USART1_IRQn", NVICSettingModel::HandlerColumn));
    QTest::keyClick(table.view(), Qt::Key_Space);
    EXPECT_FALSE(design.nvic()->vector("USART1_IRQn")->IRQHandler_Generate_enabledFlag);
    EXPECT_TRUE(design.nvic()->vector("USART3_IRQn")->IRQHandler_Generate_enabledFlag) << "not selected any more";

    QComboBox *show = page->showTypeBox();
    show->setCurrentText("Enabled interrupts");
    emit show->activated(show->currentIndex());
    EXPECT_TRUE(page->model()->rowOf("USART1_IRQn") >= 0);
    EXPECT_EQ(page->model()->rowOf("CRM_IRQn"), -1);
}

TEST_F(SettingsPagesTest, ThePriorityGroupLimitsWhatABoxOffersAndTheRtosFixesIt)
{
    const auto page = interrupts();
    QComboBox *group = page->priorityGroupBox();
    const auto offered = [&](int column) {
        const int row = page->model()->rowOf("SysTick_IRQn");
        return page->model()->index(row, column).data(SettingsModel::ChoicesRole).value<SettingsChoices>().size();
    };
    group->setCurrentIndex(1);
    emit group->activated(1);
    EXPECT_EQ(offered(NVICSettingModel::PreemptionColumn), 2);
    EXPECT_EQ(offered(NVICSettingModel::SubColumn), 8);
    EXPECT_EQ(page->model()->columnCount(), NVICSettingModel::RtosColumn);
    design.nvic()->ReceiveSemaphore("FREERTOS", {"Semaphore_FREERTOS"}, true);
    EXPECT_EQ(page->model()->columnCount(), NVICSettingModel::RtosColumn + 1);
    EXPECT_FALSE(group->isEnabled());
    EXPECT_EQ(group->currentIndex(), 4);
    design.nvic()->ReceiveSemaphore("FREERTOS", {"Semaphore_FREERTOS"}, false);
    EXPECT_EQ(group->currentIndex(), 1);
}

// Beneath the table of vectors and that of events.
TEST_F(SettingsPagesTest, AnEventWithoutAVectorIsToldOf)
{
    const auto vectors = shown(std::make_unique<NVIC_Settings>(design, "USART1"));
    const auto events = shown(std::make_unique<Interrupt_Settings>(design, *design.peripheral("USART1")));
    const auto told = [](const QWidget &page) {
        const QList<QLabel *> labels = page.findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
            return label->isVisible() && label->text().contains("USART1_IRQn");
        });
    };
    EXPECT_FALSE(told(*vectors));
    ASSERT_TRUE(design.apply({"param", "USART1/Interrupt_RDBF", "TRUE"}));
    EXPECT_TRUE(told(*vectors));
    EXPECT_TRUE(told(*events));
    ASSERT_TRUE(design.apply({"nvic", "USART1_IRQn/Enabled", "TRUE"}));
    EXPECT_FALSE(told(*vectors));
    EXPECT_FALSE(told(*events));
}

TEST_F(SettingsPagesTest, APeripheralsPageHasItsRowsInTabs)
{
    PeripheralsBaseInfo usart;
    usart.InstanceName = "USART1";
    const auto page = shown(std::make_unique<ModePage>(design, *design.peripheral("USART1"), usart));
    QStringList titles;
    for (int i = 0; i < page->tabs()->count(); ++i)
        titles.append(page->tabs()->tabText(i));
    EXPECT_EQ(titles, QStringList({"Parameters Settings", "DMA Settings", "NVIC Settings", "Interrupts Settings",
                                   "GPIO Settings", "Signals"}));
    ASSERT_TRUE(page->interruptTable());
    EXPECT_EQ(page->interruptTable()->model()->rowCount(), 1);
    EXPECT_EQ(page->pinTable()->model()->rowCount(), 2);
    page->tabs()->setCurrentWidget(page->pinTable());
    GPIOSettingModel &model = *page->pinTable()->model();
    EXPECT_FALSE(model.setData(model.index(0, model.labelColumn()), "1st", Qt::EditRole));
    EXPECT_TRUE(page->noteLine()->isVisible()) << "why a label was not taken";
    ASSERT_TRUE(design.apply({"mode", "USART1/Mode", ""}));
    EXPECT_EQ(page->tabs()->count(), 1);
}

} // namespace
