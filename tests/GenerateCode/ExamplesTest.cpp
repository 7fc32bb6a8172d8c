#include "ArmCompiler.h"
#include "Design/ModuleConfiguration.h"
#include "GenerationFixture.h"
#include "Model/SeriesHelpers.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

class Examples : public GenerationFixture
{
protected:
    // A middleware needs sources that no design brings along.
    bool hasMiddleware()
    {
        for (const PeripheralsBaseInfo &entry : design.middlewares()) {
            if (design.module(entry.InstanceName)->GetIPValidFlag())
                return true;
        }
        return false;
    }

    // The code of the design, made anew, leaves no marker and compiles without a warning.
    void expectToCompile()
    {
        QDir(folder.path() + "/project").removeRecursively();
        const GenerationRecord record = generate();
        ASSERT_TRUE(record.ok) << record.error.toStdString();
        expectNoMarkers();
        QStringList sources;
        for (const QString &file : files()) {
            if (file.endsWith(".c"))
                sources.append(path(file));
        }
        const QString templates = MCUSerialString_To_MCUConSerialString(design.series());
        EXPECT_EQ(complaintsOfCompiler(templates, sources, {path("inc")}).toStdString(), "");
    }
};

// The code of every example design compiles without a warning.
TEST_F(Examples, Compile)
{
    const QDir examples(CHIPLOOM_SOURCE_DIR "/examples");
    QStringList compiled;
    for (const QString &name : examples.entryList({"*.ZVWP"}, QDir::Files)) {
        SCOPED_TRACE(name.toStdString());
        ASSERT_TRUE(design.OpenDesign(examples.filePath(name)));
        if (hasMiddleware() || checkBeforeGeneration(design) == GenerationStop::NoGenerator)
            continue;
        EXPECT_EQ(checkBeforeGeneration(design), GenerationStop::None);
        for (const char *split : {"false", "true"}) {
            SCOPED_TRACE(split);
            set({QString("project/CodeSplitIP=") + split});
            expectToCompile();
        }
        compiled.append(name.section('.', 0, 0));
    }
    for (const char *name : {"audio", "blink", "camera", "ethernet", "everything-144", "panel", "recorder", "sensor"})
        EXPECT_TRUE(compiled.contains(name)) << name;
}

TEST_F(Examples, StreamsInFilesOfTheirOwnCompile)
{
    open("ZV32F435", "ZV32F435ZMT7", "LQFP144");
    set({"mode/USART1/Mode=Asynchronous", "edma/any=USART1_RX", "dma/any=USART1_TX", "project/CodeSplitIP=true"});
    expectToCompile();
    EXPECT_TRUE(text("src/lm_edma.c").contains("void lm_edma_stream1_init(void)"));
    EXPECT_FALSE(text("src/zv32f435_437_lm_config.c").contains("edma_stream"));
}

// A debug port that is switched off gives all its pins back.
TEST_F(Examples, DebugPortThatIsOffFreesItsPins)
{
    open("ZV32F407", "ZV32F407VGT7", "LQFP100");
    set({"mode/DEBUG/Debug interface=Disable"});
    const GenerationRecord record = generate();
    ASSERT_TRUE(record.ok) << record.error.toStdString();
    EXPECT_TRUE(text("src/main.c").contains("lm_debug_init();"));
    const QString source = text("src/zv32f403a_407_lm_config.c");
    EXPECT_TRUE(source.contains("gpio_pin_remap_config(SWJTAG_MUX_100, TRUE);"));
    EXPECT_TRUE(source.contains("crm_periph_clock_enable(CRM_IOMUX_PERIPH_CLOCK, TRUE);"));
}

} // namespace
