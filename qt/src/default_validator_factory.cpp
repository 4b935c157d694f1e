#include "default_validator_factory_p.h"

#include <vrn/assert/smart_assert.h>
#include <vrn/base/any_predicates.h>
#include <vrn/qt/chained_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/named_value_list_validator.h>
#include <vrn/qt/string_edit_validator.h>

#include <QObject>

#include <deque>
#include <limits>
#include <utility>
#include <vector>

namespace vrn::qt {
namespace {

using ValidatorPtr = std::unique_ptr<IValidator>;

// Not literals: a string made for each look-up costs more than the look-up.
namespace key {
const std::string chainedValidators = "chained_validators";
const std::string entries = "entries";
const std::string isEqual = "is_equal";
const std::string maxLength = "max_length";
const std::string maximum = "maximum";
const std::string minimum = "minimum";
const std::string optional = "optional";
const std::string precision = "precision";
} // namespace key

ValidatorPtr makeText(const Hints& hints)
{
    auto validator = std::make_unique<StringEditValidator>(
        readHint<int>(hints, key::maxLength, std::numeric_limits<int>::max()));
    validator->setStorageType(StringEditValidator::StorageTypeUtf8String);
    return validator;
}

// Accepts decimal digits only, so most hexadecimal colours are refused. StringEditValidator cuts
// a text that is too long; a colour with a digit too many is refused instead.
struct ColorValidator : public StringEditValidator
{
    static constexpr int length = 7;

    ColorValidator()
        : StringEditValidator(length)
    {
        setAllowedRegex(L"#\\d\\d\\d\\d\\d\\d");
    }

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        return text.size() == length && StringEditValidator::validate(text, value, flags);
    }
};

template <typename T>
ValidatorPtr makeInteger(const Hints& hints)
{
    using Limits = std::numeric_limits<T>;
    auto validator = std::make_unique<IntegerValidator<T>>(Limits::min(), Limits::max(), true);
    if (readHint<bool>(hints, key::optional))
        validator->setEmptyValueAllowed(true);
    if (const T* minimum = findHint<T>(hints, key::minimum))
        validator->setMinimum(*minimum);
    if (const T* maximum = findHint<T>(hints, key::maximum))
        validator->setMaximum(*maximum);
    return validator;
}

ValidatorPtr makeDouble(const Hints& hints)
{
    auto validator = std::make_unique<DoubleEditValidator>();
    if (const int* precision = findHint<int>(hints, key::precision))
        validator->setPrecision(*precision);
    if (readHint<bool>(hints, key::optional))
        validator->setEmptyValueAllowed(true);
    if (const double* minimum = findHint<double>(hints, key::minimum))
        validator->setMinimum(*minimum);
    if (const double* maximum = findHint<double>(hints, key::maximum))
        validator->setMaximum(*maximum);
    return validator;
}

ValidatorPtr makeNamedValues(const Hints& hints)
{
    const auto* nvl = findHint<NamedValueList>(hints, key::entries);
    const auto equal_fn = readHint<EqualHint>(hints, key::isEqual);
    VRN_ASSERT(nvl && equal_fn);
    if (!nvl || !equal_fn)
        return nullptr;
    auto validator = std::make_unique<NamedValueListValidator>(*nvl);
    validator->set_equal_to(equal_fn);
    return validator;
}

ValidatorPtr makeYesNoValues(const Hints& /*hints*/)
{
    static const NamedValueList entries = {{QObject::tr("Yes", "property_yes_no"), true},
        {QObject::tr("No", "property_yes_no"), false}};
    auto validator = std::make_unique<NamedValueListValidator>(entries);
    validator->set_equal_to(&any_equal<bool>);
    return validator;
}

// The chains that are being made on this thread, innermost first. Through a creator of the
// application a chain may come back to itself, and if that creator copies the hints or makes a
// factory, only the number of chains shows it. The number is that of all chains since the
// outermost one began, because a depth alone would not bound what makes two chains each time.
class ChainInProgress
{
public:
    ChainInProgress(const void* creators, const Hints& node)
        : m_creators(creators)
        , m_node(&node)
        , m_outer(std::exchange(innermost, this))
    {
        ++begun;
    }
    ~ChainInProgress()
    {
        innermost = m_outer;
        if (!innermost)
            begun = 0;
    }
    ChainInProgress(const ChainInProgress&) = delete;
    ChainInProgress& operator=(const ChainInProgress&) = delete;

    static bool isEndless(const void* creators, const Hints& node)
    {
        constexpr int moreThanAnyTreeHas = 100;
        const ChainInProgress* chain = innermost;
        while (chain && (chain->m_creators != creators || chain->m_node != &node))
            chain = chain->m_outer;
        return chain || begun == moreThanAnyTreeHas;
    }

private:
    static thread_local const ChainInProgress* innermost;
    static thread_local int begun;

    const void* m_creators;
    const Hints* m_node;
    const ChainInProgress* m_outer;
};

thread_local const ChainInProgress* ChainInProgress::innermost = nullptr;
thread_local int ChainInProgress::begun = 0;

template <typename Creators>
ValidatorPtr makeChain(const Creators& creators, const Hints& hints)
{
    const bool namesItself = ChainInProgress::isEndless(&creators, hints);
    VRN_ASSERT_MESSAGE(!namesItself, "a chain is a link of itself");
    if (namesItself)
        return nullptr;
    const ChainInProgress chain(&creators, hints);
    std::deque<ValidatorPtr> links;
    if (const auto* kinds = findHint<std::vector<ValidatorKind>>(hints, key::chainedValidators)) {
        for (const ValidatorKind& kind : *kinds)
            links.push_back(creators.create(kind, hints));
    }
    return std::make_unique<ChainedValidator>(std::move(links));
}

} // namespace

DefaultValidatorFactory::DefaultValidatorFactory()
{
    add<std::string>("", makeText);
    add<int>("", makeInteger<int>);
    add<unsigned int>("", makeInteger<unsigned int>);
    add<unsigned short>("", makeInteger<unsigned short>);
    add<double>("", makeDouble);
    add<std::string>("color", [](const Hints&) { return std::make_unique<ColorValidator>(); });
    add<NamedValueList>("", makeNamedValues);
    add<bool>("", makeYesNoValues);
    // Weak: the creators own this function, and a strong pointer would be a cycle. The caller
    // keeps them alive.
    add<ChainedValidator>("", [first = std::weak_ptr<Creators>(m_creators)](const Hints& hints) {
        const auto creators = first.lock();
        VRN_ASSERT(creators);
        return creators ? makeChain(*creators, hints) : nullptr;
    });
}

namespace detail {

ValidatorPtr uniqueValidatorFromHints(
    const ValidatorFactory<ValidatorKind, Hints>* factory, const Hints& hints)
{
    if (!factory)
        return nullptr;
    const auto* kind = findHint<ValidatorKind>(hints, "validator.kind");
    return kind ? factory->create(*kind, hints.get_child("validator")) : nullptr;
}

} // namespace detail

boost::shared_ptr<IValidator> createValidatorFromHints(
    const ValidatorFactory<ValidatorKind, Hints>* factory, const Hints& hints)
{
    return boost::shared_ptr<IValidator>(detail::uniqueValidatorFromHints(factory, hints));
}

} // namespace vrn::qt
