/* The chip under a generated program that runs on the host: memory stands at the addresses of its registers, and before
 * and behind each function it does what a chip does by itself. Every function that runs is written down, and so is each
 * register that changes while the clock of its peripheral is off. */
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

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

static const struct block blocks[] = {
#include "blocks.inc"
};
#define BLOCKS (sizeof blocks / sizeof *blocks)

static uint8_t shadow[BLOCKS][BLOCK_SIZE];
static uint32_t enabled_vectors[8];  /* writing a bit sets it and leaves the others */
static int running;
static FILE *record;

int generated_main(void);
void judge_end(void);
QUIET void __cyg_profile_func_enter(void *function, void *site);
QUIET void __cyg_profile_func_exit(void *function, void *site);

QUIET static int clock_runs(uint32_t clock)
{
  return clock == NO_CLOCK || (CRM->en[clock >> 8] >> (clock & 0xFFu) & 1u) != 0;
}

QUIET static void find_writes_without_clock(void)
{
  for(size_t i = 0; i < BLOCKS; i++)
  {
    const struct block *one = &blocks[i];
    if(memcmp(shadow[i], (const void *)one->base, BLOCK_SIZE) == 0)
    {
      continue;
    }
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

QUIET static void step(const char *what, void *function)
{
  if(running)
  {
    find_writes_without_clock();
    fprintf(record, "%s %lx\n", what, (unsigned long)function);
    react();
  }
}

void __cyg_profile_func_enter(void *function, void *site)
{
  (void)site;
  step("enter", function);
}

void __cyg_profile_func_exit(void *function, void *site)
{
  (void)site;
  step("exit", function);
}

/* Stands in the endless loop of the program. */
QUIET void judge_end(void)
{
  crm_clocks_freq_type clocks;

  running = 0;
  find_writes_without_clock();
  crm_clocks_freq_get(&clocks);
  fprintf(record, "clocks %u %u %u %u\n", clocks.sclk_freq, clocks.ahb_freq, clocks.apb1_freq, clocks.apb2_freq);
  fprintf(record, "core %u\n", system_core_clock);
  fclose(record);
  const int registers = open("registers", O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if(write(registers, (const void *)0x40000000u, 0x40000u) != 0x40000 ||
     write(registers, (const void *)0xE000E000u, 0x1000u) != 0x1000)
  {
    exit(2);
  }
  exit(0);
}

QUIET static int place(uintptr_t address, size_t size)
{
  return mmap((void *)address, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1,
              0) != (void *)address;
}

QUIET int main(void)
{
  if(place(0x40000000u, 0x40000u) || place(0xE000E000u, 0x1000u))
  {
    fprintf(stderr, "the addresses of the chip are taken\n");
    return 2;
  }
  record = fopen("record", "w");
  CRM->ctrl = CRM_CTRL_HICKEN;
  react();
  for(size_t i = 0; i < BLOCKS; i++)
  {
    memcpy(shadow[i], (const void *)blocks[i].base, BLOCK_SIZE);
  }
  running = 1;
  generated_main();
  return 3;  /* it never returns */
}
