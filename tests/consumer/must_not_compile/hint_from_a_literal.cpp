// A literal is not the std::string that is read.
#include <vrn/qt/hints.h>

int main()
{
    vrn::qt::Hints hints;
#if MUST_NOT_COMPILE
    vrn::qt::setHint<const char*>(hints, "editor", "lineedit");
#else
    vrn::qt::setHint<std::string>(hints, "editor", "lineedit");
#endif
}
