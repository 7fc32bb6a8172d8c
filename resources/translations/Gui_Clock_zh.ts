<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::ClockPageBinding</name>
    <message>
        <source>%1 MHz</source>
        <translation>%1 MHz</translation>
    </message>
    <message>
        <source>%1 MHz instead of %2</source>
        <translation>%1 MHz，目标 %2</translation>
    </message>
    <message>
        <source>%1, Need to enable in "Pin out Configuration--%2".</source>
        <translation>%1，需要在“引脚配置--%2”中使能。</translation>
    </message>
    <message>
        <source>Limit: %1</source>
        <translation>限制：%1</translation>
    </message>
    <message>
        <source>Return takes the typed value.</source>
        <translation>按回车键采用输入值。</translation>
    </message>
    <message>
        <source>Solutions...</source>
        <translation>方案...</translation>
    </message>
    <message>
        <source>Temperature range - 40~85 degree. </source>
        <translation>温度范围 -40~85 度。</translation>
    </message>
    <message>
        <source>The pin is chosen at CRM on the pin page.</source>
        <translation>该引脚在引脚页面的 CRM 中选择。</translation>
    </message>
    <message>
        <source>Useage limited:</source>
        <translation>使用限制：</translation>
    </message>
    <message>
        <source>VDD must over 3.0V. </source>
        <translation>VDD 须高于 3.0V。</translation>
    </message>
    <message>
        <source>bypass</source>
        <translation>旁路</translation>
    </message>
</context>
<context>
    <name>ChipLoom::ClockSolutionsDialog</name>
    <message>
        <source>AHB / APB1 / APB2</source>
        <translation>AHB / APB1 / APB2</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>误差</translation>
    </message>
    <message>
        <source>PLL</source>
        <translation>PLL</translation>
    </message>
    <message>
        <source>Return or a double click takes the chosen solution.</source>
        <translation>按回车键或双击即采用所选方案。</translation>
    </message>
    <message>
        <source>SCLK</source>
        <translation>SCLK</translation>
    </message>
    <message>
        <source>USB</source>
        <translation>USB</translation>
    </message>
</context>
<context>
    <name>ChipLoom::ZV32MCUPLLView</name>
    <message>
        <source>List</source>
        <translation>列表</translation>
    </message>
</context>
<context>
    <name>ChipLoom::ZV32PLLConfigPage</name>
    <message>
        <source>Config Reset</source>
        <translation>重置配置</translation>
    </message>
    <message>
        <source>Fit to window</source>
        <translation>适应窗口</translation>
    </message>
    <message>
        <source>Reset Configuration</source>
        <translation>重置配置</translation>
    </message>
    <message>
        <source>Zoom Reset</source>
        <translation>还原缩放</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
</context>
<context>
    <name>Clock</name>
    <message>
        <source>(1-15)</source>
        <translation>(1-15)</translation>
    </message>
    <message>
        <source>(31-500)</source>
        <translation>(31-500)</translation>
    </message>
    <message>
        <source>ADC clock</source>
        <translation>ADC 时钟</translation>
    </message>
    <message>
        <source>CLKOUT</source>
        <translation>CLKOUT</translation>
    </message>
    <message>
        <source>CLKOUT1</source>
        <translation>CLKOUT1</translation>
    </message>
    <message>
        <source>CLKOUT2</source>
        <translation>CLKOUT2</translation>
    </message>
    <message>
        <source>Clock output</source>
        <translation>时钟输出</translation>
    </message>
    <message>
        <source>High speed external crystal</source>
        <translation>高速外部晶振</translation>
    </message>
    <message>
        <source>High speed internal clock</source>
        <translation>高速内部时钟</translation>
    </message>
    <message>
        <source>Low speed external crystal</source>
        <translation>低速外部晶振</translation>
    </message>
    <message>
        <source>Low speed internal clock</source>
        <translation>低速内部时钟</translation>
    </message>
    <message>
        <source>PLL</source>
        <translation>PLL</translation>
    </message>
    <message>
        <source>PLL clock</source>
        <translation>PLL 时钟</translation>
    </message>
    <message>
        <source>Peripheral clock sources</source>
        <translation>外设时钟源</translation>
    </message>
    <message>
        <source>System clock</source>
        <translation>系统时钟</translation>
    </message>
    <message>
        <source>USB clock</source>
        <translation>USB 时钟</translation>
    </message>
    <message>
        <source>adc (MHz)</source>
        <translation>adc (MHz)</translation>
    </message>
    <message>
        <source>ahb div</source>
        <translation>ahb 分频</translation>
    </message>
    <message>
        <source>apb1</source>
        <translation>apb1</translation>
    </message>
    <message>
        <source>apb1 peripheral (MHz)</source>
        <translation>apb1 外设 (MHz)</translation>
    </message>
    <message>
        <source>apb1 tmr (MHz)</source>
        <translation>apb1 定时器 (MHz)</translation>
    </message>
    <message>
        <source>apb2</source>
        <translation>apb2</translation>
    </message>
    <message>
        <source>apb2 peripheral (MHz)</source>
        <translation>apb2 外设 (MHz)</translation>
    </message>
    <message>
        <source>apb2 tmr (MHz)</source>
        <translation>apb2 定时器 (MHz)</translation>
    </message>
    <message>
        <source>apb3</source>
        <translation>apb3</translation>
    </message>
    <message>
        <source>apb3 peripheral (MHz)</source>
        <translation>apb3 外设 (MHz)</translation>
    </message>
    <message>
        <source>can1 (MHz)</source>
        <translation>can1 (MHz)</translation>
    </message>
    <message>
        <source>can2 (MHz)</source>
        <translation>can2 (MHz)</translation>
    </message>
    <message>
        <source>can3 (MHz)</source>
        <translation>can3 (MHz)</translation>
    </message>
    <message>
        <source>dma (MHz)</source>
        <translation>dma (MHz)</translation>
    </message>
    <message>
        <source>dvp (MHz)</source>
        <translation>dvp (MHz)</translation>
    </message>
    <message>
        <source>emac (MHz)</source>
        <translation>emac (MHz)</translation>
    </message>
    <message>
        <source>external (MHz)</source>
        <translation>外部时钟 (MHz)</translation>
    </message>
    <message>
        <source>gpio (MHz)</source>
        <translation>gpio (MHz)</translation>
    </message>
    <message>
        <source>hext to sclk</source>
        <translation>hext 到 sclk</translation>
    </message>
    <message>
        <source>hext(4-25MHz)</source>
        <translation>hext(4-25MHz)</translation>
    </message>
    <message>
        <source>hick to sclk</source>
        <translation>hick 到 sclk</translation>
    </message>
    <message>
        <source>hick to usb</source>
        <translation>hick 到 usb</translation>
    </message>
    <message>
        <source>hick(MHz)</source>
        <translation>hick(MHz)</translation>
    </message>
    <message>
        <source>i2c1 (MHz)</source>
        <translation>i2c1 (MHz)</translation>
    </message>
    <message>
        <source>i2s (MHz)</source>
        <translation>i2s (MHz)</translation>
    </message>
    <message>
        <source>i2sf5 (MHz)</source>
        <translation>i2sf5 (MHz)</translation>
    </message>
    <message>
        <source>lext(kHz)</source>
        <translation>lext(kHz)</translation>
    </message>
    <message>
        <source>lick(kHz)</source>
        <translation>lick(kHz)</translation>
    </message>
    <message>
        <source>pll mode</source>
        <translation>pll 模式</translation>
    </message>
    <message>
        <source>pll_fp</source>
        <translation>pll_fp</translation>
    </message>
    <message>
        <source>pll_fr</source>
        <translation>pll_fr</translation>
    </message>
    <message>
        <source>pll_fu</source>
        <translation>pll_fu</translation>
    </message>
    <message>
        <source>pll_ms</source>
        <translation>pll_ms</translation>
    </message>
    <message>
        <source>pll_mul</source>
        <translation>pll_mul</translation>
    </message>
    <message>
        <source>pll_ns</source>
        <translation>pll_ns</translation>
    </message>
    <message>
        <source>qspi (MHz)</source>
        <translation>qspi (MHz)</translation>
    </message>
    <message>
        <source>sclk (MHz)</source>
        <translation>sclk (MHz)</translation>
    </message>
    <message>
        <source>sclk select</source>
        <translation>sclk 选择</translation>
    </message>
    <message>
        <source>sdio (MHz)</source>
        <translation>sdio (MHz)</translation>
    </message>
    <message>
        <source>systick(MHz)</source>
        <translation>systick(MHz)</translation>
    </message>
    <message>
        <source>to ertc(kHz)</source>
        <translation>到 ertc(kHz)</translation>
    </message>
    <message>
        <source>to rtc(kHz)</source>
        <translation>到 rtc(kHz)</translation>
    </message>
    <message>
        <source>to wdt(kHz)</source>
        <translation>到 wdt(kHz)</translation>
    </message>
    <message>
        <source>usart1 (MHz)</source>
        <translation>usart1 (MHz)</translation>
    </message>
    <message>
        <source>usart2 (MHz)</source>
        <translation>usart2 (MHz)</translation>
    </message>
    <message>
        <source>usart3 (MHz)</source>
        <translation>usart3 (MHz)</translation>
    </message>
    <message>
        <source>usb (MHz)</source>
        <translation>usb (MHz)</translation>
    </message>
    <message>
        <source>usb div</source>
        <translation>usb 分频</translation>
    </message>
    <message>
        <source>xmc (MHz)</source>
        <translation>xmc (MHz)</translation>
    </message>
</context>
</TS>
