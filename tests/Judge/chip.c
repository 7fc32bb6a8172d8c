/* The chip under a generated program that runs on the host: memory stands at the addresses of its registers, and before
 * and behind each function it does what a chip does by itself. The functions that main calls are written down, and so is
 * each register that changes while the clock of its peripheral is off, each pin whose function comes behind its mode, and
 * each event from before the reset that would keep a line from rising again. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>

#include DEVICE_HEADER

#define QUIET __attribute__((no_instrument_function))

struct block
{
  const char *name;
  uintptr_t base;
  uint32_t clock;       /* register and bit of its clock, or NO_CLOCK */
  int battery_powered;  /* writing needs access to the battery powered domain */
};
#define NO_CLOCK 0xFFFFFFFFu
#define BLOCK_SIZE 0x400u

struct region
{
  uintptr_t base;
  size_t size;
};

/* `blocks` and `regions`: where peripherals stand, and the stretches of addresses that hold all of them. */
#include "blocks.inc"
#define BLOCKS (sizeof blocks / sizeof *blocks)
#define REGIONS (sizeof regions / sizeof *regions)

static uint8_t shadow[BLOCKS][BLOCK_SIZE];
static uint32_t enabled_vectors[8];  /* writing a bit sets it and leaves the others */
#ifdef ERTC
#define ERTC_EVENTS (ERTC_ALAF_FLAG | ERTC_WATF_FLAG | ERTC_TSF_FLAG | ERTC_TP1F_FLAG | ERTC_TP2F_FLAG)
static uint32_t ertc_kept = ERTC_EVENTS, ertc_sts;
#endif
#ifdef RTC
static uint32_t rtc_kept = RTC_TA_FLAG, rtc_sts;
#endif
static int running;
static int depth;
static FILE *record;

int generated_main(void);
void judge_end(void);
QUIET void __cyg_profile_func_enter(void *function, void *site);
QUIET void __cyg_profile_func_exit(void *function, void *site);

QUIET static int clock_runs(uint32_t clock)
{
  return clock == NO_CLOCK || (CRM->en[clock >> 8] >> (clock & 0xFFu) & 1u) != 0;
}

#ifndef IOMUX
/* A pin that another function drives while its own is chosen. */
QUIET static void find_late_functions(const char *name, const gpio_type *before, const gpio_type *now)
{
  for(uint32_t pin = 0; pin < 16; pin++)
  {
    if((before->mode >> (pin * 2) & 3u) == GPIO_MODE_MUX &&
       ((before->mux[pin / 8] ^ now->mux[pin / 8]) >> (pin % 8 * 4) & 15u) != 0)
    {
      fprintf(record, "late function of pin %u of %s\n", pin, name);
    }
  }
}
#endif

QUIET static void find_writes_without_clock(void)
{
  for(size_t i = 0; i < BLOCKS; i++)
  {
    const struct block *one = &blocks[i];
    if(memcmp(shadow[i], (const void *)one->base, BLOCK_SIZE) == 0)
    {
      continue;
    }
#ifndef IOMUX
    if(strncmp(one->name, "GPIO", 4) == 0)
    {
      find_late_functions(one->name, (const gpio_type *)shadow[i], (const gpio_type *)one->base);
    }
#endif
    if(!clock_runs(one->clock))
    {
      fprintf(record, "unclocked %s\n", one->name);
    }
    if(one->battery_powered && (PWC->ctrl & PWC_CTRL_BPWEN) == 0)
    {
      fprintf(record, "locked %s\n", one->name);
    }
    memcpy(shadow[i], (const void *)one->base, BLOCK_SIZE);
  }
}

QUIET static void follow(volatile uint32_t *word, uint32_t enable, uint32_t stable)
{
  *word = (*word & enable) != 0 ? *word | stable : *word & ~stable;
}

#ifdef CAN1
QUIET static void follow_mode(can_type *can)
{
  can->sts = (can->ctrl & CAN_CTRL_FREEZE) != 0 ? CAN_STS_FREEZE : (can->ctrl & CAN_CTRL_DOZE) != 0 ? CAN_STS_DOZE : 0;
}
#endif

/* Pins are driven high and low by writing ones. */
QUIET static void drive_levels(gpio_type *port)
{
  port->odt = (port->odt | port->set) & ~port->clr;
  port->set = 0;
  port->clr = 0;
}

/* The battery keeps events over a reset; writing ones clears them. `shown` is what the program saw last. */
QUIET static void keep_events(volatile uint32_t *sts, uint32_t *kept, uint32_t *shown, uint32_t states)
{
  if(*sts != *shown)
  {
    *kept &= ~*sts;
  }
  *sts = *shown = *kept | states;
}

/* Between all steps of a program: what drivers wait for, as real-time clocks that take their settings and controllers that
 * change what they do, and the levels of pins. */
QUIET void __sanitizer_cov_trace_pc(void)
{
  if(!running)
  {
    return;
  }
#ifdef ERTC
  keep_events(&ERTC->sts, &ertc_kept, &ertc_sts, ERTC_UPDF_FLAG | ERTC_ALAWF_FLAG | ERTC_WATWF_FLAG |
                                                   ((ERTC->ctrl & ERTC_CTRL_INIT) != 0 ? ERTC_INITF_FLAG : 0));
#endif
#ifdef RTC
  keep_events(&RTC->sts, &rtc_kept, &rtc_sts, RTC_CFGF_FLAG | RTC_UPDF_FLAG);
#endif
#ifdef CAN1
  follow_mode(CAN1);
#endif
#ifdef CAN2
  follow_mode(CAN2);
#endif
  for(size_t i = 0; i < BLOCKS; i++)
  {
    if(strncmp(blocks[i].name, "GPIO", 4) == 0)
    {
      drive_levels((gpio_type *)blocks[i].base);
    }
  }
#ifdef ADC1
  ADC1->ctrl &= ~(ADC_CTRL_CALINIT | ADC_CTRL_CAL);
#endif
#ifdef ADC2
  ADC2->ctrl &= ~(ADC_CTRL_CALINIT | ADC_CTRL_CAL);
#endif
#ifdef ADC3
  ADC3->ctrl &= ~(ADC_CTRL_CALINIT | ADC_CTRL_CAL);
#endif
}

/* Sources become stable, the system clock switches, vectors stay enabled, and a reset empties its registers. */
QUIET static void react(void)
{
  follow(&CRM->ctrl, CRM_CTRL_HICKEN, CRM_CTRL_HICKSTBL);
  follow(&CRM->ctrl, CRM_CTRL_HEXTEN, CRM_CTRL_HEXTSTBL);
  follow(&CRM->ctrl, CRM_CTRL_PLLEN, CRM_CTRL_PLLSTBL);
  follow(&CRM->bpdc, CRM_BPDC_LEXTEN, CRM_BPDC_LEXTSTBL);
  follow(&CRM->rststs, CRM_RSTSTS_LICKEN, CRM_RSTSTS_LICKSTBL);
  CRM->cfg = (CRM->cfg & ~CRM_CFG_SCLKSTS) | (CRM->cfg & CRM_CFG_SCLKSEL) << 2;
  for(size_t i = 0; i < sizeof enabled_vectors / sizeof *enabled_vectors; i++)
  {
    enabled_vectors[i] |= NVIC->ISER[i];
    NVIC->ISER[i] = enabled_vectors[i];
  }
  for(size_t i = 0; i < BLOCKS; i++)
  {
    const uint32_t clock = blocks[i].clock;
    if(clock != NO_CLOCK && (CRM->rst[clock >> 8] >> (clock & 0xFFu) & 1u) != 0)
    {
      memset((void *)blocks[i].base, 0, BLOCK_SIZE);
      memset(shadow[i], 0, BLOCK_SIZE);
    }
  }
}

QUIET static void step(void)
{
  if(running)
  {
    find_writes_without_clock();
    react();
  }
}

void __cyg_profile_func_enter(void *function, void *site)
{
  Dl_info info;

  (void)site;
  step();
  if(running && ++depth == 2 && dladdr(function, &info) != 0)
  {
    fprintf(record, "call %s\n", info.dli_sname);
  }
}

void __cyg_profile_func_exit(void *function, void *site)
{
  (void)function;
  (void)site;
  step();
  depth--;
}

/* Stands in the endless loop of the program. */
QUIET void judge_end(void)
{
  crm_clocks_freq_type clocks;

  running = 0;
  find_writes_without_clock();
#ifdef ERTC
  if(ertc_interrupt_flag_get(ertc_kept) != RESET)
  {
    fprintf(record, "stale events of ERTC\n");
  }
#endif
#ifdef RTC
  if(RTC->ta != 0 && rtc_kept != 0)
  {
    fprintf(record, "stale alarm of RTC\n");
  }
#endif
  crm_clocks_freq_get(&clocks);
  fprintf(record, "clocks %u %u %u %u %u\n", clocks.sclk_freq, clocks.ahb_freq, clocks.apb1_freq, clocks.apb2_freq,
          CRM->pllcfg);
  fprintf(record, "core %u\n", system_core_clock);
  fclose(record);
  FILE *registers = fopen("registers", "w");
  for(size_t i = 0; i < REGIONS; i++)
  {
    if(fwrite((const void *)regions[i].base, 1, regions[i].size, registers) != regions[i].size)
    {
      exit(2);
    }
  }
  exit(fclose(registers) == 0 ? 0 : 2);
}

QUIET int main(void)
{
  for(size_t i = 0; i < REGIONS; i++)
  {
    void *const address = (void *)regions[i].base;
    if(mmap(address, regions[i].size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1,
            0) != address)
    {
      fprintf(stderr, "the addresses of the chip are taken\n");
      return 2;
    }
  }
  record = fopen("record", "w");
  CRM->ctrl = CRM_CTRL_HICKEN;
  react();
  running = 1;
  __sanitizer_cov_trace_pc();
  for(size_t i = 0; i < BLOCKS; i++)
  {
    memcpy(shadow[i], (const void *)blocks[i].base, BLOCK_SIZE);
  }
  generated_main();
  return 3;  /* it never returns */
}
