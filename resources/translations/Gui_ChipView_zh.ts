<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::ChipScene</name>
    <message>
        <source>Functions of %1:</source>
        <translation>%1 的功能：</translation>
    </message>
    <message>
        <source>Functions:</source>
        <translation>功能：</translation>
    </message>
    <message>
        <source>Pin </source>
        <translation>引脚 </translation>
    </message>
    <message>
        <source>Pin in use</source>
        <translation>已使用的引脚</translation>
    </message>
    <message>
        <source>Pin no mode</source>
        <translation>未选模式引脚</translation>
    </message>
    <message>
        <source>Pin not in use</source>
        <translation>未使用的引脚</translation>
    </message>
    <message>
        <source>Used as: %1</source>
        <translation>用作：%1</translation>
    </message>
</context>
<context>
    <name>ChipLoom::ChipView</name>
    <message>
        <source>A signal's name, or a part of the name of signals or pins. Empty ends the search.</source>
        <translation>信号名称，或者信号、引脚名称的一部分。清空即结束查找。</translation>
    </message>
    <message>
        <source>Anti-clockwise rotate</source>
        <translation>逆时针旋转</translation>
    </message>
    <message>
        <source>Clockwise rotate</source>
        <translation>顺时针旋转</translation>
    </message>
    <message>
        <source>Enter Label</source>
        <translation>输入标签</translation>
    </message>
    <message>
        <source>Fit to window</source>
        <translation>适应窗口</translation>
    </message>
    <message>
        <source>Pin layout</source>
        <translation>引脚布局</translation>
    </message>
    <message>
        <source>Place a function on this pin first.</source>
        <translation>请先为该引脚分配功能。</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>查找</translation>
    </message>
    <message>
        <source>Search signal or pin</source>
        <translation>查找信号或引脚</translation>
    </message>
    <message>
        <source>Zoom Reset</source>
        <translation>缩放复位</translation>
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
    <name>ChipLoom::Enter_UserLabel_Dialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Empty shows the signal's name</source>
        <translation>留空则显示信号名称</translation>
    </message>
    <message>
        <source>Enter Label</source>
        <translation>输入标签</translation>
    </message>
    <message>
        <source>Label of %1 (%2):</source>
        <translation>%1（%2）的标签：</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Unable to find signal group, switching failed!</source>
        <translation>找不到信号组，切换失败！</translation>
    </message>
</context>
</TS>
