#include "support/any_to_string.h"

#include <QString>

#include <cmath>
#include <string>

namespace vrn::test {
namespace {

template <typename T>
const T* as(const boost::any& value)
{
    return boost::any_cast<T>(&value);
}

template <typename T>
bool sameAs(const boost::any& actual, const boost::any& expected)
{
    const T* left = as<T>(actual);
    const T* right = as<T>(expected);
    return left && right && *left == *right;
}

bool sameDouble(const boost::any& actual, const boost::any& expected)
{
    const double* left = as<double>(actual);
    const double* right = as<double>(expected);
    return left && right && (*left == *right || (std::isnan(*left) && std::isnan(*right)));
}

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

QString describe(const boost::any& value)
{
    if (value.empty())
        return QStringLiteral("empty");
    if (const bool* b = as<bool>(value))
        return QStringLiteral("bool ") + (*b ? QStringLiteral("true") : QStringLiteral("false"));
    if (const double* d = as<double>(value))
        return QStringLiteral("double ") + QString::number(*d, 'g', 17);
    if (const int* i = as<int>(value))
        return QStringLiteral("int ") + QString::number(*i);
    if (const unsigned int* u = as<unsigned int>(value))
        return QStringLiteral("unsigned int ") + QString::number(*u);
    if (const unsigned short* s = as<unsigned short>(value))
        return QStringLiteral("unsigned short ") + QString::number(*s);
    if (const std::wstring* w = as<std::wstring>(value))
        return QStringLiteral("std::wstring ") + quoted(QString::fromStdWString(*w));
    if (const std::string* s = as<std::string>(value))
        return QStringLiteral("std::string ") + quoted(QString::fromStdString(*s));
    if (const QString* s = as<QString>(value))
        return QStringLiteral("QString ") + quoted(*s);
    return QString::fromLatin1(value.type().name());
}

bool sameValue(const boost::any& actual, const boost::any& expected)
{
    return (actual.empty() && expected.empty()) || sameDouble(actual, expected)
        || sameAs<bool>(actual, expected) || sameAs<int>(actual, expected)
        || sameAs<unsigned int>(actual, expected) || sameAs<unsigned short>(actual, expected)
        || sameAs<std::wstring>(actual, expected) || sameAs<std::string>(actual, expected)
        || sameAs<QString>(actual, expected);
}

} // namespace vrn::test

namespace boost {

bool operator==(const any& left, const any& right)
{
    return vrn::test::sameValue(left, right);
}

char* toString(const any& value)
{
    return qstrdup(qPrintable(vrn::test::describe(value)));
}

} // namespace boost
