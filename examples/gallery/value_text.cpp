#include "value_text.h"

#include <vrn/units/i_converter.h>

#include <QLocale>

#include <string>
#include <utility>

namespace gallery {
namespace {

QString numberText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

// The name and the text of a type that the controls of the gallery produce.
std::pair<QString, QString> describe(const boost::any& value)
{
    if (value.empty())
        return {QStringLiteral("(no value)"), QString()};
    if (const auto* truth = boost::any_cast<bool>(&value))
        return {QStringLiteral("bool"), *truth ? QStringLiteral("true") : QStringLiteral("false")};
    if (const auto* number = boost::any_cast<double>(&value))
        return {QStringLiteral("double"), numberText(*number)};
    if (const auto* quantity = boost::any_cast<vrn::units::IConverter::quantity>(&value)) {
        return {QStringLiteral("IConverter::quantity"),
            QStringLiteral("{%1, %2}").arg(quantity->unit_id).arg(numberText(quantity->value))};
    }
    if (const auto* number = boost::any_cast<int>(&value))
        return {QStringLiteral("int"), QString::number(*number)};
    if (const auto* number = boost::any_cast<unsigned int>(&value))
        return {QStringLiteral("unsigned int"), QString::number(*number)};
    if (const auto* number = boost::any_cast<unsigned short>(&value))
        return {QStringLiteral("unsigned short"), QString::number(*number)};
    if (const auto* text = boost::any_cast<std::wstring>(&value))
        return {QStringLiteral("std::wstring"),
            QStringLiteral("L\"%1\"").arg(QString::fromStdWString(*text))};
    if (const auto* text = boost::any_cast<std::string>(&value))
        return {QStringLiteral("std::string"),
            QStringLiteral("\"%1\"").arg(QString::fromStdString(*text))};
    return {QString::fromLatin1(value.type().name()), QStringLiteral("?")};
}

} // namespace

QString valueText(const boost::any& value)
{
    return describe(value).second;
}

QString typeText(const boost::any& value)
{
    return describe(value).first;
}

} // namespace gallery
