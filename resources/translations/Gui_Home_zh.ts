<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::DeviceFilterBar</name>
    <message>
        <source>Any</source>
        <translation>不限</translation>
    </message>
    <message>
        <source>Flash at least:</source>
        <translation>Flash 不小于：</translation>
    </message>
    <message>
        <source>Frequency at least:</source>
        <translation>主频不低于：</translation>
    </message>
    <message>
        <source>Package:</source>
        <translation>封装：</translation>
    </message>
    <message>
        <source>Pins:</source>
        <translation>引脚数：</translation>
    </message>
    <message>
        <source>Reset filters</source>
        <translation>清除筛选</translation>
    </message>
    <message>
        <source>SRAM at least:</source>
        <translation>SRAM 不小于：</translation>
    </message>
</context>
<context>
    <name>ChipLoom::DeviceSelection</name>
    <message>
        <source> items</source>
        <translation> 项</translation>
    </message>
    <message>
        <source>Check all</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>Check none</source>
        <translation>全不选</translation>
    </message>
    <message>
        <source>Choose from lists...</source>
        <translation>从列表中选择…</translation>
    </message>
    <message>
        <source>Device Search:</source>
        <translation>器件搜索：</translation>
    </message>
    <message>
        <source>MCUs List: </source>
        <translation>MCU 列表：共 </translation>
    </message>
    <message>
        <source>New Design</source>
        <translation>新建设计</translation>
    </message>
    <message>
        <source>No device of the checked series passes the search and the filters.</source>
        <translation>所选系列中没有符合搜索和筛选条件的器件。</translation>
    </message>
    <message>
        <source>No series is checked. Check one in the tree on the left to list its devices.</source>
        <translation>未勾选任何系列。请在左侧列表中勾选一个系列以显示其器件。</translation>
    </message>
    <message>
        <source>There are no devices to choose from.</source>
        <translation>没有可选的器件。</translation>
    </message>
</context>
<context>
    <name>ChipLoom::DeviceTableModel</name>
    <message>
        <source>  Core  </source>
        <translation>  内核  </translation>
    </message>
    <message>
        <source>Default: </source>
        <translation>默认：</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>器件</translation>
    </message>
    <message>
        <source>Device Serials</source>
        <translation>器件系列</translation>
    </message>
    <message>
        <source>Flash</source>
        <translation>Flash</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>主频</translation>
    </message>
    <message>
        <source>GPIOs</source>
        <translation>GPIO 数</translation>
    </message>
    <message>
        <source>Max: </source>
        <translation>最大：</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>封装</translation>
    </message>
    <message>
        <source>Product Line</source>
        <translation>产品线</translation>
    </message>
    <message>
        <source>SRAM</source>
        <translation>SRAM</translation>
    </message>
</context>
<context>
    <name>ChipLoom::MainWindow</name>
    <message>
        <source>Chinese</source>
        <translation>中文</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Language:</source>
        <translation>语言：</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Open an Existing Design</source>
        <translation>打开已有设计</translation>
    </message>
    <message>
        <source>Recent Designs</source>
        <translation>最近的设计</translation>
    </message>
    <message>
        <source>Start a new Design</source>
        <translation>新建设计</translation>
    </message>
    <message>
        <source>The design had not been saved yet.</source>
        <translation>该设计尚未保存过。</translation>
    </message>
    <message>
        <source>Welcome. Choose a device to start a design with.</source>
        <translation>欢迎使用。请选择一款器件开始设计。</translation>
    </message>
</context>
<context>
    <name>ChipLoom::New_Design_Select</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Core:</source>
        <translation>内核：</translation>
    </message>
    <message>
        <source>Device Search:</source>
        <translation>器件搜索：</translation>
    </message>
    <message>
        <source>Device Serials:</source>
        <translation>器件系列：</translation>
    </message>
    <message>
        <source>Device:</source>
        <translation>器件：</translation>
    </message>
    <message>
        <source>Flash:</source>
        <translation>Flash：</translation>
    </message>
    <message>
        <source>Frequency:</source>
        <translation>主频：</translation>
    </message>
    <message>
        <source>New Design</source>
        <translation>新建设计</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Package:</source>
        <translation>封装：</translation>
    </message>
    <message>
        <source>Product Line:</source>
        <translation>产品线：</translation>
    </message>
    <message>
        <source>SRAM:</source>
        <translation>SRAM：</translation>
    </message>
</context>
<context>
    <name>ChipLoom::RecentDesignsPage</name>
    <message>
        <source>No design has been saved or opened yet.</source>
        <translation>尚未保存或打开过设计。</translation>
    </message>
    <message>
        <source>Remove from this list</source>
        <translation>从列表中移除</translation>
    </message>
</context>
<context>
    <name>ChipLoom::SeriesInfoBrowser</name>
    <message>
        <source>There is no information page for %1.</source>
        <translation>%1 没有系列说明页。</translation>
    </message>
</context>
<context>
    <name>ChipLoom::SeriesTree</name>
    <message>
        <source>Expand All</source>
        <translation>全部展开</translation>
    </message>
    <message>
        <source>Fold All</source>
        <translation>全部折叠</translation>
    </message>
    <message>
        <source>Please select MCU series</source>
        <translation>请选择 MCU 系列</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>询问</translation>
    </message>
    <message>
        <source>The description of the device cannot be read.</source>
        <translation>无法读取该器件的描述文件。</translation>
    </message>
    <message>
        <source>The program ended before a design was saved. Would you like to open what is left of it? "No" throws it away.</source>
        <translation>程序在设计保存之前结束。是否打开保留下来的内容？选择“否”将其丢弃。</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
</context>
</TS>
