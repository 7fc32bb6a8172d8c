<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>ChipLoom::Settings</name>
    <message>
        <source>The program works as usual, but forgets its settings when it ends. This file cannot be read or written:
%1</source>
        <translation>程序可以正常使用，但退出后不会保留设置。以下文件无法读取或写入：
%1</translation>
    </message>
</context>
<context>
    <name>Prompt</name>
    <message>
        <source>The settings cannot be kept.</source>
        <translation>无法保存设置。</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
</context>
</TS>
