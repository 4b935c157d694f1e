#include "command_line.h"

#include <vrn/assert/smart_assert.h>

int main(int argc, char** argv)
{
    // Standard error has one line for each refusal, and the tool writes it.
    vrn::smartassert::set_assert_handler([](const vrn::smartassert::AssertReport&) {});
    return vrn::quantity_tool::run(argc, argv);
}
