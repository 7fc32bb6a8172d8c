#include "HostRegisters.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

// The generated delays on a simulated systick, which moves on by one count whenever it is looked at, and on a timer
// whose divider is caught. Shows the counts of a millisecond for several clocks of the core.
const char *const Program = R"(
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
  const uint32_t frequencies[] = {1000000, 8500000, 100000000, 108000000, 120000000};

  for(int i = 0; i < 5; i++)
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
#else
    lm_timebase_init();
    passed = divider;
#endif
    printf("%lu %lu\n", (unsigned long)ahb, (unsigned long)passed);
  }
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
        ASSERT_NO_FATAL_FAILURE(readRegisters("ZV32F421", (QByteArray("#define WAY ") + way + Program).constData()));
        ASSERT_EQ(m_registers.size(), 5);
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
    set({"mode/SYSTEM/Time_Base=TMR6"});
    expectCounts("2", 1e-6, 0.99);
}

} // namespace
