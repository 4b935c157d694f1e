// The library instantiates the template for three types only.
#include <vrn/qt/integer_validator.h>

int main()
{
#if MUST_NOT_COMPILE
    vrn::qt::IntegerValidator<float> validator(0, 1, true);
#else
    vrn::qt::IntegerValidator<unsigned short> validator(0, 1, true);
#endif
}
