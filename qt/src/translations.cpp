#include <vrn/companion_qt/translator.h>

namespace {

// Loading the library is enough to have its texts translated.
[[maybe_unused]] const bool announced = VRN_QT_InitTranslator("vrn_qt2_dll");

} // namespace
