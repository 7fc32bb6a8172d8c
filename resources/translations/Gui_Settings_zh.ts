<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
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
</context>
</TS>
