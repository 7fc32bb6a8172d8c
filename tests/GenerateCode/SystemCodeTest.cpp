#include "HostRegisters.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

// The generated delays on a simulated systick, which moves on by one count whenever it is looked at, and on a timer
// whose divider is caught. Shows the counts of a millisecond for several clocks of the core.
const char *const DelayProgram = R"(
#include <stdio.h>
#include "lm_system.h"

static SysTick_Type systick_registers;
static uint32_t ahb, passed, divider;

static SysTick_Type *systick(void)
{
  systick_registers.CTRL |= SysTick_CTRL_COUNTFLAG_Msk;
  systick_registers.VAL = systick_registers.VAL == 0 ? systick_registers.LOAD : systick_registers.VAL - 1;
  passed++;
  return &systick_registers;
}

static void clocks(crm_clocks_freq_type *frequencies)
{
  frequencies->ahb_freq = frequencies->apb1_freq = frequencies->apb2_freq = ahb;
}

#undef SysTick
#define SysTick systick()
#define crm_clocks_freq_get clocks
#define systick_clock_source_config(source)
#define tmr_base_init(timer, period, count) (divider = (count) + 1)
#define tmr_cnt_dir_set(timer, direction)
#define tmr_counter_enable(timer, state)
#include "lm_system.c"

int main(void)
{
  const uint32_t frequencies[] = {125000, 1000000, 8500000, 100000000, 108000000, 120000000};

  for(int i = 0; i < 6; i++)
  {
    ahb = frequencies[i];
#if WAY == 0
    lm_timebase_init();
    lm_delay_us(1000);
    passed = systick_registers.LOAD;
#elif WAY == 1
    systick_interrupt_config();
    lm_timebase_init();
    passed = 0;
    lm_delay_us(1000);
#elif WAY == 3
    systick_interrupt_config();
    passed = systick_registers.LOAD + 1;
#else
    lm_timebase_init();
    passed = divider;
#endif
    printf("%lu %lu\n", (unsigned long)ahb, (unsigned long)passed);
  }
  return 0;
}
)";

// printf's way out in the library of each toolchain, with a transmitter that counts and adds up what it is given.
const char *const PrintfProgram = R"(
#include <stdio.h>
#include "lm_system.h"

static unsigned sent, sum;

static void transmit(void *port, uint16_t data)
{
  (void)port;
  sent++;
  sum += data;
}

#define usart_flag_get(port, flag) SET
#define usart_data_transmit transmit
#if WAY == 1
#define __ICCARM__
#elif WAY == 2
#define __ARMCC_VERSION 6000000
#define fputc retargeted
#endif
#include "lm_system.c"

int main(void)
{
  char text[] = "ab";
#if WAY == 0
  _write(1, text, 2);
#elif WAY == 1
  __write(1, (unsigned char *)text, 2);
  __write(1, 0, 0);
#else
  fputc(text[0], 0);
  fputc(text[1], 0);
#endif
  printf("sent %u\nsum %u\n", sent, sum);
  return 0;
}
)";

class Delays : public HostRegisters
{
protected:
    Delays() : HostRegisters(1) {}

    void expectCounts(const char *way, double countsOfHertz, double allowed)
    {
        const GenerationRecord record = generate();
        ASSERT_TRUE(record.ok) << record.error.toStdString();
        m_registers.clear();
        ASSERT_NO_FATAL_FAILURE(
            readRegisters("ZV32F421", (QByteArray("#define WAY ") + way + DelayProgram).constData()));
        ASSERT_EQ(m_registers.size(), 6);
        for (const QString &hertz : m_registers.keys()) {
            const double counts = hertz.toDouble() * countsOfHertz;
            EXPECT_GE(m_registers[hertz], counts) << way << ": too short at " << hertz.toStdString();
            EXPECT_LE(m_registers[hertz], counts + allowed) << way << ": too long at " << hertz.toStdString();
        }
    }
};

// Also where the clock has no whole number of counts in a microsecond.
TEST_F(Delays, AreNeverShortAndHardlyLong)
{
    openSmall();
    expectCounts("0", 1e-3 / 8, 4);
    set({"param/SYSTEM/SysTick_Interrupt=TRUE"});
    expectCounts("1", 1e-3 / 8, 8);
    expectCounts("3", 1e-3 / 8, 0.5);
    set({"mode/SYSTEM/Time_Base=TMR6"});
    expectCounts("2", 1e-6, 0.99);
}

class Printf : public HostRegisters
{
protected:
    Printf() : HostRegisters(1) {}
};

TEST_F(Printf, ReachesThePortWithEveryToolchain)
{
    openSmall();
    set({"mode/SYSTEM/UART_Printf=USART2"});
    const GenerationRecord record = generate();
    ASSERT_TRUE(record.ok) << record.error.toStdString();
    for (const char *way : {"0", "1", "2"}) {
        m_registers.clear();
        ASSERT_NO_FATAL_FAILURE(
            readRegisters("ZV32F421", (QByteArray("#define WAY ") + way + PrintfProgram).constData()));
        EXPECT_EQ(m_registers.value("sent"), 2U) << way;
        EXPECT_EQ(m_registers.value("sum"), unsigned('a' + 'b')) << way;
    }
}

TEST_F(Printf, IsToldWhereEveryPinOfItsPortIsTaken)
{
    open("ZV32F403A", "ZV32F403AVGT7", "LQFP100");
    set({"mode/SYSTEM/UART_Printf=USART1"});
    const auto portWithoutPin = [this] {
        for (const GeneratedFileRecord &file : generate().files) {
            if (file.path == "src/lm_system.c")
                return file.portWithoutPin;
        }
        return QString("no file");
    };
    EXPECT_EQ(portWithoutPin(), "");
    EXPECT_FALSE(text("src/lm_system.c").contains("gpio_pin_remap_config"));
    set({"pin/PA9=GPIO_Output"});
    EXPECT_EQ(portWithoutPin(), "");
    EXPECT_TRUE(text("src/lm_system.c")
                    .contains("  gpio_init(GPIOB, &gpio_init_struct);\n\n"
                              "  gpio_pin_remap_config(USART1_MUX_01, TRUE);\n\n  /* config the transmitter */"));
    set({"pin/PB6=GPIO_Output"});
    EXPECT_EQ(portWithoutPin(), "USART1");
}

TEST_F(Printf, HasOnePortAndTheOthersAreNamed)
{
    openSmall();
    const auto portsWithout = [this] {
        const QVector<GeneratedFileRecord> files = generate().files;
        const auto system = std::find_if(
            files.begin(), files.end(), [](const GeneratedFileRecord &file) { return file.path == "src/lm_system.c"; });
        return system == files.end() ? QStringList{"no file"} : system->portsWithoutPrintf;
    };
    const QString claim = "printf is served from here on by ";
    set({"mode/USART1/Mode=Asynchronous", "param/USART1/UART_Printf=TRUE"});
    EXPECT_EQ(portsWithout(), QStringList());
    set({"mode/SYSTEM/UART_Printf=USART2"});
    EXPECT_EQ(portsWithout(), QStringList{"USART1"});
    EXPECT_FALSE(text("src/main.c").contains(claim));
    set({"mode/SYSTEM/UART_Printf=Disable", "mode/USART2/Mode=Asynchronous", "param/USART2/UART_Printf=TRUE"});
    EXPECT_EQ(portsWithout(), QStringList{"USART2"});
    EXPECT_EQ(text("src/main.c").count(claim), 1);

    // A port that only receives would wait for ever with the second character.
    set({"param/USART1/Mode=MODE_RX"});
    EXPECT_EQ(portsWithout(), QStringList());
    EXPECT_TRUE(text("src/main.c").contains(claim + "usart2"));
}

} // namespace
