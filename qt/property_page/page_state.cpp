#include "page_state_p.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

namespace vrn::qt::detail {

namespace {

QByteArray signedState(const QJsonObject& sections)
{
    const QByteArray text = QJsonDocument(sections).toJson(QJsonDocument::Compact);
    const QByteArray check = QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex();
    const QJsonObject state{{QStringLiteral("format"), QStringLiteral("vrn.property-page")},
        {QStringLiteral("version"), 1}, {QStringLiteral("open"), sections},
        {QStringLiteral("check"), QString::fromLatin1(check)}};
    return QJsonDocument(state).toJson(QJsonDocument::Compact);
}

} // namespace

QByteArray toState(const OpenSections& sections)
{
    QJsonObject json;
    for (const auto& section : sections)
        json.insert(QString::fromStdString(section.first), section.second);
    return signedState(json);
}

std::optional<OpenSections> fromState(const QByteArray& state)
{
    const QJsonObject json =
        QJsonDocument::fromJson(state).object().value(QStringLiteral("open")).toObject();
    if (signedState(json) != state)
        return std::nullopt;
    OpenSections sections;
    for (auto section = json.begin(); section != json.end(); ++section) {
        if (!section.value().isBool())
            return std::nullopt;
        sections[section.key().toStdString()] = section.value().toBool();
    }
    return sections;
}

} // namespace vrn::qt::detail
