#include "GenerateCode/SeriesGeneratorRow.h"

#include <QHash>
#include <QMutex>
#include <QString>

namespace ChipLoom {

namespace {

constexpr ZV32MCUSERIALS None = ZV32ErrorMCU2;

constexpr std::array<SeriesGeneratorRow, 14> Rows{{
    {.name = "GenerateCode_All_F402_F405",
     .series = {ZV32F402, ZV32F405, ZV32F490},
     .dispatch = "USART1 USART2 USART3 USART4 USART5 USART6 UART7 UART8 SPI1 SPI2 SPI3 I2S1 I2S2 I2S3 I2SF5 I2C1 I2C2 "
                 "I2C3 CRC WDT WWDT ERTC ACC CAN1 ADC1 EXINT PWC QSPI1 USB_OTGFS1 USB_OTGHS1 TMR1 TMR2 TMR3 TMR4 TMR6 "
                 "TMR7 TMR9 TMR10 TMR11 TMR13 TMR14 IRTMR SCFG",
     .clocks = "gpioa gpiob gpioc gpiod gpiof dma1 dma2 scfg acc adc1 can1 tmr1 tmr2 tmr3 tmr4 tmr6 tmr7 tmr9 tmr10 "
               "tmr11 tmr13 tmr14 spi1 spi2 spi3 i2sf5 usart1 usart2 usart3 usart4 usart5 usart6 uart7 uart8 i2c1 i2c2 "
               "i2c3 crc wwdt qspi1 otgfs1 otghs1 pwc",
     .modules = "crm acc adc can crc debug dma ertc exint flash gpio i2c misc pwc qspi scfg spi tmr usart usb wdt "
                "wwdt",
     .dmaChannels = {7, 7}},
    {.name = "GenerateCode_All_F403A_F407_A403A",
     .series = {ZV32F403A, ZV32F407, ZV32A403A},
     .dispatch =
         "ACC ADC1 ADC2 ADC3 CAN1 CAN2 CRC DAC DEBUG EMAC EXINT I2C1 I2C2 I2C3 I2S1 I2S2 I2S3 PWC RTC SDIO1 "
         "SDIO2 SPI1 SPI2 SPI3 SPI4 SPIM TMR1 TMR8 TMR2 TMR3 TMR4 TMR5 TMR6 TMR7 TMR9 TMR12 TMR10 TMR11 TMR13 "
         "TMR14 USART1 USART2 USART3 USART6 UART4 UART5 UART7 UART8 USBFS WDT WWDT XMC XMC_NORFlash-PSRAM-LCD_1 "
         "XMC_NORFlash-PSRAM-LCD_4 XMC_NANDFlash",
     .clocks =
         "gpioa gpiob gpioc gpiod gpioe iomux dma1 dma2 acc adc1 adc2 adc3 can1 can2 crc dac emac i2c1 i2c2 i2c3 "
         "bpr sdio1 sdio2 spi1 spi2 spi3 spi4 spim tmr1 tmr2 tmr3 tmr4 tmr5 tmr6 tmr7 tmr8 tmr9 tmr10 tmr11 tmr12 "
         "tmr13 tmr14 usart1 usart2 usart3 uart4 uart5 usart6 uart7 uart8 usb wwdt xmc pwc",
     .modules = "crm acc adc can crc dac debug dma emac exint flash gpio i2c misc pwc rtc sdio spi spim tmr usart "
                "usb wdt wwdt xmc",
     .dmaChannels = {7, 7},
     .withoutCode = ""},
    {.name = "GenerateCode_All_F403E_F407E",
     .series = {ZV32F403E, ZV32F407E, None},
     .dispatch =
         "ACC ADC1 ADC2 ADC3 CAN1 CAN2 CRC DAC DEBUG EMAC EXINT I2C1 I2C2 I2C3 I2S1 I2S2 I2S3 IRTMR PWC RTC "
         "SDIO1 SDIO2 SPI1 SPI2 SPI3 SPI4 TMR1 TMR8 TMR2 TMR3 TMR4 TMR5 TMR6 TMR7 TMR9 TMR10 TMR11 TMR12 TMR13 "
         "TMR14 USART1 USART2 USART3 USART6 UART4 UART5 UART7 UART8 USBFS WDT WWDT XMC XMC_NORFlash-PSRAM-LCD_1 "
         "XMC_NORFlash-PSRAM-LCD_4 XMC_NANDFlash",
     .clocks = "gpioa gpiob gpioc gpiod gpioe iomux dma1 dma2 acc adc1 adc2 adc3 can1 can2 crc dac emac i2c1 i2c2 i2c3 "
               "bpr sdio1 sdio2 spi1 spi2 spi3 spi4 tmr1 tmr2 tmr3 tmr4 tmr5 tmr6 tmr7 tmr8 tmr9 tmr10 tmr11 tmr12 "
               "tmr13 tmr14 usart1 usart2 usart3 uart4 uart5 usart6 uart7 uart8 usb wwdt xmc pwc",
     .modules = "crm acc adc can crc dac debug dma emac exint flash gpio i2c misc pwc rtc sdio spi tmr usart usb wdt "
                "wwdt xmc",
     .dmaChannels = {7, 7},
     .withoutCode = ""},
    {.name = "GenerateCode_All_F406_F408",
     .series = {ZV32F406, ZV32F408, None},
     .dispatch = "USART1 USART2 USART3 USART4 USART5 USART6 SPI1 SPI2 SPI3 I2S1 I2S2 I2S3 I2C1 I2C2 I2C3 CRC WDT WWDT "
                 "ERTC EMUXC ADC1 EXINT PWC QSPI1 USB_OTGHS1 TMR1 TMR2 TMR3 TMR4 TMR6 TMR7 TMR9 TMR10 TMR11 TMR13 "
                 "TMR14 IRTMR SCFG",
     .clocks = "gpioa gpiob gpioc gpiod gpiof dma1 dma2 scfg adc1 tmr1 tmr2 tmr3 tmr4 tmr6 tmr7 tmr9 tmr10 tmr11 tmr13 "
               "tmr14 spi1 spi2 spi3 usart1 usart2 usart3 usart4 usart5 usart6 i2c1 i2c2 i2c3 crc wwdt qspi1 otghs1 "
               "pwc",
     .modules = "crm adc crc debug dma ertc exint flash gpio i2c misc pwc qspi scfg spi tmr usart usb wdt wwdt",
     .dmaChannels = {7, 7}},
    {.name = "GenerateCode_All_F413",
     .series = {ZV32F413, None, None},
     .dispatch = "ACC ADC1 ADC2 CAN1 CAN2 CRC DEBUG EXINT I2C1 I2C2 I2S1 I2S2 PWC RTC SDIO1 SPI1 SPI2 SPIM TMR1 TMR8 "
                 "TMR2 TMR3 TMR4 TMR5 TMR9 TMR10 TMR11 USART1 USART2 USART3 UART4 UART5 USBFS WDT WWDT",
     .clocks =
         "gpioa gpiob gpioc gpiod gpiof iomux dma1 dma2 acc adc1 adc2 can1 can2 crc i2c1 i2c2 bpr sdio1 spi1 spi2 "
         "tmr1 tmr2 tmr3 tmr4 tmr5 tmr8 tmr9 tmr10 tmr11 usart1 usart2 usart3 uart4 uart5 usb wwdt pwc",
     .modules = "crm acc adc can crc debug dma exint flash gpio i2c misc pwc rtc sdio spi tmr usart usb wdt wwdt",
     .dmaChannels = {7, 7},
     .withoutCode = ""},
    {.name = "GenerateCode_All_F415_WB415",
     .series = {ZV32F415, ZV32WB415, None},
     .dispatch = "ADC1 CAN1 CMP1 CMP2 CRC DEBUG ERTC EXINT I2C1 I2C2 I2S1 I2S2 PWC SDIO1 SPI1 SPI2 TMR1 TMR2 TMR3 TMR4 "
                 "TMR5 TMR9 TMR10 TMR11 USART1 USART2 USART3 UART4 UART5 USB_OTGFS1 WDT WWDT",
     .clocks = "gpioa gpiob gpioc gpiod gpiof iomux dma1 dma2 adc1 can1 cmp crc i2c1 i2c2 sdio1 spi1 spi2 tmr1 tmr2 "
               "tmr3 tmr4 tmr5 tmr9 tmr10 tmr11 usart1 usart2 usart3 uart4 uart5 otgfs1 wwdt pwc",
     .modules = "crm adc can cmp crc debug dma ertc exint flash gpio i2c misc pwc sdio spi tmr usart usb wdt wwdt",
     .dmaChannels = {7, 7},
     .withoutCode = ""},
    {.name = "GenerateCode_All_F421",
     .series = {ZV32F421, None, None},
     .dispatch = "ADC1 USART1 USART2 SPI1 SPI2 I2S1 I2S2 I2C1 I2C2 CRC WDT WWDT ERTC CMP1 EXINT PWC TMR1 TMR3 TMR6 "
                 "TMR14 TMR15 TMR16 TMR17 IRTMR SCFG",
     .clocks = "gpioa gpiob gpioc gpiof dma1 scfg cmp adc1 tmr1 tmr3 tmr6 tmr14 tmr15 tmr16 tmr17 spi1 spi2 usart1 "
               "usart2 i2c1 i2c2 crc wwdt pwc",
     .modules = "crm cmp tmr ertc gpio i2c usart pwc adc spi dma debug flash crc wwdt wdt exint misc scfg",
     .dmaChannels = {5, 0}},
    {.name = "GenerateCode_All_F422_F426",
     .series = {ZV32F422, ZV32F426, ZV32F6221},
     .dispatch =
         "ADC1 USART1 USART2 SPI1 SPI2 I2S1 I2S2 I2C1 I2C2 CAN1 CRC WDT WWDT ERTC CMP1 CMP2 DEBUG EXINT PWC TMR1 "
         "TMR3 TMR4 TMR6 TMR14 TMR15 TMR16 TMR17 IRTMR SCFG",
     .clocks = "gpioa gpiob gpioc gpiof dma1 scfg cmp adc1 can1 tmr1 tmr3 tmr4 tmr6 tmr14 tmr15 tmr16 tmr17 spi1 spi2 "
               "usart1 usart2 i2c1 i2c2 crc wwdt pwc",
     .modules = "crm cmp can tmr ertc gpio i2c usart pwc adc spi dma debug flash crc wwdt wdt exint misc scfg",
     .dmaChannels = {7, 0},
     .withoutCode = ""},
    {.name = "GenerateCode_All_F423_A423",
     .series = {ZV32F423, ZV32A423, None},
     .dispatch =
         "ACC ADC1 CAN1 CAN2 CRC DAC ERTC EXINT I2C1 I2C2 I2C3 I2S1 I2S2 I2S3 IRTMR PWC SCFG SPI1 SPI2 SPI3 TMR1 "
         "TMR2 TMR3 TMR4 TMR6 TMR7 TMR9 TMR10 TMR11 TMR12 TMR13 TMR14 USART1 USART2 USART3 USART4 USART5 USART6 "
         "USART7 USART8 USB_OTGFS1 WDT WWDT XMC XMC_NORFlash-PSRAM-LCD_1",
     .clocks = "gpioa gpiob gpioc gpiod gpioe gpiof dma1 dma2 scfg acc adc1 can1 can2 crc dac i2c1 i2c2 i2c3 spi1 spi2 "
               "spi3 tmr1 tmr2 tmr3 tmr4 tmr6 tmr7 tmr9 tmr10 tmr11 tmr12 tmr13 tmr14 usart1 usart2 usart3 usart4 "
               "usart5 usart6 usart7 usart8 otgfs1 wwdt xmc pwc",
     .modules = "crm acc adc can crc dac debug dma ertc exint flash gpio i2c misc pwc scfg spi tmr usart usb wdt "
                "wwdt xmc",
     .dmaChannels = {7, 7}},
    {.name = "GenerateCode_All_F425",
     .series = {ZV32F425, None, None},
     .dispatch = "ACC ADC1 CAN1 CRC ERTC EXINT I2C1 I2C2 I2S1 I2S2 I2S3 IRTMR PWC SCFG SPI1 SPI2 SPI3 TMR1 TMR2 TMR3 "
                 "TMR6 TMR7 TMR13 TMR14 TMR15 TMR16 TMR17 USART1 USART2 USART3 USART4 USB_OTGFS1 WDT WWDT",
     .clocks = "gpioa gpiob gpioc gpiod gpiof dma1 scfg acc adc1 can1 crc i2c1 i2c2 spi1 spi2 spi3 tmr1 tmr2 tmr3 tmr6 "
               "tmr7 tmr13 tmr14 tmr15 tmr16 tmr17 usart1 usart2 usart3 usart4 otgfs1 wwdt pwc",
     .modules = "crm acc adc can crc debug dma ertc exint flash gpio i2c misc pwc scfg spi tmr usart usb wdt wwdt",
     .dmaChannels = {7, 0}},
    {.name = "GenerateCode_All_F435_F437",
     .series = {ZV32F435, ZV32F437, None},
     .dispatch =
         "ACC ADC-Common ADC1 ADC2 ADC3 CAN1 CAN2 CRC DAC DVP EMAC ERTC EXINT I2C1 I2C2 I2C3 I2S1 I2S2 I2S3 I2S4 IRTMR "
         "PWC QSPI1 QSPI2 SCFG SDIO1 SDIO2 SPI1 SPI2 SPI3 SPI4 TMR1 TMR8 TMR20 TMR2 TMR3 TMR4 TMR5 TMR6 TMR7 TMR9 "
         "TMR12 TMR10 TMR11 TMR13 TMR14 USART1 USART2 USART3 USART6 UART4 UART5 UART7 UART8 USB_OTGFS1 USB_OTGFS2 WDT "
         "WWDT XMC XMC_NORFlash-PSRAM-SRAM-ROM-LCD_1 XMC_NORFlash-PSRAM-SRAM-ROM-LCD_2 "
         "XMC_NORFlash-PSRAM-SRAM-ROM-LCD_3 XMC_NORFlash-PSRAM-SRAM-ROM-LCD_4 XMC_NANDFlash_1 XMC_NANDFlash_2 "
         "XMC_PCCard XMC_SDRAM_1 XMC_SDRAM_2",
     .clocks =
         "gpioa gpiob gpioc gpiod gpioe gpiof gpiog gpioh dma1 dma2 edma scfg acc adc1 adc2 adc3 can1 can2 crc dac "
         "dvp emac i2c1 i2c2 i2c3 qspi1 qspi2 sdio1 sdio2 spi1 spi2 spi3 spi4 tmr1 tmr2 tmr3 tmr4 tmr5 tmr6 tmr7 "
         "tmr8 tmr9 tmr10 tmr11 tmr12 tmr13 tmr14 tmr20 usart1 usart2 usart3 uart4 uart5 usart6 uart7 uart8 "
         "otgfs1 otgfs2 wwdt xmc pwc",
     .modules = "crm acc adc can crc dac debug dma dvp edma emac ertc exint flash gpio i2c misc pwc qspi scfg sdio "
                "spi tmr usart usb wdt wwdt xmc",
     .dmaChannels = {7, 7},
     .edmaStreams = 8},
    {.name = "GenerateCode_All_F45x",
     .series = {ZV32F455, ZV32F456, ZV32F457},
     .dispatch =
         "ACC ADC1 ADC2 AES CAN1 CAN2 CAN3 CRC DAC EMAC ERTC EXINT I2C1 I2C2 I2C3 I2S1 I2S2 I2S3 I2SF5 IRTMR PWC "
         "QSPI1 SCFG SDIO1 SPI1 SPI2 SPI3 SPI4 TMR1 TMR8 TMR2 TMR3 TMR4 TMR5 TMR6 TMR7 TMR9 TMR10 TMR11 TMR12 "
         "TMR13 TMR14 TRNG USART1 USART2 USART3 USART4 USART5 USART6 UART7 UART8 USB_OTGFS1 WDT WWDT "
         "XMC XMC_NORFlash-PSRAM-LCD_1",
     .clocks =
         "gpioa gpiob gpioc gpiod gpioe gpiof gpiog gpioh dma1 dma2 scfg acc adc1 adc2 aes can1 can2 can3 crc dac "
         "emac i2c1 i2c2 i2c3 i2sf5 qspi1 sdio1 spi1 spi2 spi3 spi4 tmr1 tmr2 tmr3 tmr4 tmr5 tmr6 tmr7 tmr8 tmr9 "
         "tmr10 tmr11 tmr12 tmr13 tmr14 trng usart1 usart2 usart3 usart4 usart5 usart6 uart7 uart8 otgfs1 wwdt "
         "xmc pwc",
     .modules = "crm acc adc aes can crc dac debug dma emac ertc exint flash gpio i2c misc pwc qspi scfg sdio spi "
                "tmr trng usart usb wdt wwdt xmc",
     .dmaChannels = {7, 7}},
    {.name = "GenerateCode_All_L021_F011",
     .series = {ZV32L021, ZV32F011, None},
     .dispatch =
         "ADC1 USART1 USART2 USART3 USART4 SPI1 SPI2 I2S1 I2S2 I2C1 I2C2 CAN1 CRC HWDIV WDT WWDT ERTC EXINT PWC "
         "TMR1 TMR3 TMR6 TMR14 TMR15 TMR16 TMR17 IRTMR SCFG",
     .clocks = "gpioa gpiob gpioc gpiof dma1 scfg adc1 can1 hwdiv tmr1 tmr3 tmr6 tmr14 tmr15 tmr16 tmr17 spi1 spi2 "
               "usart1 usart2 usart3 usart4 i2c1 i2c2 crc wwdt pwc",
     .modules = "crm adc can crc debug dma ertc exint flash gpio hwdiv i2c misc pwc scfg spi tmr usart wdt wwdt",
     .dmaChannels = {5, 0}},
    {.name = "GenerateCode_All_M412_M416",
     .series = {ZV32M412, ZV32M416, None},
     .dispatch =
         "ADC1 ADC2 CAN1 CMP1 CMP2 CRC DAC ERTC EXINT I2C1 I2C2 I2S1 I2S2 IRTMR OP PWC SCFG SPI1 SPI2 TMR1 TMR3 "
         "TMR4 TMR6 TMR14 TMR15 TMR16 TMR17 USART1 USART2 USART3 USART4 WDT WWDT",
     .clocks =
         "gpioa gpiob gpioc gpiod gpiof dma1 scfg adc1 adc2 can1 cmp crc dac i2c1 i2c2 op spi1 spi2 tmr1 tmr3 tmr4 "
         "tmr6 tmr14 tmr15 tmr16 tmr17 usart1 usart2 usart3 usart4 wwdt pwc",
     .modules = "crm adc can cmp crc dac debug dma ertc exint flash gpio i2c misc op pwc scfg spi tmr usart wdt wwdt",
     .dmaChannels = {7, 0}},
}};

} // namespace

QStringList splitNames(const char *names)
{
    static QMutex mutex;
    static QHash<const char *, QStringList> known;
    const QMutexLocker lock(&mutex);
    auto list = known.constFind(names);
    if (list == known.constEnd())
        list = known.insert(names, QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    return *list;
}

QStringList SeriesGeneratorRow::dmaChannelList() const
{
    QStringList channels;
    for (size_t controller = 0; controller < dmaChannels.size(); ++controller) {
        for (int channel = 1; channel <= dmaChannels[controller]; ++channel)
            channels.append(QStringLiteral("DMA%1_Channel%2").arg(controller + 1).arg(channel));
    }
    return channels;
}

QStringList SeriesGeneratorRow::edmaStreamList() const
{
    QStringList streams;
    for (int stream = 1; stream <= edmaStreams; ++stream)
        streams.append(QLatin1String("EDMA_Stream") + QString::number(stream));
    return streams;
}

const SeriesGeneratorRow *seriesGeneratorRow(ZV32MCUSERIALS series)
{
    if (series == None)
        return nullptr;
    for (const SeriesGeneratorRow &row : Rows) {
        for (const ZV32MCUSERIALS code : row.series) {
            if (code == series)
                return &row;
        }
    }
    return nullptr;
}

std::span<const SeriesGeneratorRow> seriesGeneratorRows()
{
    return Rows;
}

bool isAlwaysNeeded(const QString &module)
{
    static const QStringList always{QStringLiteral("crm"), QStringLiteral("pwc"), QStringLiteral("flash"),
                                    QStringLiteral("misc")};
    return always.contains(module);
}

} // namespace ChipLoom
