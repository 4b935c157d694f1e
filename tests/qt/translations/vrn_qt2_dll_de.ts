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
        <source>Yes</source>
        <comment>property_yes_no</comment>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <comment>property_yes_no</comment>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Reset to default.</source>
        <comment>makeLineEditWithOptionalValue</comment>
        <translation>Auf die Vorgabe setzen.</translation>
    </message>
    <message>
        <source>The selected objects differ.</source>
        <translation>Die ausgewählten Objekte unterscheiden sich.</translation>
    </message>
</context>
</TS>
