#include "GenerationFixture.h"
#include "Limits.h"
#include "Model/SeriesHelpers.h"
#include "Model/xmloperation.h"

#include <QDateTime>
#include <QRegularExpression>

#include <array>
#include <thread>

#include <sys/stat.h>

using namespace ChipLoom;
using namespace ChipLoom::Test;
using State = GeneratedFileRecord::State;

namespace {

const QString Source = "src/zv32f421_lm_config.c";
const QString Header = "inc/zv32f421_lm_config.h";

class Generation : public GenerationFixture
{
};

TEST_F(Generation, LeavesNoMarkerOnAnyPackage)
{
    QSet<QString> packages;
    for (const MCUSerialStruct &series : XMLOperation(paths).GetMCUSerialsList()) {
        for (const MCUDeviceStruct &device : series.MCUDeviceList) {
            SCOPED_TRACE(device.DeviceName.toStdString());
            // Devices of one package differ in the size of their memories only.
            if (packages.contains(series.SeriaName + device.DevicePackage))
                continue;
            packages.insert(series.SeriaName + device.DevicePackage);
            open(series.SeriaName, device.DeviceName, device.DevicePackage);
            for (const char *split : {"false", "true"}) {
                set({QString("project/CodeSplitIP=") + split});
                QDir(folder.path() + "/project").removeRecursively();
                const GenerationRecord record = generate();
                ASSERT_TRUE(record.ok) << record.error.toStdString();
                expectNoMarkers();
                EXPECT_TRUE(text("src/main.c").contains("  lm_system_clock_config();\n"));
            }
        }
    }
    EXPECT_GE(packages.size(), 10);
}

TEST_F(Generation, WritesOneCallForPinsWithTheSameSettings)
{
    openSmall();
    set({"pin/PB0=GPIO_Output", "pin/PB1=GPIO_Output", "pin/PB10=GPIO_Output", "pin/PA0=GPIO_Input",
         "gpio/PB1/GPIO_OutputLevel=GPIO_OUTPUTLEVEL_HIGH", "gpio/PA0/GPIO_PullType=GPIO_PULL_UP"});
    ASSERT_TRUE(generate().ok);
    const QString source = text(Source);
    const QString indent(31, ' ');
    EXPECT_TRUE(source.contains("  gpio_init_struct.gpio_pins = GPIO_PINS_0 | \n" + indent + "GPIO_PINS_1 | \n" +
                                indent + "GPIO_PINS_10;\n"));
    EXPECT_EQ(source.count("gpio_init(GPIOB"), 1);
    EXPECT_TRUE(source.contains("  gpio_bits_reset(GPIOB, GPIO_PINS_0 | \n" + QString(18, ' ') +
                                "GPIO_PINS_10);\n"
                                "  gpio_bits_set(GPIOB, GPIO_PINS_1);\n\n"));
    EXPECT_LT(source.indexOf("gpio_bits_set("), source.indexOf("gpio_init(GPIOB"));
    EXPECT_TRUE(source.contains("gpio_init_struct.gpio_pull = GPIO_PULL_UP;\n  gpio_init(GPIOA, &gpio_init_struct);"));
    EXPECT_TRUE(source.contains("crm_periph_clock_enable(CRM_GPIOB_PERIPH_CLOCK, TRUE);"));
    EXPECT_FALSE(source.contains("CRM_GPIOF_PERIPH_CLOCK"));
    EXPECT_TRUE(text("src/main.c").contains("  lm_gpio_config();\n"));
}

TEST_F(Generation, MakesUnusedPinsAnalogWithOneCallForEachPort)
{
    openSmall();
    set({"project/NotUsedPinAnalog=true"});
    ASSERT_TRUE(generate().ok);
    const QString source = text(Source);
    for (const char *port : {"GPIOA", "GPIOB", "GPIOC", "GPIOF"})
        EXPECT_EQ(source.count(QString("gpio_init(%1, ").arg(port)), 1) << port;
    EXPECT_FALSE(source.contains("GPIO_PINS_13 | \n" + QString(31, ' ') + "GPIO_PINS_14 | \n" + QString(31, ' ') +
                                 "GPIO_PINS_15;\n  gpio_init_struct.gpio_pull = GPIO_PULL_NONE;\n  gpio_init(GPIOA"))
        << "the debug port is in use";
}

// Small packages have PD0 and PD1 on the pins of the crystal, larger ones on pins of their own.
TEST_F(Generation, TakesThePinsOfTheCrystalForWhatStandsOnThem)
{
    const QString takes = "gpio_pin_remap_config(PD01_GMUX, TRUE);";
    const QStringList designs{"pin/PD1=GPIO_Output", "pin/PD0=EVENTOUT", "mode/EXINT/EXINT1=TRUE pin/PD1=EXINT1",
                              "mode/CAN1/Activated=TRUE pin/PD0=CAN1_RX pin/PD1=CAN1_TX"};
    for (const QString &settings : designs) {
        for (const bool small : {true, false}) {
            ASSERT_TRUE(
                design.NewDesign("ZV32F407", small ? "ZV32F407RGT7" : "ZV32F407VGT7", small ? "LQFP64" : "LQFP100"));
            set(settings.split(' '));
            ASSERT_TRUE(generate().ok);
            const QString source = text("src/zv32f403a_407_lm_config.c");
            EXPECT_EQ(source.count(takes), small ? 1 : 0) << qPrintable(settings);
        }
    }
}

TEST_F(Generation, GivesEachPinALabelOfItsOwn)
{
    openSmall();
    const QList<GPIO_Pin_Define_Info *> defines = generationInput(design).pinDefines;
    std::vector<SignalsGPIOSetting> settings(3);
    for (size_t i = 0; i < settings.size(); ++i) {
        settings[i].signalName = "GPIO_Output";
        settings[i].signalInPinName = QStringList{"PA5", "PB3", "PB4"}.at(static_cast<int>(i));
        settings[i].signalUserLabel = i < 2 ? "LED" : "";
        settings[i].signalUserLabel_EXT = "stale";
    }
    HandleSignalsGPIOUserLabel(settings, defines);
    EXPECT_EQ(settings[0].signalUserLabel_EXT, "LED");
    EXPECT_EQ(settings[1].signalUserLabel_EXT, "LED_B3");
    EXPECT_EQ(settings[2].signalUserLabel_EXT, "");
    settings[2].signalUserLabel = "LED_B3";
    HandleSignalsGPIOUserLabel(settings, defines);
    EXPECT_EQ(settings[1].signalUserLabel_EXT, "LED_B3_B3");
    EXPECT_EQ(settings[2].signalUserLabel_EXT, "LED_B3") << "it was chosen for this pin alone";

    set({"pin/PA5=GPIO_Output", "label/PA5=LED"});
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text(Header).contains("#define LED_PIN    GPIO_PINS_5\n#define LED_GPIO_PORT    GPIOA\n\n"));
    EXPECT_TRUE(text(Source).contains("  gpio_init_struct.gpio_pins = LED_PIN;\n"));
    EXPECT_TRUE(text(Source).contains("gpio_init(LED_GPIO_PORT, &gpio_init_struct);"));
}

TEST_F(Generation, KeepsUserBlocksAndTouchesNothingTheSecondTime)
{
    openSmall();
    set({"pin/PB0=GPIO_Output"});
    ASSERT_TRUE(generate().ok);
    replaceIn(Source, "/* add user code begin gpio_config 0 */\n",
              "/* add user code begin gpio_config 0 */\n  mine();\n");
    replaceIn("src/zv32f421_int.c", "/* add user code begin W1_HardFault_IRQ 0 */\n",
              "/* add user code begin W1_HardFault_IRQ 0 */\n    blink();\n");
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text(Source).contains("  mine();\n"));
    EXPECT_TRUE(text("src/zv32f421_int.c").contains("    blink();\n"));

    QMap<QString, QDateTime> times;
    for (const QString &name : files())
        times.insert(name, QFileInfo(path(name)).lastModified());
    const GenerationRecord second = generate();
    ASSERT_TRUE(second.ok);
    for (const GeneratedFileRecord &file : second.files) {
        EXPECT_EQ(file.state, State::Unchanged) << file.path.toStdString();
        EXPECT_EQ(QFileInfo(path(file.path)).lastModified(), times.value(file.path));
    }

    set({"pin/PB0="});
    const GenerationRecord without = generate(false);
    EXPECT_EQ(stateOf(without, Source), State::Changed);
    for (const GeneratedFileRecord &file : without.files)
        EXPECT_EQ(file.lostBlocks, file.path == Source ? QStringList{"gpio_config 0"} : QStringList())
            << file.path.toStdString();
    EXPECT_TRUE(text(Source).contains("mine();")) << "a dry run writes nothing";

    set({"project/KeepUserCode=false"});
    for (const GeneratedFileRecord &file : generate().files)
        EXPECT_EQ(file.lostBlocks, file.path == Source                 ? QStringList{"gpio_config 0"}
                                   : file.path == "src/zv32f421_int.c" ? QStringList{"W1_HardFault_IRQ 0"}
                                                                       : QStringList())
            << file.path.toStdString();
    EXPECT_FALSE(text("src/zv32f421_int.c").contains("blink"));
    EXPECT_TRUE(text(Source + ".bak").contains("  mine();\n")) << "what went can be had back";
    EXPECT_EQ(files().filter(".bak").size(), 2);
}

TEST_F(Generation, KeepsEachFormerFileUnderANameThatNothingHas)
{
    openSmall();
    const auto lose = [&](const QByteArray &line) {
        set({"pin/PB0=GPIO_Output"});
        EXPECT_TRUE(generate().ok);
        const QString marker = "/* add user code begin gpio_config 0 */\n";
        replaceIn(Source, marker, marker + line);
        set({"pin/PB0="});
        QString copy;
        for (const bool write : {false, true}) {
            for (const GeneratedFileRecord &file : generate(write).files) {
                if (file.path != Source)
                    continue;
                EXPECT_TRUE(copy.isEmpty() || copy == file.formerCopy) << "a dry run tells what comes";
                copy = file.formerCopy;
                EXPECT_TRUE(remarksOn(file).first().endsWith(" " + copy.section('/', -1)));
            }
        }
        EXPECT_TRUE(text(copy).contains(QString::fromLatin1(line))) << copy.toStdString();
        return copy;
    };
    set({"pin/PB0=GPIO_Output"});
    ASSERT_TRUE(generate().ok);
    ASSERT_TRUE(QFile::link("elsewhere", path(Source + ".bak")));
    EXPECT_EQ(lose("first();\n"), Source + ".2.bak");
    EXPECT_EQ(lose("other();\n"), Source + ".3.bak");
    EXPECT_EQ(lose("first();\n"), Source + ".2.bak") << "kept already";
    EXPECT_FALSE(files().join(' ').contains("elsewhere")) << "written through the link";
}

// A copy of a handler in a block holds the marker comments of its blocks.
TEST_F(Generation, SaysWhichMarkersStandTwiceWhereTheyHideWhatItLooksFor)
{
    openSmall();
    set({"mode/USART1/Mode=Asynchronous", "param/USART1/Interrupt_RDBF=TRUE", "nvic/USART1_IRQn/Enabled=TRUE"});
    ASSERT_TRUE(generate().ok);
    const QString handlers = "src/zv32f421_int.c";
    const QString made = text(handlers);
    const int start = made.indexOf("void USART1_IRQHandler(void)");
    const QString copy = made.mid(start, made.indexOf("\n}\n", start) + 3 - start);
    replaceIn(handlers, "/* add user code begin 0 */\n", "/* add user code begin 0 */\n#if 0\n" + copy + "#endif\n");
    const QString code = text(handlers);
    const GenerationRecord record = generate();
    EXPECT_FALSE(record.ok);
    QStringList told;
    for (const char *name : {"USART1_IRQ 0", "USART1_IRQ 1", "USART1_USART_RDBF_FLAG"})
        told.append(path(handlers) + ": " + name);
    EXPECT_EQ(record.error.section('\n', 1), told.join('\n'));
    EXPECT_EQ(text(handlers), code);
}

TEST_F(Generation, SaysWhichMarkersStandTwiceWhereTheyKeepGeneratedCode)
{
    openSmall();
    ASSERT_TRUE(generate().ok);
    const QString marker = "/* add user code begin 1 */\n";
    replaceIn("src/main.c", "/* add user code begin 4 */\n", "/* add user code begin 4 */\n" + marker);
    for (int round = 0; round < 2; ++round) {
        const GenerationRecord record = generate();
        ASSERT_TRUE(record.ok) << record.error.toStdString();
        for (const GeneratedFileRecord &file : record.files)
            EXPECT_EQ(file.repeatedBlocks, file.path == "src/main.c" ? QStringList{"1"} : QStringList());
    }
}

TEST_F(Generation, NamesNoBlockAsLostThatTheTemplateFilled)
{
    openSmall();
    set({"mode/USART1/Mode=Asynchronous", "dma/any=USART1_TX"});
    ASSERT_TRUE(generate().ok);
    ASSERT_TRUE(text("inc/zv32f421_lm_config.h").contains("add user code begin dma define"));
    set({"mode/USART1/Mode=Disable", "project/KeepUserCode=false"});
    const GenerationRecord off = generate(false);
    EXPECT_EQ(stateOf(off, Source), State::Changed);
    for (const GeneratedFileRecord &file : off.files)
        EXPECT_EQ(file.lostBlocks, QStringList()) << file.path.toStdString();
}

TEST_F(Generation, LeavesNoTraceOfWhatWasOnAndOffAgain)
{
    openSmall();
    ASSERT_TRUE(generate().ok);
    QMap<QString, QString> before;
    for (const QString &name : files())
        before.insert(name, text(name));
    set({"pin/PB0=GPIO_Output", "mode/SYSTEM/Time_Base=TMR6", "clock/sclk=96"});
    ASSERT_TRUE(generate().ok);
    EXPECT_NE(text(Source), before.value(Source));
    set({"pin/PB0=", "mode/SYSTEM/Time_Base=SysTick", "clock/sclk=120"});
    ASSERT_TRUE(generate().ok);
    for (const QString &name : files())
        EXPECT_EQ(text(name), before.value(name)) << name.toStdString();
}

TEST_F(Generation, StopsBeforeWritingWhereAFormerFileCannotBeRead)
{
    openSmall();
    QDir().mkpath(path("src/main.c"));
    const GenerationRecord record = generate();
    EXPECT_FALSE(record.ok);
    EXPECT_TRUE(record.error.contains(path("src/main.c"))) << record.error.toStdString();
    EXPECT_EQ(files(), QStringList());

    QDir(folder.path() + "/project").removeRecursively();
    QFile blocking(folder.path() + "/project");
    ASSERT_TRUE(blocking.open(QIODevice::WriteOnly));
    EXPECT_FALSE(generate().ok);
}

TEST_F(Generation, NamesTheFolderThatCannotBeMade)
{
    openSmall();
    const AsOrdinaryUser user(folder.path());
    ASSERT_TRUE(QFile(folder.path()).setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(generate().error, "Creating \"project\" folder error!\n" + folder.path() + "/project");
    ASSERT_TRUE(QFile(folder.path()).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    ASSERT_TRUE(QDir().mkpath(path("inc")));
    ASSERT_TRUE(QFile(path("")).setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    const QString error = generate().error;
    EXPECT_EQ(error, "Creating \"src\" folder error!\n" + path("src"));
    QFile(path("")).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(Generation, StopsBeforeWritingAtAPipeAndAtWhatMayNotBeRead)
{
    openSmall();
    const AsOrdinaryUser user(folder.path());
    QDir().mkpath(path("src"));
    QDir().mkpath(path("inc"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("src/main.c")).constData(), 0600), 0);
    QFile locked(path("inc/lm_system.h"));
    ASSERT_TRUE(locked.open(QIODevice::WriteOnly));
    locked.close();
    ASSERT_TRUE(locked.setPermissions({}));
    const GenerationRecord record = generate();
    EXPECT_FALSE(record.ok);
    EXPECT_TRUE(record.error.contains(path("src/main.c"))) << record.error.toStdString();
    EXPECT_TRUE(record.error.contains(path("inc/lm_system.h"))) << record.error.toStdString();
    EXPECT_FALSE(QFile::exists(path(Source)));
}

TEST_F(Generation, LeavesEachFileOldOrNewOnAFullDisk)
{
    openSmall();
    {
        const FullDisk disk(4000);
        const QString error = generate().error;
        EXPECT_TRUE(error.startsWith(path(""))) << "told by the name that it was to have: " << error.toStdString();
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    ASSERT_TRUE(generate().ok);
    QMap<QString, QString> old, fresh;
    for (const QString &name : files())
        old.insert(name, text(name));
    set({"pin/PB0=GPIO_Output", "mode/USART1/Mode=Asynchronous", "clock/sclk=96"});
    GenerationRecord record;
    {
        const FullDisk disk(4000);
        record = generate();
    }
    EXPECT_FALSE(record.ok);
    EXPECT_TRUE(record.error.contains(folder.path())) << record.error.toStdString();
    const QStringList after = files();
    EXPECT_EQ(after, QStringList(old.keys())) << "a part of a file was left";
    QMap<QString, QString> halfway;
    for (const QString &name : after)
        halfway.insert(name, text(name));
    ASSERT_TRUE(generate().ok);
    for (const QString &name : after) {
        EXPECT_TRUE(halfway.value(name) == old.value(name) || halfway.value(name) == text(name)) << name.toStdString();
        fresh.insert(name, text(name));
    }
    EXPECT_NE(fresh, old);
}

TEST_F(Generation, TakesAwayWhatAKilledRunLeftOfANewFolder)
{
    openSmall();
    const QString left = folder.path() + QStringLiteral("/project.chiploom-part-%1-1").arg(endedProcess());
    for (const char *setting : {"pin/PB0=GPIO_Output", "pin/PB1=GPIO_Output"}) {
        ASSERT_TRUE(QDir().mkpath(left + "/src"));
        makeOld(left);
        set({setting});
        ASSERT_TRUE(generate().ok);
        EXPECT_FALSE(QFile::exists(left)) << setting;
    }
}

TEST_F(Generation, DropsFiftyMegabytesWithoutAnEndLine)
{
    openSmall();
    ASSERT_TRUE(generate().ok);
    const QString before = text(Source);
    QFile file(path(Source));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QByteArray text50 = before.toLatin1().replace("add user code end", "add user code");
    text50 += QByteArray("/* add user code begin 1 */\n  text();\n").repeated(50 * 1024 * 1024 / 38);
    file.write(text50);
    file.close();
    ASSERT_TRUE(generate().ok);
    EXPECT_EQ(text(Source), before);
}

TEST_F(Generation, GivesATimerOfTheTimeBaseClockAndDriverButNoFunction)
{
    openSmall();
    set({"mode/SYSTEM/Time_Base=TMR6"});
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text(Source).contains("CRM_TMR6_PERIPH_CLOCK"));
    EXPECT_FALSE(text(Source).contains("lm_tmr6_init"));
    EXPECT_TRUE(text("inc/zv32f421_conf.h").contains("#define TMR_MODULE_ENABLED\n"));
    EXPECT_TRUE(text("src/lm_system.c").contains("tmr_base_init(TMR6, "));
    EXPECT_TRUE(text("src/lm_system.c").contains("timebase_clock = crm_clocks.apb1_freq;"));
    EXPECT_TRUE(text("src/main.c").contains("lm_timebase_init();"));
}

TEST_F(Generation, WritesHandlersThatAreWantedAndSwitchesOffUnusedDrivers)
{
    openSmall();
    set({"nvic/FLASH_IRQn/Enabled=TRUE", "nvic/FLASH_IRQn/PreemptionPriority=3", "nvic/CRM_IRQn/Enabled=TRUE",
         "nvic/CRM_IRQn/GenerateHandler=FALSE"});
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text(Source).contains("  nvic_irq_enable(FLASH_IRQn, 3, 0);\n"));
    EXPECT_TRUE(text(Source).contains("  nvic_irq_enable(CRM_IRQn, 0, 0);\n"));
    EXPECT_FALSE(text(Source).contains("nvic_irq_enable(USART1_IRQn"));
    for (const char *file : {"src/zv32f421_int.c", "inc/zv32f421_int.h"}) {
        EXPECT_TRUE(text(file).contains("void FLASH_IRQHandler(void)")) << file;
        EXPECT_FALSE(text(file).contains("CRM_IRQHandler")) << file;
    }
    // A handler that the user writes takes what its instances have there with it, and nothing else.
    set({"mode/USART1/Mode=Asynchronous", "param/USART1/Interrupt_RDBF=TRUE", "nvic/USART1_IRQn/Enabled=TRUE"});
    ASSERT_TRUE(generate().ok);
    QString with = text("src/zv32f421_int.c");
    set({"nvic/USART1_IRQn/GenerateHandler=FALSE"});
    ASSERT_TRUE(generate().ok);
    const int start = with.indexOf("/**\n  * @brief  this function handles usart1 interrupts.");
    ASSERT_TRUE(start > 0 && with.contains("USART_RDBF_FLAG"));
    EXPECT_EQ(text("src/zv32f421_int.c"), with.remove(start, with.indexOf("\n}\n\n", start) + 4 - start));
    set({"mode/USART1/Mode=Disable"});

    // A prototype of the user's own stays, whatever it is called.
    const QString begin = "/* add user code begin exported functions */\n";
    ASSERT_TRUE(text("inc/zv32f421_int.h").contains(begin));
    replaceIn("inc/zv32f421_int.h", begin, begin + "void CRM_IRQHandler(void);\n");
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text("inc/zv32f421_int.h").contains(begin + "void CRM_IRQHandler(void);\n"));
    EXPECT_EQ(text("inc/zv32f421_int.h").count("_IRQHandler"), 2);
    for (const QString &line : text("inc/zv32f421_conf.h").split('\n')) {
        if (line.startsWith("/*#define")) {
            EXPECT_EQ(line.size(), 52) << line.toStdString();
        }
    }
}

TEST_F(Generation, SplitsPinsIntoFilesOfTheirOwn)
{
    openSmall();
    set({"pin/PB0=GPIO_Output", "project/CodeSplitIP=true"});
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text("src/lm_gpio.c").contains("void lm_gpio_config(void)\n"));
    EXPECT_TRUE(text("src/lm_gpio.c").contains("#include \"lm_gpio.h\""));
    EXPECT_TRUE(text("inc/lm_gpio.h").contains("#ifndef __LM_GPIO_H"));
    EXPECT_FALSE(text(Source).contains("lm_gpio_config") || text(Header).contains("lm_gpio_config"));
    EXPECT_TRUE(text("src/main.c").contains("#include \"lm_gpio.h\"\n"));
    EXPECT_EQ(files().filter("lm_").size(), 6) << files().join(' ').toStdString();
    replaceIn("src/lm_gpio.c", "/* add user code begin gpio_config 1 */\n",
              "/* add user code begin gpio_config 1 */\n  own();\n");
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text("src/lm_gpio.c").contains("own();"));

    // What has no group of its own stays in the common file, and so does a controller that the device does not list.
    open("ZV32F435", "ZV32F435ZMT7", "LQFP144");
    set({"mode/USART1/Mode=Asynchronous", "edma/any=USART1_RX", "dma/any=USART1_TX", "project/CodeSplitIP=true"});
    GenerationInput input = generationInput(design, generationOptions(design));
    input.peripherals.erase(
        std::remove_if(input.peripherals.begin(), input.peripherals.end(),
                       [](const GenerationPeripheral &entry) { return entry.name.endsWith("DMA"); }),
        input.peripherals.end());
    QDir(folder.path() + "/project").removeRecursively();
    ASSERT_TRUE(GenerateCode_ALL::Get_GenerateCode_All(input)->GenerateCode(folder.path() + "/project"));
    expectNoMarkers();
    EXPECT_TRUE(text("src/zv32f435_437_lm_config.c").contains("void lm_edma_stream1_init(void)"));
    EXPECT_FALSE(QFile::exists(path("src/lm_edma.c")));

    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set({"mode/USART1/Mode=Asynchronous", "project/CodeSplitIP=true"});
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text("src/lm_usart.c").contains("void lm_usart1_init(void)"));
    EXPECT_TRUE(text("src/zv32f403a_407_lm_config.c").contains("void lm_debug_init(void)"));
}

TEST_F(Generation, AddsWhatGccNeedsAndTakesItAwayAgain)
{
    openSmall();
    set({"project/ToolchainIDE=CMake"});
    ASSERT_EQ(generationOptions(design).ideType, IDE_CMAKE);
    ASSERT_TRUE(generate().ok);
    EXPECT_TRUE(text("src/sysmem.c").contains("_sbrk") && text("src/syscalls.c").contains("_write"));
    set({"project/ToolchainIDE=ZV32_IDE"});
    EXPECT_EQ(stateOf(generate(), "src/sysmem.c"), State::Removed);
    EXPECT_EQ(files().filter("sys").size(), 2) << "lm_system stays";

    // Another form of the project in the same folder needs them still.
    set({"project/ToolchainIDE=Makefile"});
    ASSERT_TRUE(generate().ok);
    QFile makefile(folder.path() + "/Makefile");
    ASSERT_TRUE(makefile.open(QIODevice::WriteOnly));
    makefile.write("C_SOURCES = \\\nproject/src/sysmem.c \\\nproject/src/syscalls.c \\\n");
    makefile.close();
    set({"project/ToolchainIDE=MDK_V5"});
    ASSERT_TRUE(generate().ok);
    EXPECT_EQ(files().filter("sys").size(), 4);
}

TEST_F(Generation, RefusesWhatWouldHaveNoEffect)
{
    openSmall();
    set({"pin/PB7=USART1_RX", "pin/PA5=SPI1_SCK", "pin/PB10=I2C2_SCL", "pin/PB0=TMR3_CH3", "pin/PB14=TMR15_CH1"});
    bool shownBefore = false;
    EXPECT_EQ(checkBeforeGeneration(design, [&] { shownBefore = prompt.requests.isEmpty(); }), GenerationStop::Pins);
    EXPECT_TRUE(shownBefore);
    EXPECT_EQ(prompt.takeTexts(),
              QStringList("Error: The manually configured pin signal does not take effect.\nPA5-SPI1_SCK / "
                          "PB0-TMR3_CH3 / PB10-I2C2_SCL / PB14-TMR15_CH1 / ......"));
    openSmall();
    EXPECT_EQ(checkBeforeGeneration(design), GenerationStop::None);
}

TEST_F(Generation, MovesDataOfARequestThroughItsChannel)
{
    struct Case
    {
        const char *series, *device, *package, *prefix, *channel, *request, *call, *routing;
    };
    for (const Case &one :
         {Case{"ZV32F421", "ZV32F421C8T7", "LQFP48", "zv32f421", "DMA1_Channel4", "USART1_TX", "(uint32_t)&USART1->dt",
               "scfg_usart1_tx_dma_channel_remap(SCFG_USART1_TX_TO_DMA_CHANNEL_4);"},
          Case{"ZV32F403A", "ZV32F403AVGT7", "LQFP100", "zv32f403a_407", "DMA2_Channel3", "TMR3_CH2",
               "(uint32_t)&TMR3->cdt[1]", "dma_flexible_config(DMA2_CHANNEL3, DMA_FLEXIBLE_TMR3_CH2);"}}) {
        SCOPED_TRACE(one.series);
        open(one.series, one.device, one.package);
        GenerationInput input = generationInput(design);
        DMARequest request;
        request.requestName = one.request;
        request.channelName = one.channel;
        request.configStatus = Request_Used;
        for (const auto &[name, value] : {std::pair("Direction", "DMA_DIR_MEMORY_TO_PERIPHERAL"),
                                          std::pair("Mode", "CIRCULAR"), std::pair("Interrupt_FDT", "TRUE")}) {
            RefParameter parameter;
            parameter.Name = name;
            parameter.CurrentValue = value;
            request.RefParameterfoList.append(parameter);
        }
        input.dmaRequests = {request};
        GenerateCode_ALL generator(*SeriesPlan::of(input.series), input);
        ASSERT_TRUE(generator.GenerateCode(folder.path() + "/project"));

        const QString macro = QString(one.channel).toUpper();
        const QString source = text(QString("src/%1_lm_config.c").arg(one.prefix));
        EXPECT_TRUE(source.contains("direction = DMA_DIR_MEMORY_TO_PERIPHERAL;"));
        EXPECT_TRUE(source.contains("loop_mode_enable = TRUE;"));
        EXPECT_TRUE(source.contains("dma_interrupt_enable(" + macro + ", DMA_FDT_INT, TRUE);"));
        EXPECT_FALSE(source.contains("DMA_HDT_INT"));
        const QString main = text("src/main.c");
        EXPECT_TRUE(main.contains(QString("lm_dma_channel_config(%1, %2,\n").arg(macro, one.call)));
        EXPECT_TRUE((source + main).contains(one.routing));
        EXPECT_EQ(main.count("lm_dma_channel_config("), 1);

        // What the user fills in stays.
        const QString header = QString("inc/%1_lm_config.h").arg(one.prefix);
        const QString size = "#define " + (macro + "_BUFFER_SIZE").leftJustified(40) + " ";
        replaceIn(header, size + "0\n", size + "64\n");
        ASSERT_TRUE(generator.GenerateCode(folder.path() + "/project"));
        EXPECT_TRUE(text(header).contains(size + "64\n"));
    }
}

// Whatever one keeps for the next belongs to its own design.
TEST_F(Generation, GoesOnBesideThatOfAnotherDesign)
{
    struct One
    {
        GenerationInput input;
        QString folder;
        QByteArray expected = {};
    };
    openSmall();
    set({"pin/PB0=GPIO_Output", "gpio/PB0/Label=LAMP", "mode/USART1/Mode=Asynchronous"});
    Design other(paths, prompt);
    ASSERT_TRUE(other.NewDesign("ZV32F421", "ZV32F421C8T7", "LQFP48"));
    for (const char *setting : {"mode/USART1/Mode=Synchronous", "mode/I2C1/Mode=I2C", "pin/PB0=GPIO_Input"})
        ASSERT_TRUE(bool(other.apply(*DesignChange::fromSetting(setting))));
    ASSERT_TRUE(other.scheduler().drain());
    std::array all{One{generationInput(design), "a"}, One{generationInput(other), "b"}};
    const auto made = [&](const One &one) {
        const QString directory = folder.path() + '/' + one.folder;
        QDir(directory).removeRecursively();
        if (!GenerateCode_ALL::Get_GenerateCode_All(one.input)->GenerateCode(directory))
            return QByteArray();
        QByteArray files;
        for (const char *name : {"/src/zv32f421_lm_config.c", "/src/zv32f421_int.c", "/src/main.c"}) {
            QFile file(directory + name);
            files += file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }
        return files;
    };
    for (One &one : all)
        one.expected = made(one);
    ASSERT_TRUE(all[0].expected.contains("LAMP_PIN") && all[1].expected.contains("lm_i2c1_init"));

    const auto generator = GenerateCode_ALL::Get_GenerateCode_All(all[0].input); // asked before and after the other
    ASSERT_TRUE(generator->generate(folder.path() + "/account", false).ok);
    EXPECT_EQ(made(all[1]), all[1].expected);
    ASSERT_TRUE(generator->generate(folder.path() + "/a2", true).ok);
    QFile again(folder.path() + "/a2/src/zv32f421_lm_config.c");
    ASSERT_TRUE(again.open(QIODevice::ReadOnly));
    EXPECT_TRUE(all[0].expected.startsWith(again.readAll()));

    std::array<int, 2> wrong{};
    const auto repeat = [&](size_t which) {
        for (int round = 0; round < 20; ++round)
            wrong[which] += made(all[which]) != all[which].expected;
    };
    std::thread beside(repeat, 0);
    repeat(1);
    beside.join();
    EXPECT_EQ(wrong[0] + wrong[1], 0);
}

// What happens between an account and the writing is not lost.
TEST_F(Generation, WritesWhatItsAccountToldUnlessSomethingChanged)
{
    openSmall();
    const QString directory = folder.path() + "/project";
    const auto between = [&](const std::function<void()> &change) {
        CodeGeneration code(design, directory);
        EXPECT_TRUE(code.run(false).ok);
        const QStringList before = files();
        change();
        EXPECT_TRUE(code.run(true).ok);
        return before;
    };
    EXPECT_EQ(between([] {}), QStringList());
    EXPECT_EQ(files().size(), 8) << files().join(' ').toStdString();

    const QString begin = "/* add user code begin 0 */\n";
    between([&] { replaceIn("src/main.c", begin, begin + "  own();\n"); });
    EXPECT_TRUE(text("src/main.c").contains("own();"));
    between([&] { QFile::remove(path("src/main.c")); });
    EXPECT_FALSE(text("src/main.c").contains("own();"));
    between([&] { set({"pin/PB0=GPIO_Output"}); });
    EXPECT_TRUE(text("src/main.c").contains("lm_gpio_config();"));
    QStringList called;
    between([&] { set({"mode/CRM/HEXT=Disable", "mode/USART1/Mode=Asynchronous"}); });
    for (const MainFuncNameForRank &entry : design.project().functionRank)
        called.append(entry.FuncName);
    EXPECT_TRUE(called.contains("lm_usart1_init")) << called.join(' ').toStdString();

    // The user's own file, put where an earlier choice had made one, stays.
    set({"project/ToolchainIDE=CMake"});
    ASSERT_TRUE(generate().ok);
    set({"project/ToolchainIDE=MDK_V5"});
    between([&] { replaceIn("src/sysmem.c", "_sbrk", "own_sbrk"); });
    EXPECT_TRUE(QFile::exists(path("src/sysmem.c")));
    EXPECT_FALSE(QFile::exists(path("src/syscalls.c")));

    // What has no generator begins no folder.
    design.clear();
    EXPECT_FALSE(generateCode(design, folder.path() + "/none/project", true).ok);
    EXPECT_FALSE(QFile::exists(folder.path() + "/none"));
}

TEST(SeriesRows, CoverEverySeriesThatHasAGeneratorOnce)
{
    QSet<int> seen;
    for (const SeriesGeneratorRow &row : seriesGeneratorRows()) {
        for (const ZV32MCUSERIALS code : row.series) {
            if (code == ZV32ErrorMCU2)
                continue;
            EXPECT_FALSE(seen.contains(code)) << row.name;
            seen.insert(code);
            EXPECT_EQ(seriesGeneratorRow(code), &row);
        }
    }
    EXPECT_EQ(seen.size(), 29);
    EXPECT_EQ(seriesGeneratorRow(ZV32C421), nullptr);
    EXPECT_EQ(seriesGeneratorRow(ZV32F403), nullptr);
}

TEST_F(Generation, ListsTheFilesOfTheProject)
{
    openSmall();
    set({"mode/SYSTEM/Time_Base=TMR6", "mode/USART1/Mode=Asynchronous", "mode/I2S1/Mode=Half_Duplex_Master"});
    const auto generator = GenerateCode_ALL::Get_GenerateCode_All(generationInput(design, generationOptions(design)));
    ASSERT_NE(generator, nullptr);
    QStringList used = generator->GenerateCode_Get_Valid_IP_FileNameList();
    used.sort();
    EXPECT_EQ(used, (QStringList{"zv32f421_crm", "zv32f421_flash", "zv32f421_gpio", "zv32f421_misc", "zv32f421_pwc",
                                 "zv32f421_spi", "zv32f421_tmr", "zv32f421_usart"}));
    EXPECT_EQ(generator->GenerateCode_Get_All_IP_FileNameList().size(), 19);
    EXPECT_TRUE(generator->GenerateCode_Get_Delete_ProjectFilesList().contains("lm_usart.c"));

    set({"project/CodeSplitIP=true"});
    const QStringList gone = GenerateCode_ALL::Get_GenerateCode_All(generationInput(design, generationOptions(design)))
                                 ->GenerateCode_Get_Delete_ProjectFilesList();
    EXPECT_FALSE(gone.contains("lm_usart.c") || gone.contains("lm_i2s.h"));
    EXPECT_TRUE(gone.contains("lm_spi.c") && gone.contains("lm_gpio.h"));
}

} // namespace
