#include <vrn/qt/default_editor_factory.h>

#include "default_validator_factory_p.h"
#include "qt_compat_p.h"

#include <vrn/assert/smart_assert.h>
#include <vrn/base/any_predicates.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>
#include <vrn/qt/multi_edit_value.h>
#include <vrn/qt/unit_validator.h>

#include <QColor>
#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <QWidget>

namespace vrn::qt {
namespace {

using EditorPtr = std::unique_ptr<Editor>;
using ValidatorPtr = std::unique_ptr<IValidator>;

template <typename Control>
EditorPtr editorOf(std::unique_ptr<Control> control)
{
    auto editor = std::make_unique<Editor>();
    editor->control = control.get();
    editor->widget = control.release();
    return editor;
}

EditorPtr makeWithResetButton(ValidatorPtr validator, const ResetHint& reset)
{
    return editorOf(
        std::make_unique<MultiEditLineEditWithResetButton>(validator.release(), 0, reset));
}

void clearBoth(int /*id*/, boost::any& shown, boost::any& reported)
{
    shown.clear();
    reported.clear();
}

EditorPtr makeLineEdit(ValidatorPtr validator, const Hints& hints)
{
    if (readHint<bool>(hints, "validator.optional"))
        return makeWithResetButton(std::move(validator), clearBoth);
    return editorOf(std::unique_ptr<MultiEditLineEdit>(
        MultiEditLineEdit::create(nullptr, QString(), validator.release(), 0, ExpandHorizontal)));
}

ValidatorPtr unitValidatorOnly(ValidatorPtr validator)
{
    return dynamic_cast<UnitValidator*>(validator.get()) ? std::move(validator) : nullptr;
}

std::unique_ptr<MultiEditEnumBox> makeEnumBox(EqualHint equal)
{
    return std::unique_ptr<MultiEditEnumBox>(MultiEditEnumBox::create(nullptr, QString(), equal));
}

EditorPtr makeNamedValueList(const DefaultValidatorFactory* validators, const Hints& hints)
{
    const auto* nvl = findHint<NamedValueList>(hints, "entries");
    const auto equal_fn = readHint<EqualHint>(hints, "is_equal");
    VRN_ASSERT(nvl && equal_fn);
    if (!nvl || !equal_fn)
        return nullptr;
    auto box = makeEnumBox(equal_fn);
    // For a combo box of the application's companion library. Ours has one setting for this
    // and for the width of its text, which setValues() changes.
    box->setSizeAdjustPolicy(compat::adjustToMinimumContentsLength);
    if (readHint<bool>(hints, "editable"))
        box->setEditable(true, createValidatorFromHints(validators, hints));
    box->setValues(*nvl, readHint<PixmapPtrList>(hints, "pixmaps"), std::deque<QColor>());
    return editorOf(std::move(box));
}

EditorPtr makeYesNo(const Hints& /*hints*/)
{
    static const NamedValueList entries = {{QObject::tr("Yes", "property_yes_no"), true},
        {QObject::tr("No", "property_yes_no"), false}};
    auto box = makeEnumBox(&any_equal<bool>);
    box->setValues(entries, PixmapPtrList(), std::deque<QColor>());
    return editorOf(std::move(box));
}

// The control of an editor that shows nothing. It is destroyed with the widget.
class HiddenValue
    : public QObject
    , public MultiEditValue
{
public:
    HiddenValue(QWidget* widget, EqualHint equal)
        : QObject(widget)
        , MultiEditValue(equal)
    {}
};

EditorPtr makeCallback(const Hints& hints)
{
    const auto callback = readHint<EditHint>(hints, "callback");
    const auto equal_fn = readHint<EqualHint>(hints, "is_equal");
    VRN_ASSERT(callback && equal_fn);
    if (!callback || !equal_fn)
        return nullptr;
    auto widget = std::make_unique<QWidget>();
    widget->setProperty("vrn_property_delegate_filter_focus_out", QVariant(true));
    const QPointer<HiddenValue> control = new HiddenValue(widget.get(), equal_fn);
    QTimer::singleShot(0, widget.get(), [widget = widget.get(), control, callback] {
        if (!control)
            return;
        boost::any value = control->getCurrentValue();
        widget->deleteLater();
        if (callback(widget, value) && control)
            control->readValue(value);
    });
    return std::make_unique<Editor>(Editor{widget.release(), control});
}

} // namespace

DefaultEditorFactory::DefaultEditorFactory(std::shared_ptr<DefaultValidatorFactory> validators)
    : m_validators(std::move(validators))
{
    const auto validator = [validators = m_validators](const Hints& hints) {
        return detail::uniqueValidatorFromHints(validators.get(), hints);
    };
    add("lineedit", [=](const Hints& hints) { return makeLineEdit(validator(hints), hints); });
    add("unit", [=](const Hints& hints) {
        return makeLineEdit(unitValidatorOnly(validator(hints)), hints);
    });
    add("named_value_list", [validators = m_validators](const Hints& hints) {
        return makeNamedValueList(validators.get(), hints);
    });
    add("yes_no", makeYesNo);
    add("multi_edit_line_edit_with_reset_button", [=](const Hints& hints) {
        auto described = validator(hints);
        return makeWithResetButton(
            std::move(described), requireHint<ResetHint>(hints, "reset_callback"));
    });
    add("callback", makeCallback);
}

} // namespace vrn::qt
