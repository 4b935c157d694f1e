#include <vrn/qt/hints.h>

#include <vrn/assert/smart_assert.h>

#include <boost/core/demangle.hpp>

namespace vrn::qt::detail {

const boost::any* findHintAtPath(const Hints& hints, const std::string& path)
{
    const auto node = hints.get_child_optional(path);
    return node ? &node->data() : nullptr;
}

void reportWrongHintType(
    const std::string& path, const std::type_info& found, const std::type_info& asked)
{
    VRN_ASSERT_MESSAGE(found == asked, "a hint has one exact type")
    ("path", path)("found", boost::core::demangle(found.name()))(
        "asked", boost::core::demangle(asked.name()));
}

} // namespace vrn::qt::detail
