#include <vrn/qt/value_type.h>

namespace vrn::qt::detail {

ValueSummary::~ValueSummary() = default;
ValueType::~ValueType() = default;

} // namespace vrn::qt::detail
