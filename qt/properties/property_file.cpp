#include "property_file_p.h"

#include <vrn/qt/property_error.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>

namespace vrn::qt {

namespace {

const QLatin1String format("vrn properties");
constexpr int version = 1;
const QLatin1String formatKey("format");
const QLatin1String versionKey("version");
const QLatin1String kindsKey("kinds");
const QLatin1String valuesKey("values");
const QLatin1String checkKey("check");
const QLatin1String codeUnitsKey("utf16");

PropertyError damaged()
{
    return PropertyError(
        QCoreApplication::translate("PropertyFile", "The file is damaged or was altered."));
}

/// Of everything but itself. QJsonDocument writes an object in one way: sorted by key.
QString checkOf(QJsonObject json)
{
    json.remove(checkKey);
    const QByteArray text = QJsonDocument(json).toJson(QJsonDocument::Compact);
    return QString::fromLatin1(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}

/// Half a surrogate pair has no place in UTF-8, so a text with one is written in code units.
QJsonValue toJsonValue(const std::optional<QString>& text)
{
    if (!text)
        return QJsonValue::Null;
    if (QString::fromUtf8(text->toUtf8()) == *text)
        return *text;
    QJsonArray codeUnits;
    for (const QChar unit : *text)
        codeUnits.append(int(unit.unicode()));
    return QJsonObject{{codeUnitsKey, codeUnits}};
}

std::optional<QString> fromJsonValue(const QJsonValue& value)
{
    if (value.isNull())
        return std::nullopt;
    if (value.isString())
        return value.toString();
    QString text;
    for (const QJsonValue unit : value.toObject().value(codeUnitsKey).toArray())
        text += QChar(ushort(unit.toInt()));
    return text;
}

} // namespace

QJsonObject PropertyFile::toJson() const
{
    QJsonArray kindArray;
    for (const std::string& kind : kinds)
        kindArray.append(QString::fromStdString(kind));
    QJsonObject valueObject;
    for (const auto& value : values)
        valueObject.insert(QString::fromStdString(value.first), toJsonValue(value.second));
    QJsonObject json{{formatKey, format}, {versionKey, version}, {kindsKey, kindArray},
        {valuesKey, valueObject}};
    json.insert(checkKey, checkOf(json));
    return json;
}

PropertyFile PropertyFile::fromJson(const QJsonObject& json)
{
    if (json.value(formatKey) != QJsonValue(format)) {
        throw PropertyError(
            QCoreApplication::translate("PropertyFile", "This is not a file of properties."));
    }
    if (json.value(versionKey) != QJsonValue(version)) {
        throw PropertyError(QCoreApplication::translate(
            "PropertyFile", "The file was written by another version."));
    }
    if (json.value(checkKey) != QJsonValue(checkOf(json)))
        throw damaged();

    PropertyFile file;
    for (const QJsonValue kind : json.value(kindsKey).toArray())
        file.kinds.push_back(kind.toString().toStdString());
    const QJsonObject valueObject = json.value(valuesKey).toObject();
    for (auto value = valueObject.begin(); value != valueObject.end(); ++value)
        file.values[value.key().toStdString()] = fromJsonValue(value.value());
    // Whoever writes a check sum of his own has still to keep to the format.
    if (file.toJson() != json)
        throw damaged();
    return file;
}

} // namespace vrn::qt
