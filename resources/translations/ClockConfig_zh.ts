<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Clock</name>
    <message>
        <source>%1 MHz exactly</source>
        <translation>必须为 %1 MHz</translation>
    </message>
    <message>
        <source>%1 cannot take this value.</source>
        <translation>%1 不能取该值。</translation>
    </message>
    <message>
        <source>%1 does not suit the PLL input and was not adjusted.</source>
        <translation>%1 与 PLL 输入不匹配，且未调整。</translation>
    </message>
    <message>
        <source>%1 must be a number from %2 to %3.</source>
        <translation>%1 必须是 %2 到 %3 之间的数。</translation>
    </message>
    <message>
        <source>%1 takes: %2</source>
        <translation>%1 可取：%2</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 到 %2</translation>
    </message>
    <message>
        <source>%1 to %2 MHz</source>
        <translation>%1 到 %2 MHz</translation>
    </message>
    <message>
        <source>A frequency can be typed only while the PLL is the source of sclk.</source>
        <translation>仅当 sclk 的时钟源为 PLL 时才能输入频率。</translation>
    </message>
    <message>
        <source>High speed external crystal, Need to enable in "Pin out Configuration--CRM".</source>
        <translation>高速外部晶振，需要在“引脚配置--CRM”中使能。</translation>
    </message>
    <message>
        <source>Low speed external crystal, Need to enable in "Pin out Configuration--CRM".</source>
        <translation>低速外部晶振，需要在“引脚配置--CRM”中使能。</translation>
    </message>
    <message>
        <source>NONE</source>
        <translation>无</translation>
    </message>
    <message>
        <source>No multiplier exists for a PLL input of %1 MHz. Change hext, its divider or the PLL source.</source>
        <translation>PLL 输入为 %1 MHz 时没有可用的倍频系数。请修改 hext、其分频系数或 PLL 时钟源。</translation>
    </message>
    <message>
        <source>No multiplier exists for the present PLL input.</source>
        <translation>当前 PLL 输入没有可用的倍频系数。</translation>
    </message>
    <message>
        <source>The clock of %1 has no "%2"; it has: %3</source>
        <translation>%1 的时钟没有“%2”；可用的有：%3</translation>
    </message>
    <message>
        <source>The pin of a clock output is chosen by the modes of CRM and on the pins</source>
        <translation>时钟输出的引脚由 CRM 的模式和引脚页面决定</translation>
    </message>
    <message>
        <source>This series has no %1.</source>
        <translation>该系列没有 %1。</translation>
    </message>
    <message>
        <source>When FREERTOS is activated, this option is invalid.</source>
        <translation>启用 FREERTOS 时，该选项无效。</translation>
    </message>
    <message>
        <source>external</source>
        <translation>外部</translation>
    </message>
    <message>
        <source>flexible</source>
        <translation>灵活</translation>
    </message>
    <message>
        <source>hext must be a number from %1 to %2 MHz first.</source>
        <translation>请先输入 %1 到 %2 MHz 之间的 hext。</translation>
    </message>
    <message>
        <source>normal</source>
        <translation>普通</translation>
    </message>
    <message>
        <source>up to %1 MHz</source>
        <translation>最大 %1 MHz</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Can not support I2SF5 clock greater than %1MHz</source>
        <translation>I2SF5 时钟不能大于 %1MHz</translation>
    </message>
    <message>
        <source>Can not support apb1clk greater than %1MHz</source>
        <translation>apb1clk 不能大于 %1MHz</translation>
    </message>
    <message>
        <source>Can not support apb2clk greater than %1MHz</source>
        <translation>apb2clk 不能大于 %1MHz</translation>
    </message>
    <message>
        <source>Can not support apb3clk greater than %1MHz</source>
        <translation>apb3clk 不能大于 %1MHz</translation>
    </message>
    <message>
        <source>Can not support pll clock greater than %1MHz</source>
        <translation>PLL 时钟不能大于 %1MHz</translation>
    </message>
    <message>
        <source>Can not support pll clock less than %1MHz</source>
        <translation>PLL 时钟不能小于 %1MHz</translation>
    </message>
    <message>
        <source>Can not support sclk greater than %1MHz</source>
        <translation>sclk 不能大于 %1MHz</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>I2SF5 external clock input error! </source>
        <translation>I2SF5 外部时钟输入错误！</translation>
    </message>
    <message>
        <source>MCU in file not supported.</source>
        <translation>不支持文件中的 MCU。</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>The ADC clock must be less than the APB2 clock. The currently configured ADC clock is wrong, please confirm whether to continue?</source>
        <translation>ADC 时钟必须小于 APB2 时钟。当前配置的 ADC 时钟有误，请确认是否继续？</translation>
    </message>
    <message>
        <source>The current configuration will be reset. Please confirm whether to continue?</source>
        <translation>当前配置将被重置，请确认是否继续？</translation>
    </message>
    <message>
        <source>The maximum ADC clock is 28 MHz. The currently configured ADC clock is wrong, please confirm whether to continue?</source>
        <translation>ADC 时钟最大为 28 MHz。当前配置的 ADC 时钟有误，请确认是否继续？</translation>
    </message>
    <message>
        <source>The maximum ADC clock is 35 MHz. The currently configured ADC clock is wrong.  please confirm whether to continue?</source>
        <translation>ADC 时钟最大为 35 MHz。当前配置的 ADC 时钟有误，请确认是否继续？</translation>
    </message>
    <message>
        <source>USB clock must be 48MHz. But the USB clock of current config is wrong.  please confirm whether to continue?</source>
        <translation>USB 时钟必须为 48MHz。当前配置的 USB 时钟有误，请确认是否继续？</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>hext input error, please re-enter.</source>
        <translation>hext 输入错误，请重新输入。</translation>
    </message>
    <message>
        <source>pll_ms input error!</source>
        <translation>pll_ms 输入错误！</translation>
    </message>
    <message>
        <source>pll_ms input error, is it adjusted automatically?
The following condition must be met: 
2MHz &lt;= pll_input / pll_ms &lt;= 16MHz</source>
        <translation>pll_ms 输入错误，是否自动调整？
必须满足以下条件：
2MHz &lt;= pll_input / pll_ms &lt;= 16MHz</translation>
    </message>
    <message>
        <source>pll_ns input error!</source>
        <translation>pll_ns 输入错误！</translation>
    </message>
    <message>
        <source>pll_ns input error, is it adjusted automatically?

The following condition must be met: 
500MHz &lt;= pll_input * pll_ns / pll_ms &lt;= 1000MHz</source>
        <translation>pll_ns 输入错误，是否自动调整？

必须满足以下条件：
500MHz &lt;= pll_input * pll_ns / pll_ms &lt;= 1000MHz</translation>
    </message>
    <message>
        <source>pll_ns input error, is it adjusted automatically?

The following condition must be met: 
500MHz &lt;= pll_input * pll_ns / pll_ms &lt;= 1200MHz</source>
        <translation>pll_ns 输入错误，是否自动调整？

必须满足以下条件：
500MHz &lt;= pll_input * pll_ns / pll_ms &lt;= 1200MHz</translation>
    </message>
    <message>
        <source>sclk input error!</source>
        <translation>sclk 输入错误！</translation>
    </message>
</context>
</TS>
