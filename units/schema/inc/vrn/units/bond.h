#pragma once

#ifdef VRN_USE_SYSTEM_BOND

#include <bond/core/bond.h>
#include <bond/core/exception.h>

#else

#include <vrn/units/vrn_units_export.h>

#include <exception>
#include <string>
#include <utility>

/// The few names of Bond that the unit library's types use, for builds without
/// Bond. Configure with VRN_USE_SYSTEM_BOND to take Bond's own.
namespace bond {

/// Root of Bond's exceptions.
class VRN_UNITS_EXPORT Exception : public std::exception
{
public:
    explicit Exception(std::string message)
        : m_message(std::move(message))
    {}

    const char* what() const noexcept override { return m_message.c_str(); }

private:
    std::string m_message;
};

/// Thrown when the use of a record contradicts its schema.
class VRN_UNITS_EXPORT CoreException : public Exception
{
public:
    using Exception::Exception;
};

/// A field that may hold nothing. Reading it then is an error.
template <typename T>
class maybe
{
public:
    maybe() = default;
    explicit maybe(T value)
        : m_value(std::move(value))
        , m_is_nothing(false)
    {}

    maybe& operator=(T value)
    {
        m_value = std::move(value);
        m_is_nothing = false;
        return *this;
    }

    bool is_nothing() const noexcept { return m_is_nothing; }

    void set_nothing()
    {
        m_value = T();
        m_is_nothing = true;
    }

    /// Makes the field hold a value and gives access to it. At first it is a default value.
    T& set_value()
    {
        m_is_nothing = false;
        return m_value;
    }
    void set_value(T value) { *this = std::move(value); }

    /// Throws CoreException if there is no value.
    const T& value() const
    {
        require_value();
        return m_value;
    }
    T& value()
    {
        require_value();
        return m_value;
    }

    friend bool operator==(const maybe& left, const maybe& right)
    {
        return left.m_is_nothing == right.m_is_nothing && left.m_value == right.m_value;
    }
    friend bool operator!=(const maybe& left, const maybe& right) { return !(left == right); }

private:
    void require_value() const
    {
        if (m_is_nothing)
            throw CoreException("Field value is 'nothing'");
    }

    // With the members in this order, an assignment that throws leaves the field as it was.
    T m_value = T(); ///< Blank while the field is nothing.
    bool m_is_nothing = true;
};

} // namespace bond

#endif
