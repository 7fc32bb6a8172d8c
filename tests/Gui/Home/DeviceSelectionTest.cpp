#include "Gui/Home/DeviceSelection.h"

#include "Gui/Home/DeviceFilterBar.h"
#include "Gui/Home/HomeFixture.h"
#include "Gui/Home/SeriesInfoBrowser.h"
#include "Gui/Home/SeriesTree.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace ChipLoom;

namespace {

TEST(SortKey, SumsWhatTheTextAddsUpAndAppendsTheFamily)
{
    struct Row
    {
        const char *text;
        const char *key;
    };
    for (const Row &row : {Row{"64KB+32KB", "00096"}, Row{"240MHz", "00240"}, Row{"LQFP48", "00048LQFP"},
                           Row{"QFN48", "00048QFN"}, Row{"TSSOP20", "00020TSSOP"}, Row{"BGA100", "00000"},
                           Row{" 128KB(MCU) + 16KB(BLE)", "00144"}, Row{"", "00000"}, Row{"lots+8KB", "00008"}})
        EXPECT_EQ(getSortString(row.text), row.key) << row.text;
}

class DeviceSelectionTest : public HomeFixture
{
protected:
    void SetUp() override
    {
        HomeFixture::SetUp();
        open();
    }

    void open()
    {
        m_page = std::make_unique<DeviceSelection>(m_xml);
        m_page->resize(1200, 700);
        m_page->show();
        m_table = m_page->findChild<QTableView *>();
        m_tree = m_page->findChild<SeriesTree *>();
        for (QComboBox *box : m_page->findChildren<QComboBox *>()) {
            if (box->isEditable())
                m_search = box;
        }
        m_filters = m_page->findChild<DeviceFilterBar *>()->findChildren<QComboBox *>();
    }

    QStringList shown(int column = DeviceTableModel::Device) const
    {
        QStringList texts;
        for (int row = 0; row < m_table->model()->rowCount(); ++row)
            texts.append(m_table->model()->index(row, column).data().toString());
        return texts;
    }

    /// The labels that a person sees, line by line.
    QString visibleLabels() const
    {
        QStringList texts;
        for (const QLabel *label : m_page->findChildren<QLabel *>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        return texts.join('\n');
    }

    QString info() const { return m_page->findChild<SeriesInfoBrowser *>()->toPlainText(); }

    /// Presses the space bar on a series or a line of the tree.
    void toggle(const QString &text)
    {
        for (int line = 0; line < m_tree->model()->rowCount(); ++line) {
            const QModelIndex top = m_tree->model()->index(line, 0);
            const QModelIndexList found =
                m_tree->model()->match(top, Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive);
            if (found.isEmpty())
                continue;
            m_tree->setCurrentIndex(found.first());
            QTest::keyClick(m_tree, Qt::Key_Space);
            return;
        }
        FAIL() << qPrintable(text);
    }

    Qt::CheckState state(int line, int series = -1) const
    {
        QModelIndex index = m_tree->model()->index(line, 0);
        if (series >= 0)
            index = m_tree->model()->index(series, 0, index);
        return static_cast<Qt::CheckState>(index.data(Qt::CheckStateRole).toInt());
    }

    std::unique_ptr<DeviceSelection> m_page;
    QTableView *m_table = nullptr;
    SeriesTree *m_tree = nullptr;
    QComboBox *m_search = nullptr;
    QList<QComboBox *> m_filters; // package, pins, flash, SRAM, frequency
};

TEST_F(DeviceSelectionTest, ShowsAllDevicesByNameAndTheFirstOnesSeries)
{
    EXPECT_EQ(shown(), QStringList({"ZV32F403ACCT7", "ZV32F403ACGU7", "ZV32F403AVGH7", "ZV32F403AVGT7", "ZV32F407RGT7",
                                    "ZV32F421F8P7", "ZV32F421K6T7"}));
    EXPECT_EQ(shown(DeviceTableModel::Sram).first(), "Max: 224KB    Default: 96KB");
    EXPECT_EQ(shown(DeviceTableModel::Sram).last(), "8KB");
    EXPECT_EQ(shown(DeviceTableModel::ProductLine).first(), "Main Line");
    EXPECT_EQ(info(), "About ZV32F403A");
    EXPECT_TRUE(visibleLabels().contains("MCUs List: 7 items"));

    m_table->setCurrentIndex(m_table->model()->index(6, 0));
    EXPECT_EQ(info(), "About ZV32F421");
    m_table->setCurrentIndex(m_table->model()->index(4, 0));
    EXPECT_EQ(info(), "There is no information page for ZV32F407.");
}

TEST_F(DeviceSelectionTest, SortsByKeyWhenAHeadingIsClicked)
{
    const auto click = [&](int column) {
        QHeaderView *header = m_table->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 10, header->height() / 2));
    };
    click(DeviceTableModel::Package);
    EXPECT_EQ(shown(DeviceTableModel::Package),
              QStringList({"BGA100", "TSSOP20", "LQFP32", "LQFP48", "QFN48", "LQFP64", "LQFP100"}));
    click(DeviceTableModel::Flash);
    EXPECT_EQ(shown(DeviceTableModel::Flash),
              QStringList({"32KB", "64KB", "256KB", "1024KB", "1024KB", "1024KB", "1024KB"}));
    click(DeviceTableModel::Sram);
    EXPECT_EQ(shown(DeviceTableModel::Sram).mid(0, 2), QStringList({"8KB", "16KB"}));
}

TEST_F(DeviceSelectionTest, TheTreeNarrowsTheTable)
{
    EXPECT_EQ(state(1), Qt::Checked);
    toggle("ZV32F407");
    EXPECT_EQ(state(1), Qt::PartiallyChecked);
    EXPECT_EQ(shown().size(), 6);
    EXPECT_FALSE(m_tree->model()->index(1, 0, m_tree->model()->index(1, 0)).data(Qt::FontRole).value<QFont>().bold());

    toggle("ZV32F403A");
    EXPECT_EQ(state(1), Qt::Unchecked);
    EXPECT_EQ(shown(), QStringList({"ZV32F421F8P7", "ZV32F421K6T7"}));
    EXPECT_EQ(m_search->count(), 2);

    toggle("Main Line");
    EXPECT_EQ(state(1, 0), Qt::Checked);
    EXPECT_EQ(state(1, 1), Qt::Checked);
    EXPECT_EQ(shown().size(), 7);

    // Nothing checked: no row, and the information stays as it was.
    toggle("Main Line");
    const QString before = info();
    toggle("Value Line");
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(info(), before);
    EXPECT_TRUE(visibleLabels().contains("MCUs List: 0 items"));
    EXPECT_TRUE(visibleLabels().contains("No series is checked."));
    EXPECT_FALSE(m_table->isVisible());
}

TEST_F(DeviceSelectionTest, SearchIsUpperCasedAndKeepsTheTableWhenNothingFits)
{
    const QStringList found{"ZV32F421F8P7", "ZV32F421K6T7"};
    QTest::keyClicks(m_search->lineEdit(), "f421");
    EXPECT_EQ(shown(), found);
    EXPECT_EQ(info(), "About ZV32F421");
    QTest::keyClicks(m_search->lineEdit(), "x");
    EXPECT_EQ(shown(), found);
    QTest::keyClick(m_search->lineEdit(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(m_search->lineEdit(), Qt::Key_Delete);
    EXPECT_EQ(shown().size(), 7);

    // Choosing from the list; the next change of the tree forgets the search.
    m_search->setCurrentIndex(m_search->findText("ZV32F407RGT7"));
    emit m_search->activated(m_search->currentIndex());
    EXPECT_EQ(shown(), QStringList("ZV32F407RGT7"));
    toggle("Value Line");
    EXPECT_EQ(shown().size(), 5);
    EXPECT_TRUE(m_search->currentText().isEmpty());
}

TEST_F(DeviceSelectionTest, TheArrowsLeadFromTheSearchIntoTheTable)
{
    QTest::keyClicks(m_search->lineEdit(), QStringLiteral("f4"));
    const QStringList found = shown();
    QTest::keyClick(m_search, Qt::Key_Up);
    QTest::keyClick(m_search, Qt::Key_Down);
    EXPECT_EQ(m_search->currentText(), QStringLiteral("f4"));
    EXPECT_EQ(shown(), found);
    EXPECT_EQ(m_page->focusWidget(), m_table);
}

TEST_F(DeviceSelectionTest, ReturnInTheSearchTakesWhatIsFound)
{
    QSignalSpy chosen(m_page.get(), &DeviceSelection::deviceChosen);
    const auto search = [this](const char *text) {
        m_search->setFocus();
        m_search->lineEdit()->selectAll();
        QTest::keyClicks(m_search->lineEdit(), text);
        QTest::keyClick(m_search, Qt::Key_Return);
    };
    search("f421k");
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.takeFirst().at(1).toString(), QStringLiteral("ZV32F421K6T7"));
    search("f421kx");
    EXPECT_EQ(chosen.count(), 0) << "what stands in the table is not what is typed";
    search("f421");
    EXPECT_EQ(chosen.count(), 0);
    ASSERT_EQ(m_page->focusWidget(), m_table);
    QTest::keyClick(m_table, Qt::Key_Return);
    EXPECT_EQ(chosen.count(), 1) << "the first";
}

TEST_F(DeviceSelectionTest, FiltersJoinWithTreeAndSearch)
{
    ASSERT_EQ(m_filters.size(), 5);
    m_filters[1]->setCurrentText("100");
    EXPECT_EQ(shown(), QStringList({"ZV32F403AVGH7", "ZV32F403AVGT7"}));
    m_filters[0]->setCurrentText("LQFP100");
    EXPECT_EQ(shown(), QStringList("ZV32F403AVGT7"));
    QTest::keyClicks(m_search->lineEdit(), "F421");
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_TRUE(visibleLabels().contains("No device of the checked series passes the search and the filters."));

    const auto buttons = m_page->findChild<DeviceFilterBar *>()->findChildren<QPushButton *>();
    QTest::mouseClick(buttons.first(), Qt::LeftButton);
    EXPECT_EQ(shown(), QStringList({"ZV32F421F8P7", "ZV32F421K6T7"}));
    EXPECT_FALSE(buttons.first()->isEnabled());
    m_filters[2]->setCurrentText("64KB");
    EXPECT_EQ(shown(), QStringList("ZV32F421F8P7"));
    m_filters[3]->setCurrentText("224KB");
    m_search->lineEdit()->clear();
    emit m_search->lineEdit()->textEdited({});
    m_filters[4]->setCurrentText("240MHz");
    EXPECT_EQ(shown().size(), 5);
}

TEST_F(DeviceSelectionTest, DoubleClickEnterAndButtonChooseTheRow)
{
    QSignalSpy chosen(m_page.get(), &DeviceSelection::deviceChosen);
    const QPoint third = m_table->visualRect(m_table->model()->index(2, 1)).center();
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, third);
    QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, {}, third);
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0], QVariantList({"ZV32F403A", "ZV32F403AVGH7", "BGA100"}));

    QTest::keyClick(m_table, Qt::Key_Down);
    QTest::keyClick(m_table, Qt::Key_Return);
    ASSERT_EQ(chosen.size(), 2);
    EXPECT_EQ(chosen[1][1], "ZV32F403AVGT7");
}

TEST_F(DeviceSelectionTest, AMissingOrBrokenDatabaseIsSaidInTheTablesPlace)
{
    const QString file = m_folder.filePath("ZV32DB/MCUList.xml");
    write("ZV32DB/MCUList.xml", "<MCUs><e");
    open();
    EXPECT_FALSE(m_table->isVisible());
    EXPECT_TRUE(visibleLabels().contains("There are no devices to choose from."));
    EXPECT_TRUE(visibleLabels().contains("The file " + file + " is damaged in line 1"));

    ASSERT_TRUE(QFile::remove(file));
    open();
    EXPECT_TRUE(visibleLabels().contains("The file " + file + " does not exist."));
}

class LinkCatcher : public QObject
{
    Q_OBJECT
public slots:
    void opened(const QUrl &url) { urls.append(url); }

public:
    QList<QUrl> urls;
};

TEST_F(DeviceSelectionTest, OnlyLinksToTheWebOpen)
{
    LinkCatcher catcher;
    for (const char *scheme : {"https", "file"})
        QDesktopServices::setUrlHandler(scheme, &catcher, "opened");
    auto *browser = m_page->findChild<SeriesInfoBrowser *>();
    for (const char *link : {"https://example.com/f421", "file:///bin/sh", "#timers"})
        emit browser->anchorClicked(QUrl(link));
    EXPECT_EQ(catcher.urls, QList<QUrl>{QUrl("https://example.com/f421")});
    for (const char *scheme : {"https", "file"})
        QDesktopServices::unsetUrlHandler(scheme);
}

} // namespace

#include "DeviceSelectionTest.moc"
