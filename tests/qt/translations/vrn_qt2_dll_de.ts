<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>QObject</name>
    <message>
        <source>*VARIES*</source>
        <translation>*VERSCHIEDEN*</translation>
    </message>
    <message>
        <source>The selected objects differ.</source>
        <translation>Die ausgewählten Objekte unterscheiden sich.</translation>
    </message>
</context>
</TS>
