#include "DatabaseFolder.h"
#include "QtPrinters.h"

using namespace ChipLoom;

namespace {

constexpr const char *Small = R"(<List>
  <Anything term="ProductLinesList">
    <x Line="Value" LineCH="经济" InfoEN="Small" InfoCH="小"/>
    <y Line="Main" InfoEN="Large"/>
  </Anything>
  <E term="Value"><S Serial="ZV32WB415"/><S Serial="ZV32F421" InfoEN="Compact" InfoCH="紧凑"/></E>
  <E term="Main">
    <S Serial="ZV32M412"/><S Serial="ZV32F403A"/><S Serial="ZV32L021"/><S Serial="ZV32A423"/><S Serial="OTHER"/>
  </E>
  <E term="ZV32F421">
    <D GPIO="39" Unknown="x" Package="LQFP48" Name="ZV32F421C8T7" Flash="64KB" SRAM="16KB" MaxSRAM="20KB" Core="M4"
       Frequency="120MHz"/>
    <D name="lower case is another attribute"/>
  </E>
  <E term="ZV32F421"><D Name="after the first match"/></E>
  <E term="MCUPackageList"><P>LQFP48</P><P note="x">QFN32</P></E>
</List>)";

QStringList namesOf(const QList<MCUSerialStruct> &list)
{
    QStringList names;
    for (const MCUSerialStruct &series : list)
        names.append(series.SeriaName);
    return names;
}

class Catalogue : public DatabaseFolder
{
protected:
    void list(const QByteArray &content) { write("ZV32DB/MCUList.xml", content); }
};

TEST_F(Catalogue, LinesSeriesAndDevicesComeInFileOrder)
{
    list(Small);
    const QList<ProductLineStruct> lines = m_reader.GetProductLinesList();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.at(0).ProductLineName, "Value");
    EXPECT_EQ(lines.at(0).ProductLinelInfo, "Small");
    EXPECT_EQ(namesOf(lines.at(0).MCUSerialList), (QStringList{"ZV32WB415", "ZV32F421"}));
    const MCUSerialStruct series = lines.at(0).MCUSerialList.at(1);
    EXPECT_EQ(series.ProductLinelInfo, "Value");
    EXPECT_EQ(series.SerialInfo, "Compact");
    ASSERT_EQ(series.MCUDeviceList.size(), 2);
    const MCUDeviceStruct device = series.MCUDeviceList.at(0);
    EXPECT_EQ((QStringList{device.DeviceName, device.DevicePackage, device.DeviceFlash, device.DeviceSRAM,
                           device.DeviceMaxSRAM, device.DeviceCore, device.DeviceFrequency, device.DeviceGPIOs}),
              (QStringList{"ZV32F421C8T7", "LQFP48", "64KB", "16KB", "20KB", "M4", "120MHz", "39"}));
    EXPECT_EQ(series.MCUDeviceList.at(1).DeviceName, "");
    EXPECT_EQ(m_reader.GetDeviceNameList("ZV32F421").size(), 2);
    EXPECT_EQ(m_reader.GetDeviceNameList("ZV32F999").size(), 0);
    EXPECT_EQ(namesOf(m_reader.GetMCUSerialsList("Value")), (QStringList{"ZV32WB415", "ZV32F421"}));
    EXPECT_EQ(m_reader.GetMCUPackageList(), (QStringList{"LQFP48", "QFN32"}));
    EXPECT_FALSE(m_reader.catalogueProblem());
}

TEST_F(Catalogue, ChineseTextsHaveNoFallback)
{
    list(Small);
    GlobalLanguage::g_CurrentLanguage = UI_CH;
    const QList<ProductLineStruct> lines = m_reader.GetProductLinesList();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.at(0).ProductLinelInfo, QStringLiteral("小"));
    EXPECT_EQ(shownName(lines.at(0).ProductLineName, lines.at(0).ProductLineName_CH), QStringLiteral("经济"));
    EXPECT_EQ(shownName(lines.at(1).ProductLineName, lines.at(1).ProductLineName_CH), "Main") << "a name stands alone";
    EXPECT_EQ(lines.at(1).ProductLinelInfo, "");
    EXPECT_EQ(lines.at(0).MCUSerialList.at(1).SerialInfo, QStringLiteral("紧凑"));
}

TEST_F(Catalogue, AllSeriesAreOrderedByPrefixAndThenName)
{
    list(Small);
    EXPECT_EQ(namesOf(m_reader.GetMCUSerialsList()),
              (QStringList{"ZV32F403A", "ZV32F421", "ZV32A423", "ZV32M412", "ZV32L021", "ZV32WB415"}));
}

TEST_F(Catalogue, AnUnusableCatalogueIsEmptyAndSaysWhy)
{
    struct Row
    {
        QByteArray content;
        XmlFault fault;
    };
    const std::vector<Row> rows{
        {"<List>", XmlFault::Malformed},
        {"<List/>", XmlFault::NothingListed},
        {"<L><E term='ProductLinesList'><x Line='V'/></E><E term='V'><S Serial='S'/></E></L>", XmlFault::NothingListed},
        {"<!DOCTYPE x><List/>", XmlFault::Declarations},
    };
    EXPECT_EQ(m_reader.catalogueProblem().fault, XmlFault::Missing);
    for (const Row &row : rows) {
        list(row.content);
        EXPECT_EQ(m_reader.catalogueProblem().fault, row.fault) << row.content.toStdString();
        EXPECT_EQ(m_reader.catalogueProblem().file, path("ZV32DB/MCUList.xml"));
        EXPECT_TRUE(m_reader.GetMCUSerialsList().isEmpty());
        EXPECT_TRUE(m_reader.GetMCUPackageList().isEmpty());
    }
}

// Entries that name each other over and over must not multiply: the result stays as large as the file.
TEST_F(Catalogue, EntriesThatNameEachOtherDoNotMultiply)
{
    QByteArray content = "<L><E term='ProductLinesList'>" + QByteArray("<x Line='A'/>").repeated(2000) +
                         "</E><E term='A'>" + QByteArray("<S Serial='A'/>").repeated(2000) + "</E></L>";
    list(content);
    EXPECT_EQ(m_reader.GetProductLinesList().size(), 2000);
    EXPECT_EQ(m_reader.GetMCUSerialsList().size(), 0);
}

} // namespace
