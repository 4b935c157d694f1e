#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <vector>

class QObject;
class QWidget;

namespace vrn::qt {

/// Aligns `fields`, which form one column: their edits and lists get one height and one left
/// edge, and captions that are part of them one width. The alignment follows changes of fonts
/// and texts until `owner` is destroyed. A field that is hidden by itself does not count, and
/// one whose height the application has limited keeps it.
///
/// A PropertyGridLayouter does this in its form. Call it for a form of your own, once its
/// fields are fully built:
///
///     auto* rows = new QVBoxLayout(form);
///     auto* span = SimpleLineEdit::create(
///         form, tr("&Span"), new DoubleEditValidator, 0, ExpandHorizontal);
///     auto* steel = SimpleEnumBox::create(form, tr("Grade of &steel"), &vrn::any_equal<int>);
///     rows->addWidget(span);
///     rows->addWidget(steel);
///     alignFields(form, {span, steel});
///
/// A field that is not aligned has margins that depend on its class. The alignment removes them.
VRN_QT2_EXPORT void alignFields(QObject* owner, const std::vector<QWidget*>& fields);

} // namespace vrn::qt
