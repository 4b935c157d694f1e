#include <vrn/qt/editor_meta_data.h>

#include <vrn/q/input_context.h>
#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/pixmap.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/unit_validator.h>

#include <QColor>
#include <QLayout>
#include <QPointer>
#include <QToolButton>

#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <utility>

namespace vrn::qt {
namespace {

constexpr int usualLength = 256;

std::map<std::string, EditorCreator>& registeredEditors()
{
    static std::map<std::string, EditorCreator> editors;
    return editors;
}

template <typename Control>
EditorMetaData metaDataOf(Control* built)
{
    // The cast fails once the bases of the control are being destroyed. A QPointer is
    // not yet null then, and its dying parts may still call us.
    const auto whole = [widget = QPointer<QWidget>(built)] {
        return qobject_cast<Control*>(widget.data());
    };
    EditorMetaData editor;
    editor.widget = built;
    editor.setValue = [whole](const boost::any& value) {
        if (auto* control = whole())
            control->setValue(value);
    };
    editor.forceVaries = [whole] {
        if (auto* control = whole())
            control->forceVaries();
    };
    editor.getValue = [whole](boost::any& value) {
        const auto* control = whole();
        if (!control || control->dataVaries())
            return false;
        control->getCurrentValue().swap(value);
        return true;
    };
    return editor;
}

QString plainReset(const QString& /*text*/)
{
    return QString();
}

EditorMetaData makeLineEditWithOptionalValue(QWidget* parent, std::unique_ptr<IValidator> validator,
    const DefaultTextHint& reset, bool optional)
{
    auto* edit = MultiEditLineEdit::create(
        parent, QString(), validator.release(), 1, ExpandHorizontal);
    if (optional) {
        if (auto* button = edit->addButton(
                reset, Pixmap::createOrDefault(L"control_repeat_blue.png")))
            button->setToolTip(QObject::tr("Reset to default.", "makeLineEditWithOptionalValue"));
    }
    return metaDataOf(edit);
}

template <typename Validator>
std::unique_ptr<IValidator> optionalOrNot(std::unique_ptr<Validator> validator, bool optional)
{
    validator->setEmptyValueAllowed(optional);
    return validator;
}

EditorMetaData makeLineEdit(QWidget* parent, const Hints& hints, bool optional)
{
    using UnitId = UnitValidator::UnitId;
    const auto type = readHint<std::string>(hints, "validator.type");
    std::unique_ptr<IValidator> validator;
    DefaultTextHint reset = plainReset;
    if (type.empty()) {
        validator = std::make_unique<StringEditValidator>(usualLength);
    } else if (type == "unit") {
        const auto unit = readHint<UnitId>(hints, "validator.unit_id", static_cast<UnitId>(1));
        validator = optionalOrNot(
            std::make_unique<UnitValidator>(units::get_active_input_context(), unit), optional);
    } else if (type == "string") {
        auto text = std::make_unique<StringEditValidator>(
            readHint<int>(hints, "validator.max_length", usualLength));
        text->setStorageType(StringEditValidator::StorageTypeUtf8String);
        validator = std::move(text);
    } else if (type == "double") {
        reset = readHint<DefaultTextHint>(hints, "default_fn");
        validator = optionalOrNot(std::make_unique<DoubleEditValidator>(), optional);
    } else if (type == "int") {
        using Limits = std::numeric_limits<int>;
        validator = optionalOrNot(
            std::make_unique<IntegerValidator<int>>(Limits::min(), Limits::max(), true), optional);
    } else if (type == "distance") {
        using Limits = std::numeric_limits<double>;
        validator = optionalOrNot(
            std::make_unique<DistanceEditValidator>(1001, Limits::lowest(), Limits::max(), true),
            optional);
    } else {
        return {};
    }
    return makeLineEditWithOptionalValue(parent, std::move(validator), reset, optional);
}

EditorMetaData makeEnumBox(QWidget* parent, const Hints& hints)
{
    const auto equal = requireHint<EqualHint>(hints, "equal_value_fn");
    const auto& values = requireHint<NamedValueList>(hints, "values");
    auto* box = MultiEditEnumBox::create(parent, QString(), equal);
    if (!box)
        return {};
    box->setValues(values, PixmapPtrList(), std::deque<QColor>());
    box->layout()->setContentsMargins(0, 0, 0, 0);
    return metaDataOf(box);
}

} // namespace

EditorMetaData createEditorFromHints(QWidget* parent, const Hints& hints)
{
    const auto name = readHint<std::string>(hints, "editor");
    if (name.empty())
        return {};
    const auto registered = registeredEditors().find(name);
    if (registered != registeredEditors().end()) {
        // It may be unregistered while it runs.
        const EditorCreator creator = registered->second;
        return creator(parent, hints);
    }
    // Read for unknown names too: a hint of a wrong type is not ignored.
    const bool optional = readHint<bool>(hints, "optional");
    if (name == "lineedit")
        return makeLineEdit(parent, hints, optional);
    if (name == "enumbox")
        return makeEnumBox(parent, hints);
    return {};
}

void registerEditor(const std::string& name, EditorCreator creator)
{
    registeredEditors()[name] = std::move(creator);
}

void unregisterEditor(const std::string& name)
{
    registeredEditors().erase(name);
}

} // namespace vrn::qt
