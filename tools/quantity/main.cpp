#include "command_line.h"

#include <vrn/assert/smart_assert.h>

int main(int argc, char** argv)
{
    // A refusal is one line on standard error. Failed assertions must not add to it.
    vrn::smartassert::set_assert_handler([](const vrn::smartassert::AssertReport&) {});
    return vrn::quantity_tool::run(argc, argv);
}
