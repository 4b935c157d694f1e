#pragma once

#include <memory>

namespace vrn::qt::graphics::detail {

/// How deep the signals of an object are nested: a slot may do what fires them again.
struct Nesting
{
    int depth = 0;
    bool isRunaway = false;
};

/// Stands on the stack while a signal runs. The slots may destroy the object, so the count is
/// shared with it.
class Emission
{
public:
    /// A slot that makes its own signal fire without end would overflow the stack. When it
    /// has come this far, it is reported and nothing more is fired.
    static constexpr int maxDepth = 100;

    explicit Emission(std::shared_ptr<Nesting> nesting);
    ~Emission();
    Emission(const Emission&) = delete;
    Emission& operator=(const Emission&) = delete;

    bool mayFire() const { return !m_nesting->isRunaway; }

private:
    std::shared_ptr<Nesting> m_nesting;
};

} // namespace vrn::qt::graphics::detail
