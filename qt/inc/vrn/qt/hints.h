#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/property_tree/ptree.hpp>

#include <QString>

#include <algorithm>
#include <functional>
#include <string>
#include <type_traits>
#include <typeinfo>

class QWidget;

namespace vrn::qt {

/// Describes a property in data: which kind of value it has, and which limits apply.
/// ValidatorFactory, DefaultEditorFactory and createEditorFromHints() read it.
///
/// A key is a path, with "." between its steps. Each hint has one exact type. There is no
/// conversion: a `const char*` is not a `std::string`, and an `int` is not a `double`. A hint
/// of another type makes the factories throw boost::bad_any_cast. So write hints with the
/// functions below, which name the type:
///
///     Hints span;
///     setTextHint(span, "editor", "lineedit");
///     setTextHint(span, "validator.type", "string");
///     setHint<int>(span, "validator.max_length", 40);
///
/// Unknown keys are ignored. docs/hints.md lists all keys, with their types.
using Hints = boost::property_tree::basic_ptree<std::string, boost::any, std::less<std::string>>;

/// Whether two values are equal, as vrn::any_equal does: "is_equal" and "equal_value_fn". For
/// the editor "callback" alone it says whether they differ, see DefaultEditorFactory.
using EqualHint = bool (*)(const boost::any&, const boost::any&);
/// The text that a reset button shows for the text that was there: "default_fn".
using DefaultTextHint = boost::function<QString(const QString&)>;
/// The function of a MultiEditLineEditWithResetButton: "reset_callback".
using ResetHint = std::function<void(int, boost::any&, boost::any&)>;
/// Edits the value, in a dialog for example, and tells whether it has changed: "callback".
using EditHint = std::function<bool(QWidget*, boost::any&)>;

namespace detail {

VRN_QT2_EXPORT const boost::any* findHintAtPath(const Hints& hints, const std::string& path);

/// Null if there is no such node.
inline const boost::any* findAnyHint(const Hints& hints, const std::string& path)
{
    // Most paths are one key, and to take a path apart costs much more than to look for a dot.
    if (path.empty() || std::find(path.begin(), path.end(), '.') != path.end())
        return findHintAtPath(hints, path);
    const auto child = hints.find(path);
    return child != hints.not_found() ? &child->second.data() : nullptr;
}

VRN_QT2_EXPORT void reportWrongHintType(
    const std::string& path, const std::type_info& found, const std::type_info& asked);

// A parameter of this type is excluded from the deduction of T.
template <typename T>
struct Exactly
{
    using Type = T;
};

} // namespace detail

/// Stores a hint of the type T, which the caller has to name. What is below `path` stays.
template <typename T>
void setHint(Hints& hints, const std::string& path, const typename detail::Exactly<T>::Type& value)
{
    static_assert(std::is_same_v<T, std::decay_t<T>>, "a hint is read as a plain value");
    static_assert(!std::is_convertible_v<T, const void*>,
        "no hint is a pointer to a text or another object; see setTextHint()");
    const auto node = hints.get_child_optional(path);
    (node ? *node : hints.put_child(path, Hints())).data() = value;
}

/// Hints that are a `std::string`.
inline void setTextHint(Hints& hints, const std::string& path, const std::string& text)
{
    setHint<std::string>(hints, path, text);
}

/// @{
/// Hints that are functions, each stored as the type that is read. A lambda will do.
inline void setEqualHint(Hints& hints, const std::string& path, EqualHint fn)
{
    setHint<EqualHint>(hints, path, fn);
}

inline void setDefaultTextHint(Hints& hints, const std::string& path, const DefaultTextHint& fn)
{
    setHint<DefaultTextHint>(hints, path, fn);
}

inline void setResetHint(Hints& hints, const std::string& path, const ResetHint& fn)
{
    setHint<ResetHint>(hints, path, fn);
}

inline void setEditHint(Hints& hints, const std::string& path, const EditHint& fn)
{
    setHint<EditHint>(hints, path, fn);
}
/// @}

/// The hint at `path`, or null if there is none. If it has another type than T, the path and
/// both types are reported through the assertion facility, and boost::bad_any_cast is thrown.
template <typename T>
const T* findHint(const Hints& hints, const std::string& path)
{
    const boost::any* hint = detail::findAnyHint(hints, path);
    if (!hint)
        return nullptr;
    if (const T* value = boost::any_cast<T>(hint))
        return value;
    detail::reportWrongHintType(path, hint->type(), typeid(T));
    throw boost::bad_any_cast();
}

/// The same, with a value for a hint that is missing.
template <typename T>
T readHint(const Hints& hints, const std::string& path,
    const typename detail::Exactly<T>::Type& missing = T())
{
    const T* value = findHint<T>(hints, path);
    return value ? *value : missing;
}

/// A hint that must be there. If it is missing, boost::property_tree::ptree_bad_path is
/// thrown, with "No such node" and the path.
template <typename T>
const T& requireHint(const Hints& hints, const std::string& path)
{
    if (const T* value = findHint<T>(hints, path))
        return *value;
    // Throws, because there is no such child.
    return boost::any_cast<const T&>(hints.get_child(path).data());
}

} // namespace vrn::qt
