#include <vrn/qt/validator_factory.h>

namespace vrn::qt {

template class ValidatorFactory<ValidatorKind, Hints>;

} // namespace vrn::qt
