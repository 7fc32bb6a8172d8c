#include "DatabaseFolder.h"
#include "QtPrinters.h"

#include <limits>

using namespace ChipLoom;

namespace {

constexpr const char *Device = R"(<Device>
  <a term="MCUBaseInfo">
    <b MCUName="ZV32F403AVGH7" PinNums="100"/><b xPinNum="10" yPinNum="10" Package="BGA" PinNums="7"/>
    <b PID="0x70050344"/>
  </a>
  <a term="PinsList">
    <p PinNum="B2" PinName="PA11" Variant="PINREMAP" Remarks_EN="USB" GPIOStructure="FT" PinType="I/O">
      <f Func="USBFS_D-" IOMode="Analog" Multi="true" InPin="PA11_R"><g Func="USBFS_D+" PinNum="13"/></f>
      <f Func="GPIO_Input" Multi="TRUE"/>
    </p>
    <p PinNum="A11" PinName="VSS" PinFixed="true" Variant="NOPINREMAP"/>
    <p PinNum="twelve" PinName="PA12" PinFixed="TRUE"/>
  </a>
  <a term="PinsSignalsGroup">
    <g IPName="TMR1" GroupNum="1" GMUX="TMR1_GMUX_0001">
      <s SignalName="TMR1_CH1" PinName="PA8" TMRIPCanUse="NO"/><s SignalName="TMR1_CH2" PinName="PA9"/>
    </g>
  </a>
  <a term="PeripheralsList">
    <i InstanceName="USART1" Name="USART" GroupName="Connectivity" Version="V1" Config="c.xml" About="Serial" AboutCH="串口"/>
  </a>
  <a term="MiddlewaresList"><i InstanceName="FREERTOS" Name="FREERTOS" Version="V2"/></a>
</Device>)";

class DeviceFile : public DatabaseFolder
{
};

TEST_F(DeviceFile, BaseInformationIsFoundOnAnyChild)
{
    const QString file = write("device.xml", Device);
    EXPECT_EQ(m_reader.GetMCUName(file), "ZV32F403AVGH7");
    EXPECT_EQ(m_reader.GetPackage(file), "BGA");
    EXPECT_EQ(m_reader.GetAllPinNums(file), 100);
    EXPECT_EQ(m_reader.GetXPinNum(file), 10);
    EXPECT_EQ(m_reader.GetPID(file), 0x70050344u);
    EXPECT_EQ(m_reader.GetNodeValue(file, "PeripheralsList", "Version"), "V1");
    EXPECT_EQ(m_reader.GetNodeValue(file, "PeripheralsList", "version"), "");
    EXPECT_EQ(m_reader.GetNodeValue(file, "Nothing", "Version"), "");
}

TEST_F(DeviceFile, PinsCarryTheirSignals)
{
    const QString file = write("device.xml", Device);
    const QList<MCUPinsBaseInfo> pins = m_reader.GetMCUPinsBaseInfo(file, "BGA", 10);
    ASSERT_EQ(pins.size(), 3);
    const MCUPinsBaseInfo pin = pins.at(0);
    EXPECT_EQ(pin.pinNumber, 12);
    EXPECT_EQ(pin.pinNumberStr, "B2");
    EXPECT_FALSE(pin.validFlag);
    EXPECT_FALSE(pin.fixedFlag);
    EXPECT_EQ(pin.remarks, "USB");
    ASSERT_EQ(pin.pinSignalsList.size(), 2);
    EXPECT_EQ(pin.pinSignalsList.at(0).signalInPinName, "PA11_R");
    EXPECT_TRUE(pin.pinSignalsList.at(0).pinSignalMultiUseFlag);
    EXPECT_TRUE(pin.pinSignalsList.at(0).pinSignalMultiUseFlagBackup);
    ASSERT_EQ(pin.pinSignalsList.at(0).pinSignalsBoundList.size(), 1);
    EXPECT_EQ(pin.pinSignalsList.at(0).pinSignalsBoundList.at(0).pinNum, 13);
    EXPECT_EQ(pin.pinSignalsList.at(1).signalInPinName, "PA11");
    EXPECT_FALSE(pin.pinSignalsList.at(1).pinSignalMultiUseFlag) << "the flag is exact";
    EXPECT_TRUE(pins.at(1).fixedFlag);
    EXPECT_TRUE(pins.at(1).validFlag);
    EXPECT_EQ(pins.at(1).pinNumber, -1) << "eleven is beyond the columns";
    EXPECT_FALSE(pins.at(2).fixedFlag) << "the flag is exact";
    EXPECT_EQ(m_reader.GetMCUPinsBaseInfo(file, "LQFP", 10).at(0).pinNumber, 0);

    GlobalLanguage::g_CurrentLanguage = UI_CH;
    EXPECT_EQ(m_reader.GetMCUPinsBaseInfo(file, "BGA", 10).at(0).remarks, "");
}

TEST_F(DeviceFile, GroupsAndPeripheralsAreRead)
{
    const QString file = write("device.xml", Device);
    const QList<IPSignalGroupInfo> groups = m_reader.GetMCUIPSignalGroupInfo(file);
    ASSERT_EQ(groups.size(), 1);
    EXPECT_EQ(groups.at(0).GroupNum, 1);
    ASSERT_EQ(groups.at(0).signalGroup.size(), 2);
    EXPECT_FALSE(groups.at(0).signalGroup.at(0).TMRIPCanUseFlag);
    EXPECT_TRUE(groups.at(0).signalGroup.at(1).TMRIPCanUseFlag);
    GlobalLanguage::g_CurrentLanguage = UI_CH;
    const QList<PeripheralsBaseInfo> list = m_reader.GetMCUPeripheralsBaseInfo("PeripheralsList", file);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.at(0).VersionFile, "V1");
    EXPECT_EQ(list.at(0).AboutInfo, QStringLiteral("串口"));
}

TEST_F(DeviceFile, OneReadingGivesAllOfIt)
{
    const MCUDeviceFile device = m_reader.GetDeviceFile(write("device.xml", Device));
    EXPECT_EQ(device.MCUName, "ZV32F403AVGH7");
    EXPECT_EQ(device.yPinNum, 10);
    EXPECT_EQ(device.PID, 0x70050344u);
    EXPECT_EQ(device.PinsList.size(), 3);
    EXPECT_EQ(device.PinsList.at(0).pinNumber, 12);
    EXPECT_EQ(device.PinsSignalsGroup.size(), 1);
    EXPECT_EQ(device.PeripheralsList.size(), 1);
    EXPECT_EQ(device.MiddlewaresList.at(0).InstanceName, "FREERTOS");
    EXPECT_EQ(m_reader.GetDeviceFile(path("missing.xml")).PinsList.size(), 0);
}

TEST_F(DeviceFile, LabelsBecomeNumbers)
{
    struct Row
    {
        const char *label;
        int columns, number;
    };
    constexpr int Largest = std::numeric_limits<int>::max();
    constexpr std::array<Row, 17> rows{{
        {"A1", 16, 1},
        {"b1", 16, 17},
        {"H16", 16, 128},
        {"I1", 16, 129},
        {"J1", 16, 129},
        {"J2", 16, 130},
        {"Z16", 16, 400},
        {"A0", 16, -1},
        {"A17", 16, -1},
        {"A-1", 16, -1},
        {"A", 16, -1},
        {"1A", 16, -1},
        {"", 16, -1},
        {"AA1", 16, -1},
        {"A1", 0, -1},
        {"A1", -5, -1},
        {"Z1", Largest, -1},
    }};
    for (const Row &row : rows)
        EXPECT_EQ(XMLOperation::labelToNumber(row.label, row.columns), row.number) << row.label;
    EXPECT_EQ(XMLOperation::labelToNumber(QStringLiteral("é1"), 16), -1);
}

} // namespace
