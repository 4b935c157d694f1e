#pragma once

#include <vrn/qt/validator_factory.h>

namespace vrn::qt {

/// Knows the kinds of validators that the library has:
///
/// | Kind | Validator | Hints, all optional but the last two |
/// |---|---|---|
/// | `kindOf<std::string>()` | StringEditValidator, the value in UTF-8 | "max_length", `int` |
/// | `kindOf<std::string>("color")` | StringEditValidator for "#" and six decimal digits; the value
/// is a `std::wstring` | | | `kindOf<int>()`, `kindOf<unsigned int>()`, `kindOf<unsigned short>()`
/// | IntegerValidator | "optional", `bool`; "minimum" and "maximum", of the kind's own type | |
/// `kindOf<double>()` | DoubleEditValidator | "precision", `int`; "optional", `bool`; "minimum" and
/// "maximum", `double` | | `kindOf<bool>()` | NamedValueListValidator over "Yes" and "No", as they
/// are translated at the first use in the process | | | `kindOf<ChainedValidator>()` |
/// ChainedValidator of other kinds, which all read the same hints | "chained_validators",
/// `std::vector<ValidatorKind>` | | `kindOf<NamedValueList>()` | NamedValueListValidator |
/// "entries", NamedValueList; "is_equal", EqualHint |
///
/// If "entries" or "is_equal" is missing, that is reported, and no validator is made. A
/// minimum above the maximum is not reported.
///
///     DefaultValidatorFactory factory;
///     Hints hints;
///     setHint<double>(hints, "minimum", 0.0);
///     const std::unique_ptr<IValidator> length = factory.create(kindOf<double>(), hints);
///
/// A chain looks its links up in the factory that the constructor made, also when it is
/// created by a copy. So kinds that are added to a copy cannot be links; and a factory that
/// was moved to finds no links, because the first one is empty. Make the factory where it
/// stays, by std::make_shared for example. The first factory need not outlive its copies.
/// A chain that names itself as a link is reported, and that link is left out.
struct VRN_QT2_EXPORT DefaultValidatorFactory : public ValidatorFactory<ValidatorKind, Hints>
{
    DefaultValidatorFactory();
};

} // namespace vrn::qt
