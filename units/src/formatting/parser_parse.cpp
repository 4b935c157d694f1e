#include "formatting/parser_p.h"

#include "formatting/quantity_reader_p.h"

#include <vrn/assert/smart_assert.h>
#include <vrn/units/varnelik_unit_provider.h>

#include <typeinfo>

namespace vrn::units {
inline namespace v1 {

boost::optional<IConverter::quantity> Parser::parse(
    const std::wstring& text, const std::locale& locale) const
{
    VRN_ASSERT(m_unit_provider != nullptr);
    if (m_unit_provider == nullptr)
        return boost::none;
    const IUnitProvider& provider = *m_unit_provider;
    // The catalogue never changes, so its spellings are gathered once. A provider
    // of another class may answer differently at each call.
    if (typeid(provider) == typeid(VarnelikUnitProvider)) {
        static const detail::SymbolMap catalogue{VarnelikUnitProvider()};
        return detail::read_quantity(text, locale, catalogue);
    }
    return detail::read_quantity(text, locale, detail::SymbolMap(provider));
}

} // namespace v1
} // namespace vrn::units
