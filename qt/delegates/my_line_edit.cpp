#include "my_line_edit_p.h"

namespace vrn::qt::detail {

MyLineEdit::~MyLineEdit() = default;

void MyLineEdit::emitEditingFinished()
{
    Q_EMIT editingFinished();
}

} // namespace vrn::qt::detail
