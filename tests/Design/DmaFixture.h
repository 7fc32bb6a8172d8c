#pragma once

#include "Base/AppPaths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace ChipLoom::Test {

/// A database of its own with one device of the series ZV32F435: an EDMA of four streams, converters that also work as
/// a pair, a camera, an I2C port and a timer. The one mode of each, "On", raises its request.
class DmaFixture
{
public:
    static constexpr const char *Series = "ZV32F435";
    static constexpr const char *Device = "STREAMS";
    static constexpr const char *Package = "LQFP64";

    DmaFixture()
    {
        write("STREAMS.xml", R"(<Configuration><E term="MCUBaseInfo"><I MCUName="STREAMS" Package="LQFP" PinNums="2"
            xPinNum="1" yPinNum="0" PID="1"/></E><E term="PinsList"><P PinNum="1" PinName="PA0"/>
            <P PinNum="2" PinName="PA1"/></E><E term="PeripheralsList">
            <I InstanceName="EDMA" Name="EDMA" GroupName="System" Version="V1" About="Enhanced DMA" AboutCH="增强型 DMA"/>
            <I InstanceName="ADC1" Name="ASK" GroupName="Analog" Version="V1"/>
            <I InstanceName="ADC2" Name="ASK" GroupName="Analog" Version="V1"/>
            <I InstanceName="DVP" Name="ASK" GroupName="Multimedia" Version="V1"/>
            <I InstanceName="I2C1" Name="ASK" GroupName="Connectivity" Version="V1"/>
            <I InstanceName="MUXGEN" Name="ASK" GroupName="System" Version="V1"/></E></Configuration>)");
        write("Peripherals/ASK-V1.xml", R"(<IP Name="ASK"><ModeLogicOperator Name="OR">
            <Mode Name="On" UserName="On"><ModeLogicOperator Name="XOR"><ModeParam Name="On" UserName="On">
              <Semaphore>Request_$IpInstance</Semaphore></ModeParam></ModeLogicOperator></Mode>
            <Mode Name="Half" UserName="Half"><ModeLogicOperator Name="XOR"><ModeParam Name="Half" UserName="Half">
              <Semaphore>EDMA_FIFO_THRESHOLD_1QUARTER=TRUE</Semaphore><Semaphore>Priority=EDMA_PRIORITY_HIGH</Semaphore>
              </ModeParam></ModeLogicOperator></Mode></ModeLogicOperator>
            <RefParameter Name="ByDma" Comment="By DMA" Type="list" DefaultValue="TRUE">
              <Condition Expression="EDMARequest_$IpInstance"/><PossibleValue Value="FALSE"/><PossibleValue Value="TRUE"/></RefParameter>
            <RefMode Name="On" BaseMode="On"><Parameter Name="ByDma"/></RefMode></IP>)");
        write("Peripherals/EDMA-V1.xml", edma());
    }

    AppPaths paths() const { return AppPaths(m_dir.path(), m_dir.path()); }

private:
    void write(const char *name, const QByteArray &content) const
    {
        const QString path = m_dir.path() + "/ZV32DB/device/" + Series + '/' + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(content);
    }

    static QByteArray list(const char *name, const char *text, const char *group, const char *values,
                           const char *condition = nullptr)
    {
        const QStringList words = QString::fromLatin1(values).split(' ');
        QString xml = QStringLiteral("<RefParameter Name=\"%1\" Comment=\"%2\" Group=\"%3\" Type=\"list\" "
                                     "DefaultValue=\"%4\">")
                          .arg(name, text, group, words.first());
        if (condition)
            xml += QStringLiteral("<Condition Expression=\"%1\"/>").arg(condition);
        for (const QString &word : words) {
            const QString token = QByteArray(name).startsWith("Interrupt_") && word == "TRUE"
                                      ? QStringLiteral(" Semaphore=\"Semaphore_AutoEnable_$channelNameValue_IRQn\"")
                                      : QString();
            // An event of another channel can start a transfer once that channel gives events.
            const QString need = word == "EVENT_OF_STREAM1"
                                     ? QStringLiteral(" Condition=\"EDMA_MUX_STREAM1_EVENT = TRUE &amp; "
                                                      "$DMATYPE_MUX_$ChannelNo_EVENT = FALSE\"")
                                     : QString();
            xml += QStringLiteral("<PossibleValue Value=\"%1\" Comment=\"%2\"%3%4/>")
                       .arg(word, QString(word).remove("EDMA_"), token, need);
        }
        return (xml + "</RefParameter>").toUtf8();
    }

    static QByteArray number(const char *name, const char *text, const char *group, const char *condition)
    {
        return QStringLiteral(
                   "<RefParameter Name=\"%1\" Comment=\"%2\" Group=\"%3\" Type=\"integer\" DefaultValue=\"1\" "
                   "Min=\"1\" Max=\"32\"><Condition Expression=\"%4\"/></RefParameter>")
            .arg(name, text, group, condition)
            .toUtf8();
    }

    static QByteArray request(const char *name, const char *owner, const char *condition, const QByteArray &extra = {})
    {
        QByteArray xml = QByteArray("<RefMode BaseMode=\"DMA_Request\" Name=\"") + name + '"';
        if (owner)
            xml += QByteArray(" IpInstance=\"") + owner + "\" Condition=\"" + condition +
                   "\" Semaphore=\"EDMARequest_" + name + '"';
        xml += '>' + extra;
        for (const char *parameter :
             {"Direction",       "Priority",           "FIFOMode",         "FIFOThreshold", "MemDataAlignment",
              "MemBurst",        "PeriphBurst",        "DoubleMemoryMode", "CurrentMemory", "2DMode",
              "SourceStride",    "DestinationStride",  "XAxisCount",       "YAxisCount",    "LinkedTableTransferMode",
              "SyncEnable",      "SyncSignalID",       "SyncRequestCount", "EventEnable",   "Interrupt_FDT",
              "Interrupt_DTERR", "PeriphDataAlignment"})
            xml += QByteArray("<Parameter Name=\"") + parameter + "\"/>";
        return xml + "</RefMode>";
    }

    static QByteArray edma()
    {
        QByteArray xml = "<IP Name=\"EDMA\"><DMAMapping Name=\"flexible\"/>";
        for (const char *number : {"1", "2", "3", "4"})
            xml += QByteArray("<DMAChannel Name=\"EDMA_Stream") + number + "\" Value=\"EDMA_STREAM" + number +
                   "\" Handle=\"EDMA_Stream" + number + "\" Controller=\"EDMA\"/>";
        const char *settings = "Request Settings";
        const char *sync = "Request Synchronization Settings";
        const char *plane = "Two-dimensional mode";
        const char *twice = "Double memory mode";
        xml +=
            list("Direction", "Direction", settings, "EDMA_DIR_PERIPHERAL_TO_MEMORY EDMA_DIR_MEMORY_TO_PERIPHERAL") +
            list("Priority", "Priority", settings, "EDMA_PRIORITY_LOW EDMA_PRIORITY_HIGH") +
            list("FIFOMode", "FIFO", settings, "FALSE TRUE") +
            list("FIFOThreshold", "FIFO threshold", settings,
                 "EDMA_FIFO_THRESHOLD_1QUARTER EDMA_FIFO_THRESHOLD_HALF EDMA_FIFO_THRESHOLD_3QUARTER "
                 "EDMA_FIFO_THRESHOLD_FULL",
                 "FIFOMode = TRUE") +
            list("MemDataAlignment", "Width in memory", settings,
                 "EDMA_MEMORY_DATA_WIDTH_BYTE EDMA_MEMORY_DATA_WIDTH_HALFWORD EDMA_MEMORY_DATA_WIDTH_WORD") +
            list("MemBurst", "Burst in memory", settings,
                 "EDMA_MEMORY_SINGLE EDMA_MEMORY_BURST_4 EDMA_MEMORY_BURST_8 EDMA_MEMORY_BURST_16", "FIFOMode = TRUE") +
            list("PeriphDataAlignment", "Width at the peripheral", settings,
                 "EDMA_PERIPHERAL_DATA_WIDTH_BYTE EDMA_PERIPHERAL_DATA_WIDTH_HALFWORD "
                 "EDMA_PERIPHERAL_DATA_WIDTH_WORD") +
            list("PeriphBurst", "Burst at the peripheral", settings,
                 "EDMA_PERIPHERAL_SINGLE EDMA_PERIPHERAL_BURST_4 EDMA_PERIPHERAL_BURST_8 EDMA_PERIPHERAL_BURST_16",
                 "FIFOMode = TRUE") +
            list("DoubleMemoryMode", "Double memory", twice, "FALSE TRUE") +
            list("CurrentMemory", "First memory", twice, "EDMA_MEMORY_0 EDMA_MEMORY_1", "DoubleMemoryMode = TRUE") +
            list("2DMode", "Two-dimensional", plane, "FALSE TRUE") +
            number("SourceStride", "Source stride", plane, "2DMode = TRUE") +
            number("DestinationStride", "Destination stride", plane, "2DMode = TRUE") +
            number("XAxisCount", "Count in X", plane, "2DMode = TRUE") +
            number("YAxisCount", "Count in Y", plane, "2DMode = TRUE") +
            list("LinkedTableTransferMode", "Linked table", "Linked table transfer Mode", "FALSE TRUE") +
            list("SyncEnable", "Synchronize", sync, "FALSE TRUE") +
            list("SyncSignalID", "Signal", sync, "EXINT_LINE0 EVENT_OF_STREAM1", "SyncEnable = TRUE") +
            number("SyncRequestCount", "Requests for a signal", sync, "SyncEnable = TRUE | EventEnable = TRUE") +
            list("EventEnable", "Give events", sync, "FALSE TRUE") +
            list("Interrupt_FDT", "Transfer complete", "Interrupt Settings", "FALSE TRUE") +
            list("Interrupt_DTERR", "Transfer error", "Interrupt Settings", "FALSE TRUE");
        xml +=
            request("ADC1", "ADC1", "Request_ADC1") + request("ADC2", "ADC2", "Request_ADC2") +
            request("ADC1_ADC2", "ADC1", "Request_ADC1 &amp; Request_ADC2") + request("DVP", "DVP", "Request_DVP") +
            request("I2C1_TX", "I2C1", "Instance = I2C1 &amp; Request_I2C1<!transmit") +
            request(
                "GENERATOR1", "MUXGEN", "Request_MUXGEN",
                R"(<InstanceCondition ChannelName="EDMA_Stream3"/><InstanceCondition ChannelName="EDMA_Stream2"/>)") +
            request("MEMTOMEM", nullptr, nullptr);
        return xml.replace("<!transmit", "&lt;!transmit") + "</IP>";
    }

    QTemporaryDir m_dir;
};

} // namespace ChipLoom::Test
