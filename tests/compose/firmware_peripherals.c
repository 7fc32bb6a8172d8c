/* What the sample drivers write into the registers, on the host: the peripherals' addresses are plain memory here. */

#define _GNU_SOURCE
#include <stdio.h>
#include <string.h>
#include <sys/mman.h>
#include <time.h>

#include DEVICE_HEADER

static int failures;

#define CHECK(condition) check((condition) != 0, __LINE__, #condition)
#define EQUAL(actual, expected) equal((unsigned long long)(actual), (unsigned long long)(expected), __LINE__, #actual)

static void check(int holds, int line, const char *text)
{
    if (!holds) {
        printf("line %d: %s does not hold\n", line, text);
        failures++;
    }
}

static void equal(unsigned long long actual, unsigned long long expected, int line, const char *text)
{
    if (actual != expected) {
        printf("line %d: %s is 0x%llx, not 0x%llx\n", line, text, actual, expected);
        failures++;
    }
}

static void timers_keep_the_other_channels(void)
{
    tmr_output_config_type output;
    tmr_input_config_type input;
    tmr_brkdt_config_type brake;

    TMR1->cctrl = 0xFFFFFFFFU;
    TMR1->cm[0] = TMR1->cm[2] = 0xA5A5U;
    tmr_output_default_para_init(&output);
    output.mode = TMR_OUTPUT_CONTROL_PWM_MODE_B;
    output.output_enable = TRUE;
    output.polarity = TMR_OUTPUT_ACTIVE_LOW;
    output.complementary_idle_high = TRUE;
    tmr_output_channel_config(TMR1, TMR_SELECT_CHANNEL_2, &output);
    EQUAL(TMR1->cctrl, 0xFFFFE3FFU);
    EQUAL(TMR1->cm[1], TMR_CM_OMODE | TMR_CM_CIDLE);
    tmr_channel_enable(TMR1, TMR_SELECT_CHANNEL_2C, TRUE);
    EQUAL(TMR1->cctrl, 0xFFFFEBFFU);
    tmr_channel_value_set(TMR1, TMR_SELECT_CHANNEL_3, 1234);
    EQUAL(TMR1->cdt[2], 1234);
    EQUAL(TMR1->cm[0], 0xA5A5U);
    EQUAL(TMR1->cm[2], 0xA5A5U);

    /* a channel that has compared before captures without leftovers */
    tmr_input_default_para_init(&input);
    input.channel = TMR_SELECT_CHANNEL_2;
    input.filter = 15;
    tmr_pwm_input_config(TMR1, &input, TMR_CHANNEL_INPUT_DIV_1);
    EQUAL(TMR1->cm[1], TMR_CC_CHANNEL_MAPPED_DIRECT | TMR_CM_IFILTER);
    EQUAL(TMR1->cm[0], TMR_CC_CHANNEL_MAPPED_INDIRECT | TMR_CM_IFILTER);
    EQUAL((TMR1->cctrl >> 8) & (TMR_CCTRL_EN | TMR_CCTRL_POL), TMR_CCTRL_EN);
    EQUAL(TMR1->cctrl & (TMR_CCTRL_EN | TMR_CCTRL_POL), TMR_CCTRL_EN | 0x2U);

    tmr_cnt_dir_set(TMR1, TMR_COUNT_TWO_WAY_3);
    tmr_clock_source_div_set(TMR1, TMR_CLOCK_DIV4);
    tmr_cnt_dir_set(TMR1, TMR_COUNT_DOWN);
    EQUAL(TMR1->ctrl, 0x202U);

    /* settings of the brake may come before or after the outputs are on */
    tmr_output_enable(TMR1, TRUE);
    tmr_brkdt_default_para_init(&brake);
    brake.deadtime = 0xE7;
    brake.brake_enable = TRUE;
    brake.write_protection = TMR_WP_LEVEL_3;
    tmr_brkdt_config(TMR1, &brake);
    EQUAL(TMR1->brk, TMR_BRK_OEN | TMR_BRK_EN | TMR_BRK_WP | 0xE7U);
}

static void converters_place_their_ranks(void)
{
    adc_ordinary_channel_set(ADC1, ADC_CHANNEL_17, 1, ADC_SAMPLETIME_239_5);
    adc_ordinary_channel_set(ADC1, ADC_CHANNEL_3, 1, ADC_SAMPLETIME_1_5);
    adc_ordinary_channel_set(ADC1, ADC_CHANNEL_9, 5, ADC_SAMPLETIME_7_5);
    adc_ordinary_channel_set(ADC1, ADC_CHANNEL_16, 16, ADC_SAMPLETIME_71_5);
    adc_preempt_channel_set(ADC1, ADC_CHANNEL_10, 4, ADC_SAMPLETIME_28_5);
    EQUAL(ADC1->osq[0], 0x03U);
    EQUAL(ADC1->osq[1], 0x09U);
    EQUAL(ADC1->osq[3], 0x10000000U);
    EQUAL(ADC1->psq, 0x0A000000U);
    EQUAL(ADC1->spt[0], 0x0U);
    EQUAL(ADC1->spt[1], 0x310U);
    EQUAL(ADC1->spt[2], 0x76U);
    EQUAL(adc_calibrate(ADC1), ERROR); /* nobody clears the bit */
}

#ifdef ERTC_MODULE_ENABLED
static void the_calendar_holds_decimal_digits(void)
{
    ertc_time_type now;

    EQUAL(ertc_date_set(26, 12, 31, 4), ERROR); /* the calendar does not stop */
    EQUAL(ERTC->date, 0);
    ERTC->sts = ERTC_INITF_FLAG;
    EQUAL(ertc_date_set(26, 12, 31, 4), SUCCESS);
    EQUAL(ertc_time_set(11, 59, 8, ERTC_PM), SUCCESS);
    EQUAL(ertc_divider_set(127, 255), SUCCESS);
    EQUAL(ERTC->date, 0x269231U);
    EQUAL(ERTC->time, 0x515908U);
    CHECK((ERTC->ctrl & ERTC_CTRL_INIT) == 0);
    EQUAL(ERTC->wp, 0xFFU);
    for (uint8_t i = 0; i < 100; i++) {
        ertc_date_set(i, i % 12 + 1, i % 31 + 1, i % 7 + 1);
        ertc_time_set(i % 24, i % 60, 59 - i % 60, ERTC_AM);
        ertc_calendar_get(&now);
        EQUAL(now.year, i);
        EQUAL(now.month, i % 12 + 1);
        EQUAL(now.day, i % 31 + 1);
        EQUAL(now.week, i % 7 + 1);
        EQUAL(now.hour, i % 24);
        EQUAL(now.min, i % 60);
        EQUAL(now.sec, 59 - i % 60);
    }
    ertc_alarm_mask_set(ERTC_ALARM_MASK_HOUR);
    ertc_alarm_week_date_select(ERTC_SLECT_WEEK);
    ertc_alarm_set(7, 23, 45, 56, ERTC_AM);
    EQUAL(ERTC->ala, ERTC_ALA_DAY_MASK | ERTC_ALA_HOUR_MASK | ERTC_ALA_WEEK | 0x07234556U);
}
#endif

#ifdef RTC_MODULE_ENABLED
static void the_counter_follows_the_calendar(void)
{
    EQUAL(rtc_calendar_set(2026, 1, 1, 0, 0, 0), ERROR); /* values do not arrive */
    EQUAL(RTC->cnt, 0);
    RTC->sts = RTC_CFGF_FLAG;
    for (int year = 1970; year <= 2105; year++) {
        for (int month = 1; month <= 12; month++) {
            struct tm first = {.tm_year = year - 1900, .tm_mon = month - 1, .tm_mday = 1, .tm_hour = 23, .tm_sec = 59};

            rtc_calendar_set((uint16_t)year, (uint8_t)month, 1, 23, 0, 59);
            EQUAL(RTC->cnt, timegm(&first));
        }
    }

    /* writing back the flag of an attack would forget it */
    BPR->tamper = BPR_TAMPER_FLAG;
    bpr_tamper_pin_enable(TRUE);
    EQUAL(BPR->tamper, BPR_TAMPER_EN);
}
#endif

#ifdef DAC_MODULE_ENABLED
static void values_reach_the_output_aligned(void)
{
    dac_data_set(DAC2_SELECT, DAC_12BIT_RIGHT, 0x0ABC);
    EQUAL(DAC->out[1].dth, 0xABCU);
    dac_data_set(DAC2_SELECT, DAC_12BIT_LEFT, 0xABC0);
    EQUAL(DAC->out[1].dth, 0xABCU);
    dac_data_set(DAC2_SELECT, DAC_8BIT_RIGHT, 0xAB);
    EQUAL(DAC->out[1].dth, 0xAB0U);
    EQUAL(DAC->out[0].dth, 0);
}
#endif

#ifdef CAN_MODULE_ENABLED
static void a_frame_goes_through_a_mailbox(void)
{
    static const can_message_type frames[] = {
        {.id = 0x7FF, .dlc = 8, .data = {1, 2, 3, 4, 5, 6, 7, 0xFF}},
        {.id = 0x1FFFFFFF, .extended = TRUE, .dlc = 3, .data = {0x80, 0, 0x7F}},
        {.id = 0x12345, .extended = TRUE, .remote = TRUE},
    };
    can_message_type received;
    can_baudrate_config_type timing;
    can_filter_init_type filter;

    CAN1->tsts = 0x010101U;
    for (unsigned i = 0; i < 3; i++) {
        EQUAL(can_message_transmit(CAN1, &frames[i]), i);
        CHECK(CAN1->txm[i].id & CAN_ID_SEND);
        CAN1->rxm[1] = CAN1->txm[i];
        CAN1->rxm[1].id &= ~CAN_ID_SEND;
        can_message_receive(CAN1, CAN_RX_FIFO1, &received);
        CHECK(memcmp(&received, &frames[i], sizeof(received)) == 0);
        CAN1->tsts &= ~(1U << (i * 8));
    }
    CAN1->rxm[1].info = 0xF; /* on the bus as good as 8, and data has 8 bytes */
    can_message_receive(CAN1, CAN_RX_FIFO1, &received);
    EQUAL(received.dlc, 8);
    EQUAL(can_message_transmit(CAN1, &frames[0]), CAN_TRANSMIT_NO_MAILBOX);
    EQUAL(can_transmit_status_get(CAN1, 2), CAN_TRANSMIT_PENDING);

    can_baudrate_default_para_init(&timing);
    timing.division = 4096;
    timing.bs1_size = CAN_BTS1_16TQ;
    EQUAL(can_baudrate_set(CAN1, &timing), ERROR); /* the controller does not leave the bus */
    EQUAL(CAN1->btmg, 0);
    CAN1->sts = CAN_STS_FREEZE;
    can_baudrate_set(CAN1, &timing);
    EQUAL(CAN1->btmg, 0x011F0FFFU);
    CHECK((CAN1->ctrl & CAN_CTRL_FREEZE) == 0);

    CAN1->fact = CAN1->fmode = CAN1->fbits = 0x3FFFU;
    can_filter_default_para_init(&filter);
    filter.filter_number = 13;
    filter.filter_enable = FALSE;
    filter.filter_fifo = CAN_FILTER_FIFO1;
    can_filter_init(CAN1, &filter);
    EQUAL(CAN1->fact, 0x1FFFU);
    EQUAL(CAN1->fmode, 0x1FFFU);
    EQUAL(CAN1->fbits, 0x3FFFU);
    EQUAL(CAN1->ffifo, 0x2000U);
    EQUAL(CAN1->fctrl, 0);

    CAN1->evt = CAN_BO_FLAG;
    can_interrupt_enable(CAN1, CAN_BOIEN_INT, TRUE);
    EQUAL(can_interrupt_flag_get(CAN1, CAN_BO_FLAG), RESET);
    can_interrupt_enable(CAN1, CAN_EOIEN_INT, TRUE);
    EQUAL(can_interrupt_flag_get(CAN1, CAN_BO_FLAG), SET);
}
#endif

#ifdef EMAC_MODULE_ENABLED
static void frames_go_through_the_rings(void)
{
    static emac_dma_desc_type descriptors[2];
    static uint8_t buffers[2 * 1524];
    uint32_t length = 0;

    for (uint32_t hclk = 8000000; hclk <= 240000000; hclk += 500000) {
        uint32_t divider;

        emac_clock_range_set(hclk);
        divider = 8U << ((EMAC->miictrl & EMAC_MII_CLOCK) >> 2);
        CHECK(hclk / divider <= 2500000);
        CHECK(divider == 8 || hclk / (divider / 2) > 2500000);
    }

    emac_dma_tx_descriptors_init(descriptors, buffers, 2);
    EQUAL(emac_packet_transmit(1525), ERROR);
    EQUAL(emac_packet_transmit(60), SUCCESS);
    CHECK(emac_transmit_buffer_get() == &buffers[1524]);
    EQUAL(emac_packet_transmit(60), SUCCESS);
    CHECK(emac_transmit_buffer_get() == NULL);
    EQUAL(emac_packet_transmit(60), ERROR);

    emac_dma_rx_descriptors_init(descriptors, buffers, 2);
    CHECK(emac_packet_receive(&length) == NULL);
    descriptors[0].status = EMAC_DESC_FIRST | EMAC_DESC_LAST | EMAC_DESC_ERROR | 64;
    descriptors[1].status = EMAC_DESC_FIRST | EMAC_DESC_LAST | 65;
    CHECK(emac_packet_receive(&length) == &buffers[1524]);
    EQUAL(length, 65);
    CHECK(descriptors[0].status & EMAC_DESC_OWN);
    emac_packet_release();
    CHECK(emac_packet_receive(&length) == NULL);
    CHECK(descriptors[1].status & EMAC_DESC_OWN);

#ifdef EMAC_TSCTRL_EN
    /* with HICK undivided a second of the time stamps lasts a second */
    emac_time_stamp_init(EMAC_TIME_STAMP_FINE);
    CHECK((uint64_t)EMAC->tsadd * EMAC->tsinc / 1000 * system_core_clock >> 32 >= 999900);
    CHECK((uint64_t)EMAC->tsadd * EMAC->tsinc / 1000 * system_core_clock >> 32 <= 1000000);
    emac_time_stamp_init(EMAC_TIME_STAMP_COARSE);
    EQUAL(EMAC->tsinc * (uint64_t)system_core_clock, 1000000000U);
    emac_phy_clock_config(EMAC_PHY_CLOCK_HCLK, 32);
    EQUAL(EMAC->phyclk, 0x7F);
#endif
}
#endif

#ifdef XMC_MODULE_ENABLED
static void timings_fit_their_fields(void)
{
    xmc_norsram_timing_init_type read, write;
    xmc_nand_timing_type regular, special;

    xmc_norsram_timing_default_para_init(&read, &write);
    write = (xmc_norsram_timing_init_type){.mode = XMC_ACCESS_MODE_D, .address_hold_time = 1, .data_setup_time = 1,
                                           .clock_division = 2, .data_latency = 2};
    xmc_norsram_timing_config(XMC_NORSRAM_BANK_4, &read, &write);
    EQUAL(XMC->norsram[3].tmg, 0x0FFFFFFFU);
    EQUAL(XMC->norsram[3].tmgwr, 0x30100110U);

    xmc_nand_timing_default_para_init(&regular, &special);
    special = (xmc_nand_timing_type){.setup_time = 1, .wait_time = 256, .hold_time = 255};
    xmc_nand_timing_config(XMC_NAND_BANK_1, &regular, &special);
    EQUAL(XMC->nand[0].tmgrg, 0xFCFCFBFCU);
    EQUAL(XMC->nand[0].tmgsp, 0x00FFFF01U);

    EQUAL(xmc_lcd_data_address(XMC_NORSRAM_BANK_1, XMC_A16, XMC_BUSTYPE_16_BITS), 0x60020000U);
    EQUAL(xmc_lcd_data_address(XMC_NORSRAM_BANK_4, XMC_A23, XMC_BUSTYPE_8_BITS), 0x6C800000U);
}

#ifdef XMC_SDRAM_START
static void both_banks_of_sdram_share_their_clock(void)
{
    xmc_sdram_init_type memory;
    xmc_sdram_timing_type timing;

    xmc_sdram_default_para_init(&memory, &timing);
    xmc_sdram_init(&memory, &timing);
    EQUAL(XMC->sdram.tmg[0], 0x0FFFFFFFU);
    memory = (xmc_sdram_init_type){.bank = XMC_SDRAM_BANK_2, .internal_banks = XMC_INTERNAL_BANK_2,
                                   .row_address = XMC_ROW_13, .column_address = XMC_COLUMN_11,
                                   .bus_width = XMC_MEM_WIDTH_8, .cas_latency = XMC_CAS_1, .write_protection = TRUE,
                                   .clkdiv = XMC_SDRAM_CLKDIV_3, .burst_read = TRUE, .read_delay = 2};
    timing = (xmc_sdram_timing_type){1, 2, 3, 4, 5, 6, 7};
    xmc_sdram_init(&memory, &timing);
    EQUAL(XMC->sdram.ctrl[1], 3 | 2 << 2 | 1 << 6 | XMC_SDRAM_PROTECT);
    EQUAL(XMC->sdram.ctrl[0] & ~XMC_SDRAM_COMMON, 0 | 1 << 2 | XMC_SDRAM_WIDTH | XMC_SDRAM_BANKS | 3 << 6);
    EQUAL(XMC->sdram.ctrl[0] & XMC_SDRAM_COMMON, 2 << 9 | XMC_SDRAM_AHEAD | 2 << 12);
    EQUAL(XMC->sdram.tmg[1], 0x06543210U);

    EQUAL(xmc_sdram_start(XMC_SDRAM_BANK_2, XMC_CAS_2, 1, 8), SUCCESS);
    EQUAL(XMC->sdram.cmd, XMC_SDRAM_CMD_MODE | 0x10 | 1 << 8 | 0x220 << 12);
    XMC->sdram.events.sts = XMC_SDRAM_BUSY_FLAG; /* and never ready */
    EQUAL(xmc_sdram_cmd(XMC_SDRAM_BANK_1, XMC_SDRAM_CMD_PRECHARGE, 1, 0), ERROR);

    /* each bank raises its own events */
    xmc_interrupt_enable(XMC_PCCARD, XMC_FALLING_EDGE_INT, TRUE);
    xmc_interrupt_enable(XMC_NAND_BANK_2, XMC_RISING_EDGE_INT, TRUE);
    EQUAL(XMC->pccard.events.inten, XMC_FALLING_EDGE_INT);
    EQUAL(XMC->nand[1].events.inten, XMC_RISING_EDGE_INT);
    EQUAL(XMC->nand[0].events.inten | XMC->sdram.events.inten, 0);
}
#endif
#endif

#ifdef QSPI_MODULE_ENABLED
static void commands_and_the_mapped_memory_share_their_fields(void)
{
    uint8_t bytes[] = {0x11, 0x22, 0x33, 0x44, 0x55};
    qspi_command_type command;
    qspi_xip_type xip;

    qspi_command_default_para_init(&command);
    command.instruction = 0x32;
    command.lines = QSPI_LINES_1_1_4;
    command.address_length = QSPI_ADDRESS_4_BYTES;
    command.address = 0x12345678U;
    command.dummy_cycles = 31;
    command.data_length = sizeof(bytes);
    command.write = TRUE;
    qspi_command_start(QSPI2, &command);
    EQUAL(QSPI2->cmd, 0x32 | 4 << 8 | 31 << 11 | 4 << 16 | QSPI_CMD_WRITE);
    EQUAL(QSPI2->addr, 0x12345678U);
    EQUAL(QSPI2->len, 5);
    EQUAL(QSPI1->cmd, 0);

    /* clearing flags leaves them here, so that all is ready at once; the last word holds what is left */
    EQUAL(qspi_command_send(QSPI2, &command, bytes), ERROR);
    QSPI2->sts = 0;

    qspi_xip_default_para_init(&xip);
    xip.read_lines = QSPI_LINES_1_4_4;
    xip.write_enable = TRUE;
    xip.idle_time = 127;
    qspi_xip_init(QSPI1, &xip);
    qspi_xip_enable(QSPI1, TRUE);
    EQUAL(QSPI1->xip, QSPI_XIP_EN | QSPI_XIP_WRITE | QSPI_XIP_CACHE | QSPI_XIP_IDLE | 3 << 16);
    EQUAL(QSPI1->xipr, 0x0B | 5 << 8 | 8 << 11);
    EQUAL(QSPI1->xipw, 0x02);
    qspi_clock_config(QSPI1, QSPI_CLK_DIV_12, QSPI_CLOCK_MODE_3);
    qspi_memory_config(QSPI1, QSPI_SIZE_256_MB, 7);
    EQUAL(QSPI1->ctrl, 7 << 1 | QSPI_CTRL_MODE | 7 << 5);
    EQUAL(QSPI1->size, 28);
}
#endif

#ifdef USB_MODULE_ENABLED
#ifdef USB_OTGFS1
#define USB USB_OTGFS1
#define OF_USB USB_OTGFS1,
#else
#define USB USBFS
#define OF_USB
#endif

static void packets_keep_their_bytes(void)
{
    uint8_t sent[64], received[64];

    for (unsigned i = 0; i < sizeof(sent); i++)
        sent[i] = (uint8_t)(i * 37 + 1);
    usb_endpoint_open(OF_USB 2, USB_EPT_BULK, 64, 64, 64);
    for (uint16_t length = 0; length <= sizeof(sent); length++) {
        memset(received, 0, sizeof(received));
        usb_packet_write(OF_USB 2, sent, length);
        USB->rxd[2] = USB->txd[2];
        EQUAL(usb_packet_read(OF_USB 2, received, sizeof(received)), length);
        CHECK(memcmp(sent, received, length) == 0);
        CHECK(length == sizeof(sent) || received[length] == 0);
    }
    EQUAL(usb_packet_read(OF_USB 2, received, 5), 5);

    /* an endpoint that has raised something meanwhile must not lose it */
    CHECK(USB->ept[2] & USB_EPT_SENT);
    usb_endpoint_tx_state_set(OF_USB 2, USB_EPT_VALID);
    EQUAL(USB->ept[2] & (USB_EPT_SENT | USB_EPT_RECEIVED | USB_EPT_TXSTATE), USB_EPT_TXSTATE);
}
#endif

int main(void)
{
    void *const base = (void *)APB1_BUS_BASE;

    if (mmap(base, 0x40000, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0) != base) {
        puts("the addresses of the peripherals are taken");
        return 1;
    }
    timers_keep_the_other_channels();
    converters_place_their_ranks();
#ifdef ERTC_MODULE_ENABLED
    the_calendar_holds_decimal_digits();
#endif
#ifdef RTC_MODULE_ENABLED
    the_counter_follows_the_calendar();
#endif
#ifdef DAC_MODULE_ENABLED
    values_reach_the_output_aligned();
#endif
#ifdef CAN_MODULE_ENABLED
    a_frame_goes_through_a_mailbox();
#endif
#ifdef EMAC_MODULE_ENABLED
    frames_go_through_the_rings();
#endif
#ifdef XMC_MODULE_ENABLED
    timings_fit_their_fields();
#ifdef XMC_SDRAM_START
    both_banks_of_sdram_share_their_clock();
#endif
#endif
#ifdef QSPI_MODULE_ENABLED
    commands_and_the_mapped_memory_share_their_fields();
#endif
#ifdef USB_MODULE_ENABLED
    packets_keep_their_bytes();
#endif
    return failures != 0;
}
