#include <vrn/qt/cell_data.h>

namespace {

// Loading the library is enough to find the type by its name.
[[maybe_unused]] const int boostAny = qRegisterMetaType<boost::any>("boost::any");

} // namespace
