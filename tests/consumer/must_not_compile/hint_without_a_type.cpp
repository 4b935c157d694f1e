// The type is named and not deduced: 5 would be an int where a double is read.
#include <vrn/qt/hints.h>

int main()
{
    vrn::qt::Hints hints;
#if MUST_NOT_COMPILE
    vrn::qt::setHint(hints, "validator.minimum", 5);
#else
    vrn::qt::setHint<double>(hints, "validator.minimum", 5);
#endif
}
