<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>tulvane</name>
    <message>
        <source>Everything stays on your Mac</source>
        <translation>Everything stays on your computer</translation>
    </message>
</context>
</TS>
