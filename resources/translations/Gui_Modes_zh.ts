<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::IP_ParamSettingWidget</name>
    <message>
        <source>Diagram</source>
        <translation>示意图</translation>
    </message>
    <message>
        <source>Expand All</source>
        <translation>全部展开</translation>
    </message>
    <message>
        <source>Fold All</source>
        <translation>全部折叠</translation>
    </message>
    <message>
        <source>General</source>
        <translation>常规</translation>
    </message>
    <message>
        <source>Search parameters</source>
        <translation>搜索参数</translation>
    </message>
</context>
<context>
    <name>ChipLoom::ModeArea</name>
    <message>
        <source>Disable</source>
        <translation>禁用</translation>
    </message>
    <message>
        <source>No Mode Settings!</source>
        <translation>没有模式设置！</translation>
    </message>
</context>
<context>
    <name>ChipLoom::ModePage</name>
    <message>
        <source>%1 Settings</source>
        <translation>%1 设置</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>配置</translation>
    </message>
    <message>
        <source>GPIO Settings</source>
        <translation>GPIO 设置</translation>
    </message>
    <message>
        <source>Interrupts Settings</source>
        <translation>中断设置</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>模式</translation>
    </message>
    <message>
        <source>NVIC Settings</source>
        <translation>NVIC 设置</translation>
    </message>
    <message>
        <source>Parameters Settings</source>
        <translation>参数设置</translation>
    </message>
    <message>
        <source>Reset Configuration</source>
        <translation>重置配置</translation>
    </message>
    <message>
        <source>Signals</source>
        <translation>信号</translation>
    </message>
</context>
<context>
    <name>ChipLoom::OneParamWidget</name>
    <message>
        <source>%1 Allowed: %2.</source>
        <translation>%1允许范围：%2。</translation>
    </message>
    <message>
        <source>Base of the number</source>
        <translation>数值进制</translation>
    </message>
    <message>
        <source>Dec</source>
        <translation>十进制</translation>
    </message>
    <message>
        <source>Hex</source>
        <translation>十六进制</translation>
    </message>
    <message>
        <source>Restore the default value</source>
        <translation>恢复默认值</translation>
    </message>
</context>
<context>
    <name>ModePage</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 至 %2</translation>
    </message>
    <message>
        <source>Dependency</source>
        <translation>依赖关系</translation>
    </message>
    <message>
        <source>Parameter Description</source>
        <translation>参数说明</translation>
    </message>
    <message>
        <source>Show %1</source>
        <translation>显示 %1</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>不小于 %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>不大于 %1</translation>
    </message>
    <message>
        <source>bit</source>
        <translation>位</translation>
    </message>
    <message>
        <source>bytes</source>
        <translation>字节</translation>
    </message>
    <message>
        <source>ticks</source>
        <translation>节拍</translation>
    </message>
    <message>
        <source>words</source>
        <translation>字</translation>
    </message>
    <message>
        <source>x 32 clocks</source>
        <translation>x 32 个时钟</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The current configuration will be reset. Please confirm whether to continue?</source>
        <translation>当前配置将被重置，请确认是否继续？</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
</context>
</TS>
