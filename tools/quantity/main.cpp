#include "command_line.h"

int main(int argc, char** argv)
{
    return vrn::quantity_tool::run(argc, argv);
}
