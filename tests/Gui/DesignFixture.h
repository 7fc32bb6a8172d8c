#pragma once

#include "Model/xmloperation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace ChipLoom {

/// A database of its own with invented devices of the series ZV32F403A.
class DesignFixture
{
public:
    DesignFixture() { addDevice(QStringLiteral("SMALL"), smallDevice()); }

    XMLOperation xml() const { return XMLOperation(AppPaths(m_dir.path(), m_dir.path())); }
    QString path() const { return m_dir.path(); }

    void addDevice(const QString &name, const QByteArray &content) const
    {
        const QString folder = m_dir.path() + QStringLiteral("/ZV32DB/device/ZV32F403A");
        QDir().mkpath(folder);
        QFile file(folder + QLatin1Char('/') + name + QStringLiteral(".xml"));
        file.open(QIODevice::WriteOnly);
        file.write(content);
    }

    /// Lists the device "SMALL" in a catalogue, so that its design files open.
    void addCatalogue() const
    {
        QFile file(m_dir.path() + QStringLiteral("/ZV32DB/MCUList.xml"));
        file.open(QIODevice::WriteOnly);
        file.write(R"(<MCUs><e term="ProductLinesList"><e Line="Main Line"/></e>
            <e term="Main Line"><e Serial="ZV32F403A"/></e>
            <e term="ZV32F403A"><e Name="SMALL" Package="LQFP8"/></e>
            <e term="MCUPackageList"><e>LQFP8</e></e></MCUs>)");
    }

    /// Eight pins; USART1_TX stands on PA9 and PB6 through remap groups, and on PB7 through none.
    static QByteArray smallDevice()
    {
        const QByteArray plain = R"(<f Func="GPIO_Input"/><f Func="GPIO_Output"/>)";
        return R"(<Device><a term="MCUBaseInfo"><b MCUName="SMALL" PinNums="8" xPinNum="2" yPinNum="2" PID="1"
            Package="LQFP"/></a><a term="PinsList">
            <p PinNum="1" PinName="VDD" PinFixed="true" Remarks_EN="Supply" Remarks_CH="电源"/>
            <p PinNum="2" PinName="PA9"><f Func="USART1_TX"/><f Func="TMR1_CH2"/>)" +
               plain + R"(</p><p PinNum="3" PinName="PB6"><f Func="USART1_TX"/>)" + plain +
               R"(</p><p PinNum="4" PinName="PB7"><f Func="USART1_TX"/>)" + plain +
               R"(</p><p PinNum="5" PinName="PA10"><f Func="USART1_RX"/>)" + plain +
               R"(</p><p PinNum="6" PinName="PC13">)" + plain +
               R"(</p><p PinNum="7" PinName="VSS" PinFixed="true"/><p PinNum="8" PinName="PC14">)" + plain + R"(</p></a>
            <a term="PinsSignalsGroup">
            <g IPName="USART1" GroupNum="0" GMUX="0"><s SignalName="USART1_TX" PinName="PA9"/></g>
            <g IPName="USART1" GroupNum="1" GMUX="1"><s SignalName="USART1_TX" PinName="PB6"/></g></a>
            <a term="PeripheralsList">
            <i InstanceName="GPIO" Name="GPIO" GroupName="System" Version="V1" About="Pins" AboutCH="引脚"/>
            <i InstanceName="NVIC" Name="NVIC" GroupName="System" Version="V1" About="Interrupts" AboutCH="中断"/>
            <i InstanceName="USART1" Name="USART" GroupName="Communication" GroupNameCH="通信" Version="V2"
               About="Serial port" AboutCH="串口"/></a>
            <a term="MiddlewaresList">
            <i InstanceName="FREERTOS" Name="FREERTOS" GroupName="RTOS" Version="V1" About="Kernel" AboutCH="内核"/></a>
            </Device>)";
    }

private:
    QTemporaryDir m_dir;
};

} // namespace ChipLoom
