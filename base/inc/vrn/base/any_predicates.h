#pragma once

#include <boost/any.hpp>

/// Comparisons of values in a boost::any, as the controls take them: plain
/// functions, one for each type of value.
///
///     MultiEditEnumBox::create(form, tr("Material"), &vrn::any_equal<int>);
namespace vrn {

/// Two empty values are equal, and so are two values of type T that are equal by
/// `==`. All others differ, even two values of the same other type.
template <typename T>
bool any_equal(const boost::any& a, const boost::any& b)
{
    if (a.empty() || b.empty())
        return a.empty() && b.empty();
    const T* left = boost::any_cast<T>(&a);
    const T* right = boost::any_cast<T>(&b);
    return left && right && *left == *right;
}

/// The opposite of any_equal.
template <typename T>
bool any_differ(const boost::any& a, const boost::any& b)
{
    return !any_equal<T>(a, b);
}

/// A strict weak order: empty values first, then values of type T by `<`, then all
/// values of other types, which are equivalent to each other.
template <typename T>
bool any_less(const boost::any& a, const boost::any& b)
{
    const T* left = boost::any_cast<T>(&a);
    const T* right = boost::any_cast<T>(&b);
    if (left && right)
        return *left < *right;
    const auto rank = [](const boost::any& value, const T* typed) {
        return value.empty() ? 0 : typed ? 1 : 2;
    };
    return rank(a, left) < rank(b, right);
}

} // namespace vrn
