#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <memory>

namespace vrn::test {

/// Something under test beside a plain model of it.
class Subject
{
public:
    Subject() = default;
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    virtual ~Subject() = default;

    /// Does action number `action` to both; `argument` is any number, for the
    /// action to choose with. Returns what differs afterwards, or an empty string.
    virtual QString perform(int action, unsigned argument) = 0;
};

/// Numbers below a limit each, drawn from one argument.
class Choice
{
public:
    explicit Choice(unsigned argument)
        : m_rest(argument)
    {}

    int below(int limit)
    {
        m_rest = m_rest * 1664525U + 1013904223U;
        return int((m_rest >> 16U) % unsigned(limit));
    }
    template <typename T, std::size_t size>
    T of(const T (&values)[size])
    {
        return values[below(int(size))];
    }

private:
    unsigned m_rest;
};

/// Performs random actions, in sequences that each start with a new subject. At
/// the first difference the test fails with the shortest sequence found that
/// shows one: steps that can be left out are left out.
///
/// There are `steps` steps, or as many as VRN_RANDOM_STEPS says.
void runRandomSequences(const QStringList& actions,
    const std::function<std::unique_ptr<Subject>()>& makeSubject, int steps = 100000);

/// The same, with the failure returned instead: empty if there is none.
QString findDifference(const QStringList& actions,
    const std::function<std::unique_ptr<Subject>()>& makeSubject, unsigned seed, int steps);

} // namespace vrn::test
