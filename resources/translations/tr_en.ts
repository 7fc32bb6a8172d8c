<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Prompt</name>
    <message>
        <source>Yes1</source>
        <translation>Yes</translation>
    </message>
</context>
</TS>
