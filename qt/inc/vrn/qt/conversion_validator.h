#pragma once

#include <vrn/qt/forward_validator.h>

namespace vrn::qt {

/// Edits a value in a form other than the one in which it is kept, such as an angle
/// that is kept in radians and typed in degrees.
///
///     const auto times = [](double factor) {
///         return [factor](boost::any& value) {
///             if (auto* number = boost::any_cast<double>(&value))
///                 *number *= factor;
///         };
///     };
///     auto angle = boost::make_shared<ConversionValidator>(
///         boost::make_shared<DoubleEditValidator>(-180.0, 180.0));
///     angle->setConversionFn(times(180.0 / M_PI), times(M_PI / 180.0));
///
/// The functions change the value in place. The first works on a copy before the
/// target formats it, so the caller's value is never changed. The second works on
/// what the target has parsed, and runs only if the target accepted the text.
/// Either function may be empty. The type in the `boost::any` is whatever the
/// second function leaves there.
struct VRN_QT2_EXPORT ConversionValidator : public ForwardValidator
{
    explicit ConversionValidator(IValidator::pointer target);
    ~ConversionValidator() override;

    void setConversionFn(std::function<void(boost::any&)> toDisplayFn,
        std::function<void(boost::any&)> fromDisplayFn);

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override;
    QString reformatForDisplay(const boost::any& value, const std::bitset<32>& flags) override;

private:
    boost::any toDisplay(const boost::any& value) const;

    std::function<void(boost::any&)> m_toDisplayFn;
    std::function<void(boost::any&)> m_fromDisplayFn;
};

} // namespace vrn::qt
