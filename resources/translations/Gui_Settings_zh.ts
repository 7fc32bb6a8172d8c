<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::DMAParameterArea</name>
    <message>
        <source>DMA Request Generator Settings</source>
        <translation>DMA 请求发生器设置</translation>
    </message>
    <message>
        <source>DMA Request Settings</source>
        <translation>DMA 请求设置</translation>
    </message>
    <message>
        <source>DMA Request Synchronization Settings</source>
        <translation>DMA 请求同步设置</translation>
    </message>
    <message>
        <source>EDMA Request Generator Settings</source>
        <translation>EDMA 请求发生器设置</translation>
    </message>
    <message>
        <source>EDMA Request Settings</source>
        <translation>EDMA 请求设置</translation>
    </message>
    <message>
        <source>EDMA Request Synchronization Settings</source>
        <translation>EDMA 请求同步设置</translation>
    </message>
</context>
<context>
    <name>ChipLoom::DMASettingModel</name>
    <message>
        <source>Channel</source>
        <translation>通道</translation>
    </message>
    <message>
        <source>DMA Request</source>
        <translation>DMA 请求</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>方向</translation>
    </message>
    <message>
        <source>EDMA Request</source>
        <translation>EDMA 请求</translation>
    </message>
    <message>
        <source>FIFO</source>
        <translation>FIFO</translation>
    </message>
    <message>
        <source>FIFO Threshold</source>
        <translation>FIFO 阈值</translation>
    </message>
    <message>
        <source>Memory Burst</source>
        <translation>存储器突发</translation>
    </message>
    <message>
        <source>Peripheral Burst</source>
        <translation>外设突发</translation>
    </message>
    <message>
        <source>Priority</source>
        <translation>优先级</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>请选择</translation>
    </message>
</context>
<context>
    <name>ChipLoom::DMASettingWidget</name>
    <message>
        <source>A change goes to all %1 selected rows.</source>
        <translation>更改将应用于全部 %1 个选中的行。</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Add a request (Insert)</source>
        <translation>添加请求（Insert）</translation>
    </message>
    <message>
        <source>DMA Request Parameters</source>
        <translation>DMA 请求参数</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>EDMA Request Parameters</source>
        <translation>EDMA 请求参数</translation>
    </message>
    <message>
        <source>Select a request to set its transfer here.</source>
        <translation>选择一个请求，在此设置其传输。</translation>
    </message>
    <message>
        <source>Take the channels of the selected requests away (Delete)</source>
        <translation>释放选中请求的通道（Delete）</translation>
    </message>
</context>
<context>
    <name>ChipLoom::GPIOSettingModel</name>
    <message>
        <source>Label</source>
        <translation>标签</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>已修改</translation>
    </message>
    <message>
        <source>Pin Name</source>
        <translation>引脚名称</translation>
    </message>
    <message>
        <source>Signal on Pin</source>
        <translation>引脚信号</translation>
    </message>
    <message>
        <source>n/a</source>
        <translation>不适用</translation>
    </message>
</context>
<context>
    <name>ChipLoom::GPIOSettingWidget</name>
    <message>
        <source>%1:</source>
        <translation>%1：</translation>
    </message>
    <message>
        <source>A change goes to all %1 selected rows.</source>
        <translation>更改将应用于全部 %1 个选中的行。</translation>
    </message>
    <message>
        <source>GPIO Parameters</source>
        <translation>GPIO 参数</translation>
    </message>
    <message>
        <source>Label:</source>
        <translation>标签：</translation>
    </message>
    <message>
        <source>Select a row to set its parameters here.</source>
        <translation>选择一行以在此设置其参数。</translation>
    </message>
</context>
<context>
    <name>ChipLoom::GPIO_ConfigurationPage</name>
    <message>
        <source>All pins in use</source>
        <translation>所有已用引脚</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>显示：</translation>
    </message>
</context>
<context>
    <name>ChipLoom::InterruptSettingModel</name>
    <message>
        <source>Enabled</source>
        <translation>使能</translation>
    </message>
    <message>
        <source>Interrupt</source>
        <translation>中断</translation>
    </message>
</context>
<context>
    <name>ChipLoom::NVICSettingModel</name>
    <message>
        <source>Enabled</source>
        <translation>使能</translation>
    </message>
    <message>
        <source>Generate IRQ Handler</source>
        <translation>生成中断处理函数</translation>
    </message>
    <message>
        <source>NVIC Interrupt Table</source>
        <translation>NVIC 中断表</translation>
    </message>
    <message>
        <source>Preemption Priority</source>
        <translation>抢占优先级</translation>
    </message>
    <message>
        <source>Sub Priority</source>
        <translation>子优先级</translation>
    </message>
    <message>
        <source>Uses FreeRTOS functions</source>
        <translation>使用 FreeRTOS 函数</translation>
    </message>
</context>
<context>
    <name>ChipLoom::NVIC_Settings</name>
    <message>
        <source>All interrupts</source>
        <translation>所有中断</translation>
    </message>
    <message>
        <source>Available interrupts</source>
        <translation>可用中断</translation>
    </message>
    <message>
        <source>Enabled interrupts</source>
        <translation>已使能中断</translation>
    </message>
    <message>
        <source>Priority Group:</source>
        <translation>优先级分组：</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>显示：</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Label must be letters/numbers/underscores, and start with a letter or an underscore.</source>
        <translation>标签只能由字母、数字和下划线组成，且必须以字母或下划线开头。</translation>
    </message>
    <message>
        <source>No available DMA channels for configurated peripherals!</source>
        <translation>已配置的外设没有可用的 DMA 通道！</translation>
    </message>
    <message>
        <source>No available DMA request!</source>
        <translation>没有可用的 DMA 请求！</translation>
    </message>
    <message>
        <source>No available DMA requests for configurated peripherals!</source>
        <translation>已配置的外设没有可用的 DMA 请求！</translation>
    </message>
    <message>
        <source>No available channel for configurated DMA Request! </source>
        <translation>已配置的 DMA 请求没有可用通道！</translation>
    </message>
    <message>
        <source>No available channel for configurated DMA Request! %1 has been used</source>
        <translation>已配置的 DMA 请求没有可用通道！%1 已被使用</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
</TS>
