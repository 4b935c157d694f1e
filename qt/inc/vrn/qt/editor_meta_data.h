#pragma once

#include <vrn/qt/hints.h>

#include <boost/any.hpp>
#include <boost/function.hpp>

#include <string>

class QWidget;

namespace vrn::qt {

/// An editor for one property, and three functions that stand for its control. A null widget
/// means that nothing was built; the functions are then empty.
///
/// The functions of the library's own editors do nothing once the widget has been destroyed.
struct EditorMetaData
{
    QWidget* widget = nullptr;
    boost::function<void(const boost::any&)> setValue;
    boost::function<void()> forceVaries;
    /// Returns false and leaves the argument unchanged if the selection varies or the widget
    /// is gone. Otherwise returns true. An empty value may then stand for a text that was
    /// refused or for one that was cleared; the two cannot be told apart here.
    boost::function<bool(boost::any&)> getValue;
};

using EditorCreator = boost::function<EditorMetaData(QWidget*, const Hints&)>;

/// Builds the editor that `hints` describe, as a child of `parent`.
///
///     Hints hints;
///     setTextHint(hints, "editor", "lineedit");
///     setTextHint(hints, "validator.type", "double");
///     const EditorMetaData width = createEditorFromHints(form, hints);
///     width.setValue(1.25);
///
/// The hint "editor" names one that was registered, or else "lineedit" or "enumbox". Without
/// that hint, under an unknown name and for a "lineedit" with an unknown "validator.type",
/// nothing is built. "optional", a `bool`, gives a "lineedit" a reset button.
///
/// "validator.type" decides what a "lineedit" edits:
///
/// - nothing: a `std::wstring` of 256 characters at most.
/// - "string": a `std::string` in UTF-8. "validator.max_length".
/// - "int": an `int`.
/// - "double": a `double`. "default_fn" gives the text that the reset button shows; without
///   it the button does nothing, which is reported.
/// - "distance": a `double`, in metres.
/// - "unit": a `vrn::units::IConverter::quantity`, read and shown by the input context that
///   is active now. "validator.unit_id".
///
/// An "enumbox" needs "equal_value_fn" and "values". If one is missing,
/// boost::property_tree::ptree_bad_path is thrown. A hint of a wrong type throws
/// boost::bad_any_cast.
///
/// docs/hints.md gives the type, the default and the effect of each hint. Below
/// "validator", this function reads other keys than DefaultEditorFactory does.
VRN_QT2_EXPORT EditorMetaData createEditorFromHints(QWidget* parent, const Hints& hints);

/// Makes `creator` build the editors called `name`, instead of one registered before and
/// instead of the library's own. An empty function makes createEditorFromHints() throw
/// boost::bad_function_call. The registration is for the whole process.
VRN_QT2_EXPORT void registerEditor(const std::string& name, EditorCreator creator);

/// Undoes registerEditor(). Editors that were built stay. A creator may do this while it
/// runs.
VRN_QT2_EXPORT void unregisterEditor(const std::string& name);

} // namespace vrn::qt
