<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>tulvane</name>
    <message>
        <source>Everything stays on your Mac</source>
        <translation>Everything stays on your computer</translation>
    </message>
    <message>
        <source>Only counts are saved on this Mac – never the text you dictate.</source>
        <translation>Only counts are saved on this computer – never the text you dictate.</translation>
    </message>
    <message>
        <source>Right ⇧ Shift</source>
        <translation>Right Shift</translation>
    </message>
    <message>
        <source>Right ⌃ Control</source>
        <translation>Right Ctrl</translation>
    </message>
    <message>
        <source>Right ⌘ Command</source>
        <translation>Right Super</translation>
    </message>
    <message>
        <source>Right ⌥ Option</source>
        <translation>Right Alt</translation>
    </message>
    <message>
        <source>fn / 🌐 Globe</source>
        <translation>fn</translation>
    </message>
</context>
</TS>
