#pragma once

#include <vrn/qt/named_value_list.h>
#include <vrn/qt/validator_factory.h>
#include <vrn/units/i_converter.h>

#include <boost/any.hpp>
#include <boost/core/demangle.hpp>
#include <boost/function.hpp>
#include <boost/property_tree/exceptions.hpp>

#include "support/any_to_string.h"
#include "support/test_object.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vrn::test {

/// Hints by their paths, to stand in a table.
using HintList = std::vector<std::pair<std::string, boost::any>>;

/// Stores the value as it is. An empty one makes a node without a value.
inline void put(vrn::qt::Hints& hints, const std::string& path, const boost::any& value)
{
    const auto node = hints.get_child_optional(path);
    (node ? *node : hints.put_child(path, vrn::qt::Hints())).data() = value;
}

inline vrn::qt::Hints hintsOf(const HintList& list)
{
    vrn::qt::Hints hints;
    for (const auto& [path, value] : list)
        put(hints, path, value);
    return hints;
}

/// @{
/// Values of hints, with the types that are read.
template <typename T>
boost::any kind(const std::string& subName = std::string())
{
    return vrn::qt::kindOf<T>(subName);
}

inline boost::any equalHint(vrn::qt::EqualHint fn)
{
    return fn;
}

inline vrn::qt::NamedValueList steels()
{
    return {{"S235", 235}, {"S355", 355}};
}
/// @}

/// What `act` returns, or else the exception that it throws and its text.
template <typename Act>
QString outcome(const Act& act)
{
    const auto thrown = [](const char* type, const std::exception& exception) {
        return QStringLiteral("%1: %2").arg(type, exception.what());
    };
    try {
        return act();
    } catch (const boost::bad_any_cast& exception) {
        return thrown("boost::bad_any_cast", exception);
    } catch (const boost::bad_function_call& exception) {
        return thrown("boost::bad_function_call", exception);
    } catch (const boost::property_tree::ptree_bad_path& exception) {
        return thrown("ptree_bad_path", exception);
    } catch (const std::bad_function_call&) {
        return QStringLiteral("std::bad_function_call");
    } catch (const std::out_of_range& exception) {
        return thrown("std::out_of_range", exception);
    } catch (const std::logic_error& exception) {
        return thrown("std::logic_error", exception);
    }
}

inline const QString wrongType = QStringLiteral(
    "boost::bad_any_cast: boost::bad_any_cast: failed conversion using boost::any_cast");
inline const QString unknownKey = QStringLiteral(
    "std::out_of_range: invalid unordered_map<K, T> key");
inline const QString duplicateKey = QStringLiteral("std::logic_error: duplicate key");

/// A value and the text in which it is shown, as in `int 5 as "5"`.
inline QString shownAs(const boost::any& value, const QString& text)
{
    const auto* quantity = boost::any_cast<units::IConverter::quantity>(&value);
    return QStringLiteral("%1 as \"%2\"")
        .arg(quantity ? QStringLiteral("%1 of unit %2")
                            .arg(quantity->value)
                            .arg(static_cast<int>(quantity->unit_id))
                      : describe(value),
            text);
}

/// A test of what is read from hints.
class HintsTest : public TestObject
{
protected:
    /// Announces the report that comes before wrongType.
    void expectWrongHint()
    {
        expectAssert("found == asked", {"path", "found", "asked"}, "a hint has one exact type");
    }

    /// What the last report says under the name.
    std::string reported(const std::string& name)
    {
        for (const auto& [key, value] : asserts().last().values) {
            if (key == name)
                return value;
        }
        return std::string();
    }

    /// What the last report says: the path, the type found and the type asked for.
    QStringList wrongHint()
    {
        QStringList all;
        for (const char* name : {"path", "found", "asked"})
            all << QString::fromStdString(reported(name));
        return all;
    }

    /// What it has to say of `found`, where the type of `right` is asked for.
    static QStringList wrongHint(
        const std::string& path, const boost::any& found, const boost::any& right)
    {
        QStringList all(QString::fromStdString(path));
        for (const boost::any* hint : {&found, &right})
            all << QString::fromStdString(boost::core::demangle(hint->type().name()));
        return all;
    }
};

} // namespace vrn::test

Q_DECLARE_METATYPE(vrn::test::HintList)
Q_DECLARE_METATYPE(std::string)
