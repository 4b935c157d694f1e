#pragma once

#include <vrn/qt/creator_map.h>
#include <vrn/qt/default_validator_factory.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

class QWidget;

namespace vrn::qt {

class MultiEditControlBase;

/// A widget that edits one property, and its control. The widget has no parent; the caller
/// gives it one or destroys it. The control lives as long as the widget: it is the
/// same object, or belongs to it. Deleting an Editor deletes neither.
struct Editor
{
    QWidget* widget;
    MultiEditControlBase* control;
};

/// Makes editors from hints, by name:
///
/// - "lineedit": a MultiEditLineEdit. If "validator.optional" is true, it is a
///   MultiEditLineEditWithResetButton that clears the field.
/// - "unit": the same for a UnitValidator. If the hints describe another validator, the
///   editor has none.
/// - "multi_edit_line_edit_with_reset_button": a MultiEditLineEditWithResetButton with the
///   id 0. "reset_callback" is required.
/// - "named_value_list": a MultiEditEnumBox. "entries" and "is_equal" are required;
///   "editable" and "pixmaps" are not.
/// - "yes_no": a MultiEditEnumBox with "Yes" and "No", as they are translated at the first use
///   in the process.
/// - "callback": an empty widget, and a function of the application that edits the value.
///   "callback" and "is_equal" are required.
///
/// docs/hints.md gives the type, the default and the effect of each hint.
///
/// The hints of the validator are those below "validator": "kind", a ValidatorKind, names it,
/// and the validator factory reads the others. Without a factory or a kind there is none.
///
///     DefaultEditorFactory factory(std::make_shared<DefaultValidatorFactory>());
///     Hints hints;
///     setHint<ValidatorKind>(hints, "validator.kind", kindOf<double>());
///     setHint<double>(hints, "validator.minimum", 0.0);
///     const std::unique_ptr<Editor> editor = factory.create("lineedit", hints);
///     editor->widget->setParent(form);
///
/// A missing "reset_callback" throws boost::property_tree::ptree_bad_path. Other required
/// hints that are missing are reported, and null is returned. A hint of a wrong type throws
/// boost::bad_any_cast, and an unknown kind std::out_of_range.
///
/// The "callback" editor calls its function once, after control has returned to the event
/// loop. The caller fills the control before that. The function gets the widget and the value,
/// and may run a dialog. It stores what the user has entered. The widget is destroyed after
/// that. If the widget is gone before, the function is not called; it may be destroyed in the
/// function too.
///
/// If the function returns true, the control reads the value as the function left it. The
/// control is a MultiEditValue, which has read a value before and takes no second one: it
/// varies if its predicate says so. That predicate is "is_equal", and a MultiEditValue takes
/// true for "they differ". So give it vrn::any_differ.
///
/// Copies share the validator factory, and so does a factory that was moved to: it makes the
/// same editors, with the same validators. A factory that was moved from knows no names and
/// has no validator factory. None of them needs the first object.
struct DefaultEditorFactory
{
    using Creator = std::function<std::unique_ptr<Editor>(const Hints&)>;

    /// `validators` may be null.
    VRN_QT2_EXPORT explicit DefaultEditorFactory(
        std::shared_ptr<DefaultValidatorFactory> validators);

    /// The factory that makes the validators, for kinds of the application to be added.
    const std::shared_ptr<DefaultValidatorFactory>& validators() const { return m_validators; }

    /// If the name is there already, throws std::logic_error with "duplicate key", and the
    /// first creator stays.
    void add(const std::string& name, Creator creator) { m_editors.add(name, std::move(creator)); }

    /// What the creator returns, which may be null. An unknown name throws std::out_of_range
    /// with "invalid unordered_map<K, T> key", and an empty creator std::bad_function_call.
    std::unique_ptr<Editor> create(const std::string& name, const Hints& hints) const
    {
        return m_editors.create(name, hints);
    }

    bool exists(const std::string& name) const { return m_editors.exists(name); }

private:
    detail::CreatorMap<std::string, std::unique_ptr<Editor>(const Hints&)> m_editors;
    std::shared_ptr<DefaultValidatorFactory> m_validators;
};

} // namespace vrn::qt
