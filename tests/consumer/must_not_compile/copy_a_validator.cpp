#include <vrn/qt/double_edit_validator.h>

int main()
{
    vrn::qt::DoubleEditValidator validator;
#if MUST_NOT_COMPILE
    vrn::qt::DoubleEditValidator copy = validator;
#endif
}
