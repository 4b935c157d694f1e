#pragma once

#include <vrn/qt/i_validator.h>
#include <vrn/qt/named_value_list.h>

#include <boost/optional.hpp>

namespace vrn::qt {

/// Accepts the display names of a fixed list and nothing else, and turns a name
/// into its value and back. The value is a copy of the entry's value, whatever its
/// type.
///
///     auto grades = boost::make_shared<NamedValueListValidator>(
///         NamedValueList{{"S235", 235}, {"S355", 355}});
///     grades->set_equal_to(&vrn::any_equal<int>);
///     grades->enable_empty_value(tr("(none)"));
///
/// Names are compared exactly; of two equal names or values the first counts. A
/// refusal leaves the value untouched.
struct VRN_QT2_EXPORT NamedValueListValidator : public IValidator
{
    using EqualTo = bool (*)(const boost::any&, const boost::any&);

    explicit NamedValueListValidator(const NamedValueList& list);
    explicit NamedValueListValidator(NamedValueList&& list);
    ~NamedValueListValidator() override;

    /// Call this before the first `reformat`, which otherwise reports an assertion
    /// and finds no entry.
    void set_equal_to(EqualTo equalTo);

    /// Offers `name` for the absence of a value, after the entries of the list.
    void enable_empty_value(const QString& name);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;

private:
    NamedValueList m_list;
    EqualTo m_equalTo = nullptr;
    boost::optional<QString> m_emptyName;
};

} // namespace vrn::qt
