#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QString>
#include <QVariant>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>

namespace vrn::qt::detail {

/// Whether two values are the same. Floating-point numbers are compared by their bits: zero
/// differs from minus zero, and not-a-number is the same as itself.
template <typename T>
bool isSame(const T& a, const T& b)
{
    if constexpr (std::is_floating_point_v<T>) {
        static_assert(sizeof(T) <= sizeof(double), "a long double has bits without a meaning");
        std::uint64_t bits[2] = {};
        std::memcpy(&bits[0], &a, sizeof(T));
        std::memcpy(&bits[1], &b, sizeof(T));
        return bits[0] == bits[1];
    } else {
        return a == b;
    }
}

/// Puts numbers in an order. Minus zero stands below zero, and what is not a number above all
/// others. Other values have no order.
template <typename T>
bool isBelow(const T& a, const T& b)
{
    if constexpr (std::is_floating_point_v<T>) {
        if (a < b || b < a)
            return a < b;
        if (std::isnan(a) || std::isnan(b))
            return !std::isnan(a);
        return std::signbit(a) && !std::signbit(b);
    } else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
        return a < b;
    } else {
        return false;
    }
}

/// @{
/// A text that reads back as the same bits. Nothing else is read.
VRN_QT2_EXPORT QString exactText(double value);
VRN_QT2_EXPORT std::optional<double> exactNumber(const QString& text);
/// @}

/// @{
/// Texts of objects as texts of fields, and back. Bytes that are not UTF-8 come back as they
/// were: each becomes half a surrogate pair, which no valid text contains.
VRN_QT2_EXPORT QString textFrom(const std::string& utf8);
VRN_QT2_EXPORT QString textFrom(const std::wstring& wide);
/// For any other half of a pair, utf8From() throws PropertyError, because it would not come back.
VRN_QT2_EXPORT std::string utf8From(const QString& text);
VRN_QT2_EXPORT std::wstring wideFrom(const QString& text);
/// @}

template <typename T, bool isEnum = std::is_enum_v<T>>
struct IntegerOf
{
    using Type = T;
};
template <typename T>
struct IntegerOf<T, true>
{
    using Type = std::underlying_type_t<T>;
};

/// Values of the type T in files and in a QVariant. Only numbers, enumerators, flags and
/// QStrings can be kept there.
template <typename T>
struct ValueTraits
{
    static constexpr bool isNumber = std::is_floating_point_v<T>;
    static constexpr bool isInteger = std::is_integral_v<T> || std::is_enum_v<T>;
    static constexpr bool isText = std::is_same_v<T, QString>;
    static constexpr bool isKept = isNumber || isInteger || isText;

    /// Reads back as the same value.
    static QString toText(const T& value)
    {
        if constexpr (isNumber)
            return exactText(double(value));
        else if constexpr (std::is_same_v<T, bool>)
            return value ? QStringLiteral("true") : QStringLiteral("false");
        else if constexpr (isInteger && std::is_unsigned_v<typename IntegerOf<T>::Type>)
            return QString::number(static_cast<qulonglong>(value));
        else if constexpr (isInteger)
            return QString::number(static_cast<qlonglong>(value));
        else if constexpr (isText)
            return value;
        else
            return QString();
    }

    /// Nothing for a text that toText() does not write.
    static std::optional<T> fromText(const QString& text)
    {
        std::optional<T> value;
        if constexpr (isNumber) {
            if (const std::optional<double> number = exactNumber(text))
                value = T(*number);
        } else if constexpr (std::is_same_v<T, bool>) {
            value = text == QLatin1String("true");
        } else if constexpr (isInteger && std::is_unsigned_v<typename IntegerOf<T>::Type>) {
            value = static_cast<T>(text.toULongLong());
        } else if constexpr (isInteger) {
            value = static_cast<T>(text.toLongLong());
        } else if constexpr (isText) {
            value = text;
        }
        if (value && toText(*value) != text)
            value.reset();
        return value;
    }

    static QVariant toVariant(const T& value)
    {
        if constexpr (isNumber)
            return QVariant(double(value));
        else if constexpr (std::is_same_v<T, bool> || isText)
            return QVariant(value);
        else if constexpr (isInteger && std::is_unsigned_v<typename IntegerOf<T>::Type>)
            return QVariant(static_cast<qulonglong>(value));
        else if constexpr (isInteger)
            return QVariant(static_cast<qlonglong>(value));
        else
            return QVariant();
    }

    /// Nothing if the variant cannot be converted to T without loss.
    static std::optional<T> fromVariant(const QVariant& variant)
    {
        bool isRead = false;
        if constexpr (isNumber) {
            const double number = variant.toDouble(&isRead);
            if (isRead)
                return T(number);
        } else if constexpr (std::is_same_v<T, bool>) {
            const qlonglong number = variant.toLongLong(&isRead);
            if (isRead && (number == 0 || number == 1))
                return number == 1;
        } else if constexpr (isInteger && std::is_unsigned_v<typename IntegerOf<T>::Type>) {
            const qulonglong number = variant.toULongLong(&isRead);
            if (isRead && static_cast<qulonglong>(static_cast<T>(number)) == number)
                return static_cast<T>(number);
        } else if constexpr (isInteger) {
            const qlonglong number = variant.toLongLong(&isRead);
            if (isRead && static_cast<qlonglong>(static_cast<T>(number)) == number)
                return static_cast<T>(number);
        } else if constexpr (isText) {
            return variant.toString();
        }
        return std::nullopt;
    }
};

} // namespace vrn::qt::detail
