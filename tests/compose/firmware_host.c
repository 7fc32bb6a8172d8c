/* Runs drivers of the firmware package on the host: their registers are memory at the addresses of the chip.
 * Compiled with the headers of one family; HEXT_VALUE is 8 MHz unless the command line says otherwise. */
#include <stdio.h>
#include <sys/mman.h>

#include DEVICE_HEADER

static int failures;

#define CHECK_EQUAL(is, expected)                                                            \
  do {                                                                                       \
    unsigned long is_ = (unsigned long)(is), expected_ = (unsigned long)(expected);          \
    if(is_ != expected_) {                                                                   \
      printf("line %d: %s is %lu (0x%lX), not %lu\n", __LINE__, #is, is_, is_, expected_);   \
      failures++;                                                                            \
    }                                                                                        \
  } while(0)

static int place(uintptr_t address, size_t size)
{
  return mmap((void *)address, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0) !=
         (void *)address;
}

/* What the chip does by itself: the switch takes effect. */
static void sclk(crm_sclk_type source)
{
  crm_sysclk_switch(source);
  REG_WRITE_FIELD(CRM->cfg, CRM_CFG_SCLKSTS, (uint32_t)source << 2);
}

static void clocks_follow_the_registers(void)
{
  crm_clocks_freq_type clocks;

  system_core_clock_update();
  CHECK_EQUAL(system_core_clock, 8000000);  /* HICK as it leaves reset */
  crm_hick_sclk_frequency_select(CRM_HICK_SCLK_48MHZ);
  system_core_clock_update();
  CHECK_EQUAL(system_core_clock, 48000000);

#if defined FAMILY_F421
  crm_pll_config(CRM_PLL_SOURCE_HEXT_DIV, CRM_PLL_MULT_30);
  sclk(CRM_SCLK_PLL);
  system_core_clock_update();
  CHECK_EQUAL(system_core_clock, HEXT_VALUE / 2 * 30);
  crm_pll_config(CRM_PLL_SOURCE_HICK, CRM_PLL_MULT_50);
  system_core_clock_update();
  CHECK_EQUAL(system_core_clock, 200000000);
  /* The product of input and ns leaves 32 bits. */
  crm_pll_flexible_config(CRM_PLL_SOURCE_HEXT, 500, 15, CRM_PLL_FR_8);
  system_core_clock_update();
  CHECK_EQUAL(system_core_clock, (uint64_t)HEXT_VALUE * 500 / 120);
  crm_pll_config(CRM_PLL_SOURCE_HEXT, CRM_PLL_MULT_15);  /* back from ns, ms and fr */
#else
  crm_hext_clock_div_set(CRM_HEXT_DIV_5);
  crm_pll_config(CRM_PLL_SOURCE_HEXT_DIV, CRM_PLL_MULT_64, CRM_PLL_OUTPUT_RANGE_GT72MHZ);
  sclk(CRM_SCLK_PLL);
  system_core_clock_update();
  CHECK_EQUAL(system_core_clock, HEXT_VALUE / 5 * 64);
  crm_pll_config(CRM_PLL_SOURCE_HEXT, CRM_PLL_MULT_15, CRM_PLL_OUTPUT_RANGE_GT72MHZ);
  crm_usb_clock_div_set(CRM_USB_DIV_2_5);
#endif
  crm_ahb_div_set(CRM_AHB_DIV_1);
  crm_apb1_div_set(CRM_APB1_DIV_4);
  crm_apb2_div_set(CRM_APB2_DIV_2);
  crm_adc_clock_div_set(CRM_ADC_DIV_12);
  crm_clocks_freq_get(&clocks);
  CHECK_EQUAL(clocks.sclk_freq, HEXT_VALUE * 15);
  CHECK_EQUAL(clocks.apb1_freq, HEXT_VALUE * 15 / 4);
  CHECK_EQUAL(clocks.apb2_freq, HEXT_VALUE * 15 / 2);
  CHECK_EQUAL(clocks.adc_freq, HEXT_VALUE * 15 / 24);
  crm_adc_clock_div_set(CRM_ADC_DIV_5);
  crm_clocks_freq_get(&clocks);
  CHECK_EQUAL(clocks.adc_freq, HEXT_VALUE * 15 / 10);
  crm_ahb_div_set(CRM_AHB_DIV_64);  /* there is no 32 */
  crm_clocks_freq_get(&clocks);
  CHECK_EQUAL(clocks.ahb_freq, HEXT_VALUE * 15 / 64);
  crm_ahb_div_set(CRM_AHB_DIV_512);
  crm_clocks_freq_get(&clocks);
  CHECK_EQUAL(clocks.ahb_freq, HEXT_VALUE * 15 / 512);
  sclk(CRM_SCLK_HEXT);
  crm_ahb_div_set(CRM_AHB_DIV_1);
  system_core_clock_update();
  CHECK_EQUAL(system_core_clock, HEXT_VALUE);
}

/* With 120 MHz on AHB, 30 on APB1 and 60 on APB2. */
static void rates_are_met(void)
{
  i2s_init_type i2s;

  sclk(CRM_SCLK_PLL);
  usart_init(USART1, 115200, USART_DATA_9BITS, USART_STOP_2_BIT);
  CHECK_EQUAL(USART1->baudr, 521);
  usart_init(USART2, 115200, USART_DATA_8BITS, USART_STOP_1_BIT);
  CHECK_EQUAL(USART2->baudr, 260);
  usart_init(USART1, 115200, USART_DATA_8BITS, USART_STOP_1_BIT);
  CHECK_EQUAL(USART1->ctrl, 0);  /* nothing of the first frame is left */

  i2c_init(I2C1, I2C_FSMODE_DUTY_2_1, 100000);
  CHECK_EQUAL(I2C1->clkctrl, 150);
  CHECK_EQUAL(I2C1->tmrise, 31);
  i2c_init(I2C1, I2C_FSMODE_DUTY_16_9, 400000);
  CHECK_EQUAL(I2C1->clkctrl & I2C_CLKCTRL_SPEED, 3);
  CHECK_EQUAL(I2C1->clkctrl & ~I2C_CLKCTRL_SPEED, I2C_CLKCTRL_FAST | I2C_CLKCTRL_DUTY);

  crm_ahb_div_set(CRM_AHB_DIV_8);  /* 3.75 MHz on APB1 */
  i2c_init(I2C1, I2C_FSMODE_DUTY_2_1, 400000);
  CHECK_EQUAL(I2C1->tmrise, 2);
  crm_ahb_div_set(CRM_AHB_DIV_1);

  i2s_default_para_init(&i2s);
  i2s.audio_sampling_freq = I2S_AUDIO_FREQUENCY_48K;
  i2s.data_channel_format = I2S_DATA_24BIT_CHANNEL_32BIT;
  i2s_init(SPI2, &i2s);
  CHECK_EQUAL(SPI2->i2sclk, 5);  /* 10 clocks of APB1 for each of 64 bits */
  i2s.audio_protocol = I2S_AUDIO_PROTOCOL_PCM_LONG;  /* one channel of 32 bits */
  i2s_init(SPI1, &i2s);
  CHECK_EQUAL(SPI1->i2sclk, 19 | SPI_I2SCLK_ODD);  /* 39 clocks of APB2 */
  i2s.mclk_output_enable = TRUE;  /* 256 clocks, whatever the frame */
  i2s_init(SPI1, &i2s);
  CHECK_EQUAL(SPI1->i2sclk, 2 | SPI_I2SCLK_ODD | SPI_I2SCLK_MCLKOE);
}

/* The dividers that the configurator shows beside the parameters: no other one is nearer in the rate. */
static void the_nearest_rate_is_taken(void)
{
  static const uint32_t rates[] = {300, 9600, 115200, 921600, 3000000, 7000000, 19000000, 21000000, 25000000, 80000000};
  const double clock = 30000000.0;  /* APB1 */
  unsigned i;

  sclk(CRM_SCLK_PLL);
  for(i = 0; i < sizeof(rates) / sizeof(rates[0]); i++)
  {
    double wanted = rates[i];
    uint32_t best = 1, divider;

    for(divider = 1; divider <= 200000u; divider++)
    {
      double error = clock / divider - wanted, least = clock / best - wanted;
      if((error < 0 ? -error : error) < (least < 0 ? -least : least))
      {
        best = divider;
      }
    }
    usart_init(USART2, rates[i], USART_DATA_8BITS, USART_STOP_1_BIT);
    CHECK_EQUAL(USART2->baudr, best);
  }
}

static void fields_of_pins_stay_apart(void)
{
  gpio_init_type init;

  gpio_default_para_init(&init);
  init.gpio_pins = GPIO_PINS_0 | GPIO_PINS_15;
  init.gpio_mode = GPIO_MODE_ANALOG;
  gpio_init(GPIOA, &init);
  init.gpio_pins = GPIO_PINS_7;
  init.gpio_mode = GPIO_MODE_MUX;
  init.gpio_pull = GPIO_PULL_DOWN;
  init.gpio_out_type = GPIO_OUTPUT_OPEN_DRAIN;
  gpio_init(GPIOA, &init);
  CHECK_EQUAL(GPIOA->mode, 0xC0000003u | 2u << 14);
  CHECK_EQUAL(GPIOA->pull, 2u << 14);
  CHECK_EQUAL(GPIOA->odctrl, 1u << 7);
  CHECK_EQUAL(GPIOA->drive, 0x40000001u | 1u << 14);
#if defined FAMILY_F421
  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE9, GPIO_MUX_7);
  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE10, GPIO_MUX_1);
  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE9, GPIO_MUX_4);
  CHECK_EQUAL(GPIOA->mux[1], 0x140);
  CHECK_EQUAL(GPIOA->mux[0], 0);
  scfg_exint_line_config(SCFG_PORT_SOURCE_GPIOB, SCFG_PINS_SOURCE5);
  CHECK_EQUAL(SCFG->exintc[1], 0x10);
#else
  gpio_pin_remap_config(USART3_MUX_11, TRUE);
  gpio_pin_remap_config(SPI1_MUX_0001, TRUE);
  gpio_pin_remap_config(USART3_MUX_01, TRUE);  /* groups take each other's place */
  CHECK_EQUAL(IOMUX->remap[USART3_MUX_01 >> 16], 1u << (USART3_MUX_01 >> 8 & 0xFF));
  gpio_pin_remap_config(USART3_MUX_01, FALSE);
  CHECK_EQUAL(IOMUX->remap[USART3_MUX_01 >> 16], 0);
  CHECK_EQUAL(IOMUX->remap[SPI1_MUX_0001 >> 16], 1u << (SPI1_MUX_0001 >> 8 & 0xFF));
  gpio_exint_line_config(GPIO_PORT_SOURCE_GPIOE, GPIO_PINS_SOURCE15);
  CHECK_EQUAL(IOMUX->exintc[3], 4u << 12);
#endif
}

static void channels_report_for_themselves(void)
{
  dma_init_type init;
  volatile uint32_t *sts = (volatile uint32_t *)DMA1_BASE;

  dma_default_para_init(&init);
  init.direction = DMA_DIR_MEMORY_TO_PERIPHERAL;
  init.peripheral_base_addr = (uint32_t)(uintptr_t)&USART1->dt;
  init.memory_data_width = DMA_MEMORY_DATA_WIDTH_WORD;
  init.loop_mode_enable = TRUE;
  init.buffer_size = 5;
  dma_interrupt_enable(DMA1_CHANNEL3, DMA_FDT_INT, TRUE);
  dma_init(DMA1_CHANNEL3, &init);
  CHECK_EQUAL(DMA1_CHANNEL3->ctrl, DMA_CTRL_DTD | DMA_CTRL_LM | 2u << 10 | DMA_FDT_INT);
  CHECK_EQUAL(DMA1_CHANNEL3->paddr, USART1_BASE + 0x14);
  *sts = 0x0F00u;
  CHECK_EQUAL(dma_flag_get(DMA1_HDT3_FLAG), SET);
  CHECK_EQUAL(dma_flag_get(DMA1_FDT2_FLAG), RESET);
  CHECK_EQUAL(dma_interrupt_flag_get(DMA1_FDT3_FLAG), SET);
  CHECK_EQUAL(dma_interrupt_flag_get(DMA1_HDT3_FLAG), RESET);  /* raised, but nobody asked */
  dma_reset(DMA1_CHANNEL3);
  CHECK_EQUAL(DMA1_CHANNEL3->ctrl, 0);
  CHECK_EQUAL(DMA1->clr, 0x0F00u);
}

static void priorities_reach_the_controller(void)
{
  nvic_priority_group_config(NVIC_PRIORITY_GROUP_2);
  CHECK_EQUAL(SCB->AIRCR, 0x05FA0000u | 5u << 8);
  nvic_irq_enable(USART1_IRQn, 2, 3);
  CHECK_EQUAL(NVIC->IP[USART1_IRQn], 0xB0);
  CHECK_EQUAL(NVIC->ISER[USART1_IRQn / 32], 1u << USART1_IRQn % 32);
  NVIC_SetPriority(PendSV_IRQn, NVIC_EncodePriority(NVIC_GetPriorityGrouping(), 3, 1));
  CHECK_EQUAL(SCB->SHP[10], 0xD0);
  nvic_priority_group_config(NVIC_PRIORITY_GROUP_4);
  nvic_irq_enable(USART1_IRQn, 9, 3);  /* no bit is left for the sub priority */
  CHECK_EQUAL(NVIC->IP[USART1_IRQn], 0x90);
  nvic_priority_group_config(NVIC_PRIORITY_GROUP_0);
  nvic_irq_enable(USART1_IRQn, 9, 3);
  CHECK_EQUAL(NVIC->IP[USART1_IRQn], 0x30);
}

int main(void)
{
  if(place(0x40000000u, 0x40000u) || place(0xE000E000u, 0x1000u))
  {
    printf("the addresses of the chip are taken\n");
    return 2;
  }
  clocks_follow_the_registers();
  if(HEXT_VALUE == 8000000)
  {
    rates_are_met();
    the_nearest_rate_is_taken();
  }
  fields_of_pins_stay_apart();
  channels_report_for_themselves();
  priorities_reach_the_controller();
  return failures != 0;
}
