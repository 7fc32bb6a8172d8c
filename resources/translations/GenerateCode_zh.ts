<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>GenerateCode</name>
    <message>
        <source>%1 is no folder</source>
        <translation>%1 不是文件夹</translation>
    </message>
    <message>
        <source>The marker comments of user blocks stand twice in a file, as in a copy of generated code. Take them out of the copy:
%1</source>
        <translation>文件中用户代码块的标记注释出现了两次，例如在生成代码的副本中。请从副本中删去这些标记：
%1</translation>
    </message>
    <message>
        <source>The templates of %1 and the generator do not agree: %2</source>
        <translation>%1 的模板与生成器不一致：%2</translation>
    </message>
    <message>
        <source>There is no generator for %1</source>
        <translation>没有 %1 的代码生成器</translation>
    </message>
    <message>
        <source>changed: \1 in the user code of "%1" stands for what the new file had there</source>
        <translation>已更改：“%1”用户代码中的 \1 表示新文件该处的内容</translation>
    </message>
    <message>
        <source>no pin is free for the output of printf through %1</source>
        <translation>printf 经 %1 输出：没有空闲的引脚</translation>
    </message>
    <message>
        <source>not carried over: the user code of "%1"</source>
        <translation>未保留：“%1”中的用户代码</translation>
    </message>
    <message>
        <source>printf is served by another port, and not by %1</source>
        <translation>printf 由其他串口输出，不经 %1</translation>
    </message>
    <message>
        <source>the former file is kept as %1</source>
        <translation>原文件保留为 %1</translation>
    </message>
    <message>
        <source>the marker lines of "%1" stand there twice: all between the first and the last stays as it is, generated code included</source>
        <translation>“%1”的标记行出现了两次：首尾之间的全部内容（包括生成的代码）保持原样</translation>
    </message>
    <message>
        <source>the template %1 is missing</source>
        <translation>缺少模板 %1</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Creating "%1" folder error!</source>
        <translation>创建“%1”文件夹出错！</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>The code of these cannot be generated yet: %1</source>
        <translation>尚不能生成以下模块的代码：%1</translation>
    </message>
    <message>
        <source>The manually configured pin signal does not take effect.
%1</source>
        <translation>手动配置的引脚信号未生效。
%1</translation>
    </message>
    <message>
        <source>These peripherals still have some not configured or wrong parameter value.
Peripherals:   ( %1 )</source>
        <translation>以下外设仍有未配置或错误的参数值。
外设：   ( %1 )</translation>
    </message>
</context>
</TS>
