#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <vector>

class QObject;
class QWidget;

namespace vrn::qt {

/// Evens out `fields`, which stand in one column: their edits and lists get one height and
/// one left edge, and captions that are part of them one width. They are kept so when a font
/// or a text changes, until `owner`, or all of the fields, have gone.
///
/// A PropertyGridLayouter does this in its form. Call it for a form of your own, when its
/// fields have their parts:
///
///     auto* rows = new QVBoxLayout(form);
///     auto* span = SimpleLineEdit::create(
///         form, tr("&Span"), new DoubleEditValidator, 0, ExpandHorizontal);
///     auto* steel = SimpleEnumBox::create(form, tr("Grade of &steel"), &vrn::any_equal<int>);
///     rows->addWidget(span);
///     rows->addWidget(steel);
///     alignFields(form, {span, steel});
///
/// By itself a field has margins that depend on its class. Here it has none.
VRN_QT2_EXPORT void alignFields(QObject* owner, const std::vector<QWidget*>& fields);

} // namespace vrn::qt
