<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>XmlProblem</name>
    <message>
        <source>The file %1 cannot be read: %2</source>
        <translation>无法读取文件 %1：%2</translation>
    </message>
    <message>
        <source>The file %1 does not exist.</source>
        <translation>文件 %1 不存在。</translation>
    </message>
    <message>
        <source>The file %1 has a DOCTYPE in line %2, which is not allowed.</source>
        <translation>文件 %1 的第 %2 行含有不允许的 DOCTYPE。</translation>
    </message>
    <message>
        <source>The file %1 has more than %2 elements or attributes.</source>
        <translation>文件 %1 的元素或属性超过 %2 个。</translation>
    </message>
    <message>
        <source>The file %1 is damaged in line %2: %3</source>
        <translation>文件 %1 的第 %2 行已损坏：%3</translation>
    </message>
    <message>
        <source>The file %1 is larger than %2 bytes and was not read.</source>
        <translation>文件 %1 超过 %2 字节，未读取。</translation>
    </message>
    <message>
        <source>The file %1 is not encoded as UTF-8. Save it as UTF-8.</source>
        <translation>文件 %1 不是 UTF-8 编码，请另存为 UTF-8。</translation>
    </message>
    <message>
        <source>The file %1 lists no product line with devices.</source>
        <translation>文件 %1 没有列出任何含器件的产品线。</translation>
    </message>
    <message>
        <source>The file %1 nests elements more than %2 deep.</source>
        <translation>文件 %1 的元素嵌套超过 %2 层。</translation>
    </message>
</context>
</TS>
