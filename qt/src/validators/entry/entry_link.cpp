#include "validators/entry/entry_link_p.h"

#include <vrn/q/input_context.h>
#include <vrn/q/unit_index.h>
#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/unit_validator.h>

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <locale>
#include <optional>
#include <string_view>
#include <utility>

namespace vrn::qt::detail {
namespace {

using vrn::units::Context;
using vrn::units::Entry;
using vrn::units::EntryReader;
using UnitId = vrn::units::UnitId::UnitId;

constexpr double lowest = std::numeric_limits<double>::lowest();
constexpr double highest = std::numeric_limits<double>::max();

// Qt 5 has a character for a sign, and Qt 6 a text.
[[maybe_unused]] wchar_t signOf(QChar sign)
{
    return static_cast<wchar_t>(sign.unicode());
}

[[maybe_unused]] wchar_t signOf(const QString& sign)
{
    return sign.isEmpty() ? L'\0' : signOf(sign.at(0));
}

// Most texts have neither a point nor a comma, and to ask for the signs takes time.
vrn::units::NumberSigns userSignsFor(std::wstring_view text)
{
    const bool mayHaveSigns = std::any_of(text.begin(), text.end(), [](wchar_t character) {
        return character == L'.' || character == L',' || character > 0x7F;
    });
    if (!mayHaveSigns)
        return {};
    const QLocale user;
    return {signOf(user.decimalPoint()), signOf(user.groupSeparator())};
}

/// A field without units.
template <typename Validator>
class NumberLink : public EntryLink
{
public:
    NumberLink(const IValidator::pointer& owner, const Validator& validator)
        : EntryLink(owner)
        , m_validator(validator)
    {}

    bool isPlain(const WideText& text) override { return m_reader.is_plain(text.view()); }

    Number numberOf(const Entry& entry) const override
    {
        return {entry.quantity.value, toQString(entry.text)};
    }

protected:
    const EntryReader& reader() override { return m_reader; }
    double minimum() const override { return m_validator.getMinimum(); }
    double maximum() const override { return m_validator.getMaximum(); }
    boost::any valueOf(double bound) const override { return bound; }

private:
    const Validator& m_validator;
    EntryReader m_reader;
};

template <typename T>
class WholeNumberLink : public NumberLink<IntegerValidator<T>>
{
public:
    using NumberLink<IntegerValidator<T>>::NumberLink;

    // The reader knows no type: what is plain may have decimals or be too large.
    bool isPlain(const WideText& /*text*/) override { return false; }

    EntryLink::Number numberOf(const Entry& entry) const override
    {
        const double number = entry.quantity.value;
        if (number != std::trunc(number))
            return {number, QString()};
        // An IntegerValidator would keep the low bits of a number that T cannot hold.
        constexpr double least = std::numeric_limits<T>::lowest();
        constexpr double most = std::numeric_limits<T>::max();
        return {number, QString::number(static_cast<T>(std::clamp(number, least, most)))};
    }

protected:
    boost::any valueOf(double bound) const override { return static_cast<T>(bound); }
};

class QuantityLink : public EntryLink
{
public:
    QuantityLink(const IValidator::pointer& owner, const UnitValidator& validator)
        : EntryLink(owner)
        , m_validator(validator)
    {}

    bool isPlain(const WideText& text) override { return reader().is_plain(text.view()); }

    // Between minus one foot and zero, a field writes the sign of the inches, as in "0' -6 ''".
    // Otherwise a hyphen after feet joins.
    Entry read(const WideText& text) override
    {
        if (text.view().substr(0, 4) == L"0' -") {
            const QString signFirst = QStringLiteral("-0' ") + text.text().mid(4);
            Entry entry = EntryLink::read(WideText(signFirst));
            if (entry.state == vrn::units::EntryState::Complete && isWritten(entry, text.text()))
                return entry;
        }
        return EntryLink::read(text);
    }

    Number numberOf(const Entry& entry) const override
    {
        return {entry.quantity.value, toQString(entry.text)};
    }

protected:
    const EntryReader& reader() override
    {
        const UnitId kind = m_validator.get_unit_id();
        if (!m_reader || m_kind != kind) {
            m_reader.emplace(m_validator.getContext(), kind);
            m_kind = kind;
        }
        return *m_reader;
    }

    double minimum() const override { return m_validator.getMinimum(); }
    double maximum() const override { return m_validator.getMaximum(); }
    boost::any valueOf(double bound) const override
    {
        return vrn::units::IConverter::quantity{m_validator.get_unit_id(), bound};
    }

private:
    bool isWritten(const Entry& entry, const QString& text) const
    {
        const auto written = m_validator.getContext().format(
            entry.quantity, std::locale::classic());
        return toQString(written) == text;
    }

    const UnitValidator& m_validator;
    std::optional<EntryReader> m_reader;
    UnitId m_kind{};
};

class DistanceLink : public EntryLink
{
public:
    DistanceLink(const IValidator::pointer& owner, const DistanceEditValidator& validator)
        : EntryLink(owner)
        , m_validator(validator)
    {}

    // What a DistanceEditValidator is made for.
    bool isPlain(const WideText& text) override
    {
        static const QRegularExpression plain(
            QStringLiteral("\\A(-?[0-9]+(\\.[0-9]+)?|[0-9]+(\\.[0-9]+)? *(m|dm|cm|mm))\\z"));
        return plain.match(text.text()).hasMatch();
    }

    // No kind of quantity has the decimetre.
    Entry read(const WideText& text) override
    {
        static const QRegularExpression decimetres(QStringLiteral("([0-9])\\s*dm\\s*\\z"));
        QString inMetres = text.text();
        inMetres.replace(decimetres, QStringLiteral("\\1e-1 m"));
        return EntryLink::read(WideText(inMetres));
    }

    // Without a unit. A DistanceEditValidator knows few units, and no powers of ten before one.
    Number numberOf(const Entry& entry) const override
    {
        // The quotient of two roundings has no more digits than these.
        constexpr int digits = std::numeric_limits<double>::digits10;
        const double metres = context().converter().to_base(entry.quantity);
        const double shown = metres
            / vrn_get_unitd(m_validator.getUnit(), vrn::q::DisplayToInternal);
        return {metres, QString::number(shown, 'g', digits)};
    }

protected:
    // The application may change to another unit system.
    const EntryReader& reader() override
    {
        const auto kind = static_cast<UnitId>(m_validator.getUnit());
        const UnitId shown = context().format_provider().get_unit(kind);
        if (!m_reader || m_shown != shown) {
            m_reader.emplace(context(), kind);
            m_shown = shown;
        }
        return *m_reader;
    }

    double minimum() const override { return m_validator.getMinimum(); }
    double maximum() const override { return m_validator.getMaximum(); }
    boost::any valueOf(double bound) const override { return bound; }

private:
    // As with all unit indices, a unit is shown as itself.
    const Context& context() const
    {
        static const Context defaults;
        const bool isUnit = m_validator.getUnit() < vrn::units::UnitId::GEO_DISTANCE;
        return isUnit ? defaults : vrn::units::get_active_input_context();
    }

    const DistanceEditValidator& m_validator;
    std::optional<EntryReader> m_reader;
    UnitId m_shown{};
};

/// A kind of link, and the validators that it is for.
template <typename Link, typename Validator>
struct LinkType
{
    static bool isFor(const IValidator* validator)
    {
        return dynamic_cast<const Validator*>(validator) != nullptr;
    }
    static std::unique_ptr<EntryLink> create(const IValidator::pointer& validator)
    {
        return std::make_unique<Link>(validator, dynamic_cast<const Validator&>(*validator));
    }
};

struct AnyLinkType
{
    bool (*isFor)(const IValidator* validator);
    std::unique_ptr<EntryLink> (*create)(const IValidator::pointer& validator);
};

template <typename Link, typename Validator>
constexpr AnyLinkType anyLinkType = {
    &LinkType<Link, Validator>::isFor, &LinkType<Link, Validator>::create};

constexpr std::array linkTypes = {
    anyLinkType<QuantityLink, UnitValidator>,
    anyLinkType<NumberLink<DoubleEditValidator>, DoubleEditValidator>,
    anyLinkType<DistanceLink, DistanceEditValidator>,
    anyLinkType<WholeNumberLink<int>, IntegerValidator<int>>,
    anyLinkType<WholeNumberLink<unsigned int>, IntegerValidator<unsigned int>>,
    anyLinkType<WholeNumberLink<unsigned short>, IntegerValidator<unsigned short>>,
};

const AnyLinkType* linkTypeFor(const IValidator* validator)
{
    const auto* const found = std::find_if(linkTypes.begin(), linkTypes.end(),
        [validator](const AnyLinkType& each) { return each.isFor(validator); });
    return found != linkTypes.end() ? found : nullptr;
}

} // namespace

EntryLink::EntryLink(const IValidator::pointer& validator)
    : m_owner(validator)
    , m_validator(validator.get())
{}

EntryLink::~EntryLink() = default;

bool EntryLink::isForNumbers(const IValidator* validator)
{
    return linkTypeFor(validator) != nullptr;
}

std::unique_ptr<EntryLink> EntryLink::create(const IValidator::pointer& validator)
{
    const AnyLinkType* const type = linkTypeFor(validator.get());
    return type ? type->create(validator) : nullptr;
}

// Another validator may stand at the same address as a former one, but has another owner.
bool EntryLink::isOf(const IValidator::pointer& validator) const
{
    return m_validator == validator.get() && !m_owner.owner_before(validator)
        && !validator.owner_before(m_owner);
}

Entry EntryLink::read(const WideText& text)
{
    return reader().read(text.view(), userSignsFor(text.view()));
}

QStringList EntryLink::completions(const QString& text)
{
    QStringList texts;
    const WideText wide(text);
    const auto signs = userSignsFor(wide.view());
    for (const std::wstring& each : reader().completions(wide.view(), signs))
        texts.append(toQString(each));
    return texts;
}

QString EntryLink::boundText(double bound) const
{
    return bound == lowest || bound == highest ? QString()
                                               : m_validator->reformat(valueOf(bound), {});
}

} // namespace vrn::qt::detail
