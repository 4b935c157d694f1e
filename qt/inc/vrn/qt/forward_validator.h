#pragma once

#include <vrn/qt/i_validator.h>

namespace vrn::qt {

/// Passes every operation on to another validator, which can be exchanged while
/// a control holds this one.
///
/// Without a target it refuses every text and formats every value as an empty
/// string. It uses the target's postfix, not its own.
struct VRN_QT2_EXPORT ForwardValidator : public IValidator
{
    explicit ForwardValidator(IValidator::pointer target);
    ~ForwardValidator() override;

    IValidator* getValidator() const;
    /// A target that leads back to this validator, directly or through other
    /// forwarders and chains, is reported and not taken: no call would ever return.
    void setValidator(IValidator::pointer target);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;
    QString reformatForDisplay(const boost::any& value, const std::bitset<32>& flags) override;

private:
    // Follows forwarders to the validator that reads the text in the end.
    friend struct EntryValidator;

    bool isReachedFrom(const IValidator* validator) const;

    IValidator::pointer m_target;
};

} // namespace vrn::qt
