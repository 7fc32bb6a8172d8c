<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Prompt</name>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
</context>
</TS>
