#include "nesting_p.h"

#include <vrn/assert/smart_assert.h>

#include <utility>

namespace vrn::qt::graphics::detail {

Emission::Emission(std::shared_ptr<Nesting> nesting)
    : m_nesting(std::move(nesting))
{
    const int depth = ++m_nesting->depth;
    if (m_nesting->isRunaway)
        return;
    VRN_ASSERT_MESSAGE(depth <= maxDepth, "A slot makes its own signal fire without end.");
    m_nesting->isRunaway = depth > maxDepth;
}

Emission::~Emission()
{
    if (--m_nesting->depth == 0)
        m_nesting->isRunaway = false;
}

} // namespace vrn::qt::graphics::detail
