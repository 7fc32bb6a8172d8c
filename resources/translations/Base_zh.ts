<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Base</name>
    <message>
        <source>%1 does not exist</source>
        <translation>%1 不存在</translation>
    </message>
    <message>
        <source>%1 has %2 bytes; at most %3 are read</source>
        <translation>%1 有 %2 字节，最多读取 %3 字节</translation>
    </message>
    <message>
        <source>%1 is no regular file</source>
        <translation>%1 不是普通文件</translation>
    </message>
    <message>
        <source>%1 is read-only</source>
        <translation>%1 是只读的</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
</context>
</TS>
