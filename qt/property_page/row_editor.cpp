#include "row_editor_p.h"

namespace vrn::qt::detail {

RowEditor::RowEditor(QObject* parent)
    : QObject(parent)
{}

RowEditor::~RowEditor() = default;

} // namespace vrn::qt::detail
