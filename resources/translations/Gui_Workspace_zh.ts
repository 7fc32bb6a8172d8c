<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::ConfigurationPane</name>
    <message>
        <source>Choose a module on the left to see what it offers.</source>
        <translation>请在左侧选择一个模块，查看其内容。</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>配置</translation>
    </message>
</context>
<context>
    <name>ChipLoom::FormConfiguration</name>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Generate code</source>
        <translation>生成代码(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>语言(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>工具(&amp;T)</translation>
    </message>
    <message>
        <source>A clock is out of range.</source>
        <translation>有时钟超出范围。</translation>
    </message>
    <message>
        <source>All files were up to date; none was written.</source>
        <translation>所有文件均已是最新，未写入任何文件。</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>中文</translation>
    </message>
    <message>
        <source>Clock Configuration</source>
        <translation>时钟配置</translation>
    </message>
    <message>
        <source>Design Save As</source>
        <translation>设计另存为</translation>
    </message>
    <message>
        <source>Design file (*.ZVWP)</source>
        <translation>设计文件 (*.ZVWP)</translation>
    </message>
    <message>
        <source>English</source>
        <translation>英文</translation>
    </message>
    <message>
        <source>Mode and Configuration</source>
        <translation>模式与配置</translation>
    </message>
    <message>
        <source>New Design</source>
        <translation>新建设计</translation>
    </message>
    <message>
        <source>No design has been saved or opened yet.</source>
        <translation>尚未保存或打开过任何设计。</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Open Design</source>
        <translation>打开设计</translation>
    </message>
    <message>
        <source>Pin out &amp; Configuration</source>
        <translation>引脚与配置</translation>
    </message>
    <message>
        <source>Resent Design</source>
        <translation>最近的设计</translation>
    </message>
    <message>
        <source>Reset All Configurations</source>
        <translation>复位全部配置</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save Design</source>
        <translation>保存设计</translation>
    </message>
    <message>
        <source>The design is saved in its project now: %1. The former file stays as it was: %2</source>
        <translation>设计现已保存在工程中：%1。原文件保持不变：%2</translation>
    </message>
    <message>
        <source>ZV32 Chip Loom Design File (*.ZVWP)</source>
        <translation>ZV32 Chip Loom 设计文件 (*.ZVWP)</translation>
    </message>
</context>
<context>
    <name>ChipLoom::LoadingProgress</name>
    <message>
        <source>Loading......</source>
        <translation>正在加载......</translation>
    </message>
</context>
<context>
    <name>ChipLoom::PeripheralPage</name>
    <message>
        <source>About:</source>
        <translation>简介：</translation>
    </message>
    <message>
        <source>Category:</source>
        <translation>类别：</translation>
    </message>
    <message>
        <source>Description:</source>
        <translation>描述文件：</translation>
    </message>
    <message>
        <source>Double click a signal to find its pins.</source>
        <translation>双击信号即可查找其引脚。</translation>
    </message>
    <message>
        <source>Possible pins</source>
        <translation>可用引脚</translation>
    </message>
    <message>
        <source>Signal</source>
        <translation>信号</translation>
    </message>
    <message>
        <source>Stands on</source>
        <translation>当前引脚</translation>
    </message>
    <message>
        <source>This module has no signals on the pins of this package.</source>
        <translation>该模块在此封装的引脚上没有信号。</translation>
    </message>
</context>
<context>
    <name>ChipLoom::PeripheralsConfig</name>
    <message>
        <source>Expand All</source>
        <translation>全部展开</translation>
    </message>
    <message>
        <source>Fold All</source>
        <translation>全部折叠</translation>
    </message>
    <message>
        <source>Middlewares</source>
        <translation>中间件</translation>
    </message>
    <message>
        <source>Module Categories</source>
        <translation>模块分类</translation>
    </message>
    <message>
        <source>Peripherals</source>
        <translation>外设</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>A part of the file could not be taken over. Saving the design leaves out what is not said to stay.</source>
        <translation>文件的一部分无法采用。除注明保留的内容外，保存设计时将不包含该部分。</translation>
    </message>
    <message>
        <source>A value typed on the clock page is not in effect: Return takes it. Would you like to go on without it?</source>
        <translation>时钟页上输入的值尚未生效，按回车键即可采用。是否不采用该值并继续？</translation>
    </message>
    <message>
        <source>Another program has changed the file of this design. Would you like to overwrite it?</source>
        <translation>其他程序已修改此设计的文件，是否覆盖？</translation>
    </message>
    <message>
        <source>Are you sure to open this design file?</source>
        <translation>确定要打开此设计文件吗？</translation>
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
        <source>File is not exists!</source>
        <translation>文件不存在！</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
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
        <source>Reset succeed!</source>
        <translation>复位成功！</translation>
    </message>
    <message>
        <source>Save file finished!</source>
        <translation>保存文件完成！</translation>
    </message>
    <message>
        <source>The current all configurations will be reset. Please confirm whether to continue?</source>
        <translation>当前的全部配置将被复位，请确认是否继续？</translation>
    </message>
    <message>
        <source>The current design will be closed before creating a new design. Would you like to save the design?</source>
        <translation>新建设计之前将关闭当前设计，是否保存该设计？</translation>
    </message>
    <message>
        <source>The current design will be closed before opening another design. Would you like to save the design?</source>
        <translation>打开其他设计前将关闭当前设计。是否保存该设计？</translation>
    </message>
    <message>
        <source>The current design will be closed. Would you like to save the design?</source>
        <translation>当前设计将被关闭，是否保存该设计？</translation>
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
        <source>Yes1</source>
        <translation>是</translation>
    </message>
</context>
</TS>
