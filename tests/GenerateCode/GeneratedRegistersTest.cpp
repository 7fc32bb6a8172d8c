#include "ClockConfig/ZV32PLLConfig.h"
#include "HostRegisters.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

// What the generated functions and the drivers write into the registers, which are plain memory on the host.
const char *const Program = R"(
#define _GNU_SOURCE
#include <stdio.h>
#include <sys/mman.h>
#include "zv32f403a_407_lm_config.h"

#define SHOW(name, value) printf(name " %lu\n", (unsigned long)(value))

int main(void)
{
  void *const base = (void *)APB1_BUS_BASE;

  if(mmap(base, 0x40000, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0) != base)
  {
    return 1;
  }
  CAN2->sts = CAN_STS_FREEZE; // as the chip acknowledges
  lm_can2_init();
  lm_sdio2_init();
#ifdef SPIM_MODULE_ENABLED
  lm_spim_init();
  SHOW("spim control", SPIM->ctrl);
  SHOW("spim encrypted", SPIM->enc - SPIM_MEMORY_START);
#endif
  lm_xmc_init();
  lm_xmc_norflash_psram_lcd_4_init();
  lm_xmc_nandflash_init();
  SHOW("can timing", CAN2->btmg);
  SHOW("sdio clock", SDIO2->clk);
  SHOW("sdio power", SDIO2->pwr);
  SHOW("nor control", XMC->norsram[3].ctrl);
  SHOW("nor timing", XMC->norsram[3].tmg);
  SHOW("nor write timing", XMC->norsram[3].tmgwr);
  SHOW("nand control", XMC->nand[0].ctrl);
  SHOW("nand regular", XMC->nand[0].tmgrg);
  SHOW("nand special", XMC->nand[0].tmgsp);
  return 0;
}
)";

const QString Nor = "XMC_NORFlash-PSRAM-LCD_4";
const QString Nand = "XMC_NANDFlash";

class GeneratedRegisters : public testing::WithParamInterface<unsigned>, public HostRegisters
{
protected:
    GeneratedRegisters() : HostRegisters(GetParam()) {}

    void expectTiming(const QString &name, const QString &prefix) const
    {
        EXPECT_EQ(field(name, 0, 4), number(Nor, prefix + "AddressSetupTime"));
        EXPECT_EQ(field(name, 8, 8), number(Nor, prefix + "DataSetupTime"));
        EXPECT_EQ(field(name, 16, 4), number(Nor, "BusLatency"));
        EXPECT_EQ(field(name, 28, 2), shown(Nor, "AccessMode").back().toLatin1() - 'A');
        if (!shown(Nor, "AddressHoldTime").isEmpty()) {
            EXPECT_EQ(field(name, 4, 4), number(Nor, "AddressHoldTime"));
        }
        if (!shown(Nor, "ClockDivision").isEmpty()) {
            EXPECT_EQ(field(name, 20, 4) + 1, number(Nor, "ClockDivision"));
            EXPECT_EQ(field(name, 24, 4) + 2, number(Nor, "DataLatency"));
        }
    }
};

TEST_P(GeneratedRegisters, HoldWhatTheDesignShows)
{
    open("ZV32F407", "ZV32F407VGT7", "LQFP100");
    const bool memory = GetParam() % 2 == 1;
    set({"mode/" + Nor + "/Activated=TRUE",
         "mode/" + Nor + "/Memory_Type=" + (memory ? "Multiplexed_PSRAM" : "LCD_8_bits"),
         "mode/" + Nor + "/Chip_Select=NE4", "param/" + Nor + "/ExtendedMode=TRUE"});
    set({chosen(Nor, "AccessMode", {"XMC_ACCESS_MODE_B", "XMC_ACCESS_MODE_C", "XMC_ACCESS_MODE_D"}),
         numbered(Nor, "AddressSetupTime", 0, 15), numbered(Nor, "DataSetupTime", 1, 255),
         numbered(Nor, "BusLatency", 0, 15), numbered(Nor, "WriteAddressSetupTime", 0, 15),
         numbered(Nor, "WriteDataSetupTime", 1, 255), "mode/" + Nand + "/Activated=TRUE",
         "mode/" + Nand + "/Data_Width=8_bits", numbered(Nand, "DelayTimeCycle", 1, 16),
         numbered(Nand, "DelayTimeAR", 1, 16), "param/" + Nand + "/ECCEnable=TRUE"});
    set({chosen(Nand, "ECCPageSize", {"XMC_ECC_PAGESIZE_512_BYTES", "XMC_ECC_PAGESIZE_8192_BYTES"})});
    if (memory)
        set({"mode/" + Nor + "/Wait=Synchronous", numbered(Nor, "AddressHoldTime", 1, 15),
             numbered(Nor, "ClockDivision", 2, 16), numbered(Nor, "DataLatency", 2, 17),
             "param/" + Nor + "/WaitPolarity=XMC_WAIT_SIGNAL_LEVEL_HIGH"});
    for (const QString space : {"Regular", "Special"})
        set({numbered(Nand, space + "SetupTime", 1, 255), numbered(Nand, space + "WaitTime", 2, 256),
             numbered(Nand, space + "HoldTime", 1, 255), numbered(Nand, space + "HiZTime", 0, 255)});
    set({"mode/CAN2/Activated=TRUE", chosen("CAN2", "BaudRate", {"125", "250", "800", "1000"}),
         "mode/SDIO2/Mode=SD_1_bit", numbered("SDIO2", "Clock_division", 0, 1023),
         chosen("SDIO2", "Clock_divider_bypass", {"TRUE", "FALSE", "FALSE"}),
         chosen("SDIO2", "Clock_edge", {"SDIO_CLOCK_EDGE_RISING", "SDIO_CLOCK_EDGE_FALLING"}),
         chosen("SDIO2", "Hardware_flow_control", {"TRUE", "FALSE"})});
    if (!memory) // the address strobe stands on one of its pins
        set({"mode/SPIM/Activated=TRUE", chosen("SPIM", "FlashType", {"FLASH_SPIM_MODEL1", "FLASH_SPIM_MODEL2"}),
             "param/SPIM/EncryptionRange=0x" + QString::number(random(1, 0x1000000), 16)});
    const GenerationRecord record = generate();
    ASSERT_TRUE(record.ok) << record.error.toStdString();
    ASSERT_NO_FATAL_FAILURE(readRegisters("ZV32F403A_407", Program));
    ASSERT_EQ(m_registers.size(), memory ? 9 : 11);

    const int quanta = 1 + (field("can timing", 16, 4) + 1) + (field("can timing", 20, 3) + 1);
    EXPECT_NEAR(design.clock().Get_APB1CLK() * 1e3 / ((field("can timing", 0, 12) + 1) * quanta),
                shown("CAN2", "RealBaudRate").toDouble(), 0.01);

    const bool bypass = field("sdio clock", 11, 1);
    EXPECT_NEAR(design.clock().Get_AHBCLK() / (bypass ? 1 : field("sdio clock", 0, 10) + 2),
                shown("SDIO2", "ClockFrequency").toDouble(), 0.001);
    EXPECT_EQ(bypass, isOn("SDIO2", "Clock_divider_bypass"));
    EXPECT_EQ(field("sdio clock", 10, 1), 1);
    EXPECT_EQ(field("sdio clock", 13, 1), shown("SDIO2", "Clock_edge") == "SDIO_CLOCK_EDGE_RISING");
    EXPECT_EQ(field("sdio clock", 14, 1), isOn("SDIO2", "Hardware_flow_control"));
    EXPECT_EQ(m_registers["sdio power"], 1U);

    if (!memory) {
        EXPECT_EQ(field("spim control", 0, 1), 1);
        EXPECT_EQ(field("spim control", 1, 2), shown("SPIM", "FlashType").right(1).toInt());
        EXPECT_EQ(static_cast<int>(m_registers["spim encrypted"]), number("SPIM", "EncryptionRange"));
    }

    expectTiming("nor timing", {});
    expectTiming("nor write timing", "Write");
    EXPECT_EQ(field("nor control", 0, 1), 1);
    EXPECT_EQ(field("nor control", 1, 1), isOn(Nor, "DataAddressMux"));
    EXPECT_EQ(field("nor control", 2, 2), memory ? 1 : 0);
    EXPECT_EQ(field("nor control", 4, 1), shown(Nor, "DataBusWidth") == "XMC_BUSTYPE_16_BITS");
    EXPECT_EQ(field("nor control", 5, 2), memory ? 3 : 0); // with a clock, and a high level asks for time
    EXPECT_EQ(field("nor control", 7, 3), memory ? 7 : 5); // written, waited for, with a timing of its own
    EXPECT_EQ(field("nand control", 0, 4), 0b1011);
    EXPECT_EQ(256 << field("nand control", 4, 3), shown(Nand, "ECCPageSize").section('_', 3, 3).toInt());
    EXPECT_EQ(field("nand control", 8, 4) + 1, number(Nand, "DelayTimeCycle"));
    EXPECT_EQ(field("nand control", 12, 4) + 1, number(Nand, "DelayTimeAR"));
    for (const QString space : {"Regular", "Special"}) {
        const QString name = "nand " + space.toLower();
        EXPECT_EQ(field(name, 0, 8), number(Nand, space + "SetupTime"));
        EXPECT_EQ(field(name, 8, 8) + 1, number(Nand, space + "WaitTime"));
        EXPECT_EQ(field(name, 16, 8), number(Nand, space + "HoldTime"));
        EXPECT_EQ(field(name, 24, 8), number(Nand, space + "HiZTime"));
    }
}

INSTANTIATE_TEST_SUITE_P(Slow, GeneratedRegisters, testing::Range(1U, 5U));

} // namespace
