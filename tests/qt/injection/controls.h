#pragma once

#include <vector>

namespace vrn::test::injection {

struct Scene;

/// A control of the library, with an application's functions wherever it takes one.
struct Control
{
    const char* name;
    /// Makes it on the page of the scene, and fills in what the scene knows of it.
    void (*make)(Scene& scene);
    /// Not of the library: what does not survive there is Qt's own.
    bool isReference = false;
};

const std::vector<Control>& controls();

} // namespace vrn::test::injection
