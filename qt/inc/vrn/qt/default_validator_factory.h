#pragma once

#include <vrn/qt/validator_factory.h>

namespace vrn::qt {

/// Knows the kinds of validators that the library has:
///
/// - `std::string`: StringEditValidator with the value in UTF-8. "max_length".
/// - `std::string`, "color": StringEditValidator for "#" and six decimal digits; the value is
///   a `std::wstring`.
/// - `int`, `unsigned int`, `unsigned short`: IntegerValidator. "optional", "minimum",
///   "maximum"; the limits have the type of the kind.
/// - `double`: DoubleEditValidator. "precision", "optional", "minimum", "maximum".
/// - NamedValueList: NamedValueListValidator. "entries" and "is_equal", both required.
/// - `bool`: NamedValueListValidator over "Yes" and "No", as they are translated at the first
///   use in the process.
/// - ChainedValidator: tries validators of other kinds in turn. All read the same hints.
///   "chained_validators".
///
/// docs/hints.md gives the type, the default and the effect of each hint.
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
/// A chain that names itself as a link is reported, and that link is left out. Chains that
/// come back to themselves in another way, such as with a copy of the hints in a creator of
/// the application, end after a hundred.
struct VRN_QT2_EXPORT DefaultValidatorFactory : public ValidatorFactory<ValidatorKind, Hints>
{
    DefaultValidatorFactory();
};

} // namespace vrn::qt
