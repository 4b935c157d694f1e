#pragma once

#include <vrn/qt/i_validator.h>

#include <deque>
#include <memory>

namespace vrn::qt {

/// Tries several validators in order; the first that accepts a text answers for
/// it, and the first that formats a value to a non-empty text formats it.
///
/// The chain calls only `validate` and `reformat` of its members. It does not use
/// a member's clamping at the end of editing or a member's postfix; it has a
/// postfix of its own.
///
/// All members write to the same value. It is not restored between them, so after
/// a refusal it holds what the last member left there. An empty chain refuses
/// every text.
struct VRN_QT2_EXPORT ChainedValidator : public IValidator
{
    /// A null member is reported through the assertion facility and left out.
    explicit ChainedValidator(std::deque<std::unique_ptr<IValidator>> members);
    ~ChainedValidator() override;

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;

private:
    // Looks for itself among the members before it forwards to a chain.
    friend struct ForwardValidator;
    // Wraps the members for numbers.
    friend struct EntryValidator;

    std::deque<std::unique_ptr<IValidator>> m_members;
};

} // namespace vrn::qt
