// Only create() makes a control.
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/simple_line_edit.h>

namespace {

using namespace vrn::qt;

[[maybe_unused]] SimpleLineEdit* makeField(boost::shared_ptr<IValidator> validator)
{
#if MUST_NOT_COMPILE
    return new SimpleLineEdit(nullptr, QString(), validator, {}, 0, ExpandHorizontal);
#else
    return SimpleLineEdit::create(nullptr, QString(), validator, {}, 0, ExpandHorizontal);
#endif
}

} // namespace

int main() {}
