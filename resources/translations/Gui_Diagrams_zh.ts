<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Diagram</name>
    <message>
        <source>A capacitor between INM0 and OP_OUT filters; the resistors inside set the gain.</source>
        <comment>ModeType4_point1</comment>
        <translation>INM0 与 OP_OUT 之间的电容用于滤波；增益由内部电阻决定。</translation>
    </message>
    <message>
        <source>Counter = 0</source>
        <translation>计数器 = 0</translation>
    </message>
    <message>
        <source>Counter = TMRx_PR</source>
        <translation>计数器 = TMRx_PR</translation>
    </message>
    <message>
        <source>Data Bit Timing</source>
        <translation>数据位时序</translation>
    </message>
    <message>
        <source>Down counter</source>
        <translation>向下计数</translation>
    </message>
    <message>
        <source>External clock</source>
        <translation>外部时钟</translation>
    </message>
    <message>
        <source>Feedback and gain are made by parts outside of the chip.</source>
        <comment>ModeType1_point1</comment>
        <translation>反馈与增益由片外元件决定。</translation>
    </message>
    <message>
        <source>INM0 is the signal or its bias; INM1 may carry a filter.</source>
        <comment>ModeType5_point1</comment>
        <translation>INM0 为信号或其偏置；INM1 可接滤波器。</translation>
    </message>
    <message>
        <source>MCU Reset</source>
        <translation>MCU 复位</translation>
    </message>
    <message>
        <source>Nominal Bit Timing</source>
        <translation>标称位时序</translation>
    </message>
    <message>
        <source>Normal Bit Timing</source>
        <translation>普通位时序</translation>
    </message>
    <message>
        <source>Overflow frequency</source>
        <translation>溢出频率</translation>
    </message>
    <message>
        <source>Refresh not allowed</source>
        <translation>禁止刷新</translation>
    </message>
    <message>
        <source>Refresh the allowed</source>
        <translation>允许刷新</translation>
    </message>
    <message>
        <source>Refresh the window</source>
        <translation>刷新窗口</translation>
    </message>
    <message>
        <source>Reload the counter</source>
        <translation>重载计数器</translation>
    </message>
    <message>
        <source>Reload value</source>
        <translation>重载值</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>采样</translation>
    </message>
    <message>
        <source>TI frame</source>
        <translation>TI 帧</translation>
    </message>
    <message>
        <source>The converter or INP3 gives the level that the output follows.</source>
        <comment>ModeType6_point1</comment>
        <translation>输出跟随 DAC 或 INP3 给出的电平。</translation>
    </message>
    <message>
        <source>The output follows the input; the inverting input is connected inside.</source>
        <comment>ModeType2_point1</comment>
        <translation>输出跟随输入；反相输入在内部连接。</translation>
    </message>
    <message>
        <source>The resistors inside set the gain; no inverting pin is used.</source>
        <comment>ModeType3_point1</comment>
        <translation>增益由内部电阻决定；不使用反相引脚。</translation>
    </message>
    <message>
        <source>Time-out</source>
        <translation>超时时间</translation>
    </message>
    <message>
        <source>Type a frequency: divider and period take the values that come nearest to it.</source>
        <translation>输入一个频率：分频值和周期值取最接近的组合。</translation>
    </message>
    <message>
        <source>Up and down counter</source>
        <translation>双向计数</translation>
    </message>
    <message>
        <source>Up counter</source>
        <translation>向上计数</translation>
    </message>
    <message>
        <source>Window value</source>
        <translation>窗口值</translation>
    </message>
</context>
</TS>
