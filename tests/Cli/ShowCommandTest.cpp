#include "QtPrinters.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

struct Outcome
{
    int code;
    QString out, err;
};

/// Runs the program on the sample database beside it.
Outcome show(const QStringList &arguments, const QStringList &options = {})
{
    QProcess process;
    process.start(CHIPLOOM_BIN_DIR "/chiploom-cli", options + QStringList{"show"} + arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(ShowCommand, AppliesSettingsInOrderAndPrintsThePins)
{
    const QStringList settings{"zv32f421c8t7",      "pin/PA10=USART1_RX",   "label/PA10=LOG",
                               "pin/PB7=USART1_RX", "pin/PC13=GPIO_Output", "label/PC13=LED"};
    const Outcome english = show(settings + QStringList{"--section", "pins"});
    EXPECT_EQ(english.code, 0) << english.err.toStdString();
    EXPECT_EQ(english.out, "ZV32F421C8T7  ZV32F421  LQFP48\n\n"
                           "Pins\n"
                           "  Position  Pin   Signal       Label  State\n"
                           "  3         PC13  GPIO_Output  LED    placed by hand\n"
                           "  34        PA13  DEBUG_SWDIO         placed by a mode\n"
                           "  37        PA14  DEBUG_SWCLK         placed by a mode\n"
                           "  43        PB7   USART1_RX           placed by hand, no mode uses it\n");
    EXPECT_TRUE(show(settings, {"--language", "zh"}).out.contains(QStringLiteral("手动分配，尚无模式使用")));

    const Outcome json = show(settings, {"--json"});
    const QJsonObject design = QJsonDocument::fromJson(json.out.toUtf8()).object();
    EXPECT_EQ(design.value("package").toString(), "LQFP48");
    const QJsonObject led = design.value("pins").toArray().first().toObject();
    EXPECT_EQ(led.value("position").toString(), "3");
    EXPECT_EQ(led.value("label").toString(), "LED");
    EXPECT_EQ(led.value("status").toString(), "manual+mode");
    EXPECT_TRUE(show({"ZV32F421C8T7", "mode/DEBUG/SWD=FALSE"}).out.contains("No pin is in use."));
}

TEST(ShowCommand, PrintsPeripheralsInUseAsTheSettingsThatMakeThem)
{
    const QStringList settings{"ZV32F421C8T7", "mode/USART1/Mode=Asynchronous", "param/USART1/BaudRate=9600"};
    const Outcome text = show(settings + QStringList{"--section", "peripherals"});
    EXPECT_EQ(text.code, 0) << text.err.toStdString();
    EXPECT_TRUE(text.out.contains("mode/USART1/Mode ")) << text.out.toStdString();
    EXPECT_TRUE(text.out.contains("param/USART1/BaudRate ")) << text.out.toStdString();
    EXPECT_TRUE(text.out.contains(" 9600 ")) << text.out.toStdString();

    const Outcome refused = show(settings + QStringList{"param/USART1/BaudRate=1"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.err.contains("1 is too small for BaudRate: at least ")) << refused.err.toStdString();
    EXPECT_EQ(show({"ZV32F421C8T7", "mode/USART1/Mode=Sideways"}).code, 1);
}

TEST(ShowCommand, PrintsDmaRequestsAsTheSettingsThatMakeThem)
{
    const QStringList settings{"ZV32F421C8T7", "mode/USART1/Mode=Asynchronous", "dma/any=USART1_TX",
                               "dma/DMA1_Channel1=MEMTOMEM", "dma/MEMTOMEM/Priority=DMA_PRIORITY_HIGH"};
    const Outcome text = show(settings + QStringList{"--section", "dma"});
    EXPECT_EQ(text.code, 0) << text.err.toStdString();
    QStringList again{"ZV32F421C8T7", "mode/USART1/Mode=Asynchronous", "--section", "dma"};
    for (const QString &line : text.out.split('\n')) {
        const QStringList words = line.simplified().split(' ');
        if (words.first().startsWith("dma/"))
            again.append(words.value(0) + '=' + words.value(1));
    }
    EXPECT_GT(again.size(), 20);
    const Outcome repeated = show(again);
    EXPECT_EQ(repeated.code, 0) << repeated.err.toStdString();
    EXPECT_EQ(repeated.out, text.out);

    const Outcome refused = show(settings + QStringList{"dma/DMA1_Channel1=USART1_RX"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err.trimmed(), "chiploom-cli: dma/DMA1_Channel1=USART1_RX: DMA1_Channel1 serves MEMTOMEM.");
}

TEST(ShowCommand, SaysWhatAPinOffers)
{
    const Outcome text = show({"ZV32F421C8T7", "pin/PB6=USART1_TX", "pin/PA9=TMR1_CH2", "--pin", "PA9"});
    EXPECT_EQ(text.code, 0);
    EXPECT_TRUE(text.out.contains("USART1_TX    Moves here from pin PB6. Takes TMR1_CH2 off this position.\n"))
        << text.out.toStdString();
    const Outcome json = show({"ZV32F421F4P7", "--pin", "PA11"}, {"--json"});
    const QJsonArray functions = QJsonDocument::fromJson(json.out.toUtf8()).object().value("functions").toArray();
    for (const QJsonValue &function : functions)
        EXPECT_EQ(function.toObject().value("possible").toBool(), function.toObject().value("pin") != "PA11");
}

TEST(ShowCommand, PrintsPinSettingsAndInterruptsAsTheSettingsThatMakeThem)
{
    const QStringList design{"ZV32F421C8T7", "mode/USART1/Mode=Asynchronous"};
    const Outcome pins = show(design + QStringList{"pin/PB0=GPIO_Output", "gpio/PB0/GPIO type=Open drain",
                                                   "gpio/PB0/Label=LED", "--section", "gpio"});
    EXPECT_EQ(pins.code, 0) << pins.err.toStdString();
    EXPECT_TRUE(pins.out.contains("  PB0  GPIO_Output\n"
                                  "    gpio/PB0/Output level       GPIO_OUTPUTLEVEL_LOW\n"
                                  "    gpio/PB0/GPIO mode          GPIO_MODE_OUTPUT\n"
                                  "    gpio/PB0/GPIO type          GPIO_OUTPUT_OPEN_DRAIN\n"
                                  "    gpio/PB0/Pull type          GPIO_PULL_NONE\n"
                                  "    gpio/PB0/Driver capability  GPIO_DRIVE_STRENGTH_STRONGER\n"
                                  "    gpio/PB0/Label              LED\n"))
        << pins.out.toStdString();

    const QStringList interrupts{"nvic/PriorityGroup=NVIC_PRIORITY_GROUP_3", "nvic/USART1_IRQn/Enabled=TRUE",
                                 "nvic/USART1_IRQn/PreemptionPriority=7", "--section", "nvic"};
    const Outcome table = show(design + interrupts);
    EXPECT_TRUE(table.out.contains("  nvic/PriorityGroup  NVIC_PRIORITY_GROUP_3\n"));
    EXPECT_TRUE(table.out.contains(QRegularExpression("  nvic/USART1_IRQn +TRUE +TRUE +7 +0 +FALSE\n")))
        << table.out.toStdString();
    const QJsonObject json =
        QJsonDocument::fromJson(show(design + interrupts, {"--json"}).out.toUtf8()).object().value("nvic").toObject();
    EXPECT_EQ(json.value("priorityGroup").toString(), "NVIC_PRIORITY_GROUP_3");
    int open = 0;
    for (const QJsonValue &vector : json.value("vectors").toArray())
        open += vector["open"].toBool();
    EXPECT_GT(json.value("vectors").toArray().size(), open) << "closed ones as well";
}

TEST(ShowCommand, ARefusalNamesTheReason)
{
    struct Row
    {
        QStringList arguments;
        int code;
        const char *message;
    };
    const QList<Row> rows{
        {{"ZV32F421C8T7", "pin/PA9=USART1_RX", "pin/PA9=USART1_TX"},
         1,
         "pin/PA9=USART1_RX: Pin PA9 does not offer USART1_RX."},
        {{"ZV32F421C8T7", "nvic/USART1_IRQn/Enabled=TRUE"},
         1,
         "nvic/USART1_IRQn/Enabled=TRUE: USART1_IRQn is closed: nothing that raises it is in use."},
        {{"ZV32F421C8T7", "pin/VDD=GPIO_Input"},
         1,
         "pin/VDD=GPIO_Input: Pin VDD has a fixed purpose and cannot be assigned."},
        {{"ZV32F421C8T7", "label/PA9=LED"}, 1, "label/PA9=LED: Nothing stands on pin PA9 that could be labelled."},
        {{"ZV32F421C8T7", "mood/PA9=LED"}, 1, "mood/PA9=LED: There is no setting \"mood/PA9\" in this design."},
        {{"ZV32F421C8T7", "PA9"}, 2, "\"PA9\" is no setting; write it as pin/PA9=USART1_TX."},
        {{"ZV32F421C8T7", "--section", "moods"},
         2,
         "There is no section \"moods\"; there are: pins, peripherals, gpio, nvic, dma, clock, project"},
        {{"ZV32F421C8T7", "--pin", "PZ9"}, 2, "There is no pin \"PZ9\"."},
        {{"ZV32F999"}, 2, "There is no device \"ZV32F999\" in the catalogue; \"devices\" lists them."},
    };
    for (const Row &row : rows) {
        const Outcome outcome = show(row.arguments);
        EXPECT_EQ(outcome.code, row.code) << row.message;
        EXPECT_EQ(outcome.out, "") << row.message;
        EXPECT_EQ(outcome.err, QString("chiploom-cli: %1\n").arg(row.message));
    }
}

} // namespace
