#include "page_fixture.h"

#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/multi_edit_check_box.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/varies_string.h>

#include "property_page/row_editor_p.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QPointer>
#include <QSpinBox>
#include <QToolButton>

#include <stdexcept>

Q_DECLARE_METATYPE(vrn::qt::PropertyState::Kind)

using namespace vrn::qt;
using namespace vrn::test;

namespace {

/// A spin box of the application for integers. It has no signal that the page knows.
EditorMetaData spinBox(QWidget* parent, const Hints& hints)
{
    auto* spin = new QSpinBox(parent);
    spin->setRange(-1000, 1000);
    spin->setSpecialValueText("none");
    spin->setProperty("title", QString::fromStdString(requireHint<std::string>(hints, "title")));
    spin->setProperty("key", QString::fromStdString(requireHint<std::string>(hints, "key")));
    spin->setProperty("optional", requireHint<bool>(hints, "optional"));
    spin->setProperty(
        "isInteger", requireHint<Field>(hints, "field").shape() == Field::Shape::Integer);
    EditorMetaData editor;
    editor.widget = spin;
    editor.setValue = [spin](const boost::any& value) {
        spin->setValue(value.empty() ? -1000 : boost::any_cast<int>(value));
        spin->setProperty("varies", false);
    };
    editor.forceVaries = [spin] { spin->setProperty("varies", true); };
    editor.getValue = [spin](boost::any& value) {
        if (spin->property("varies").toBool())
            return false;
        value = spin->value() == -1000 ? boost::any() : boost::any(spin->value());
        return true;
    };
    return editor;
}

/// Cannot say that objects differ.
EditorMetaData simpleSpinBox(QWidget* parent, const Hints& hints)
{
    EditorMetaData editor = spinBox(parent, hints);
    editor.forceVaries.clear();
    return editor;
}

EditorMetaData spinBoxNeverEmpty(QWidget* parent, const Hints& hints)
{
    EditorMetaData editor = simpleSpinBox(parent, hints);
    auto* spin = qobject_cast<QSpinBox*>(editor.widget);
    editor.setValue = [spin](
                          const boost::any& value) { spin->setValue(boost::any_cast<int>(value)); };
    return editor;
}

/// A check box of the library, which signals from code, too.
EditorMetaData checkBox(QWidget* parent, const Hints& hints)
{
    auto* box = MultiEditCheckBox::create(
        QString::fromStdString(readHint<std::string>(hints, "title")), parent);
    EditorMetaData editor;
    editor.widget = box;
    const QPointer<MultiEditCheckBox> guarded = box;
    editor.setValue = [guarded](const boost::any& value) {
        if (guarded)
            guarded->setValue(value);
    };
    editor.forceVaries = [guarded] {
        if (guarded)
            guarded->forceVaries();
    };
    editor.getValue = [guarded](boost::any& value) {
        if (!guarded || guarded->dataVaries())
            return false;
        value = guarded->getCurrentValue();
        return true;
    };
    return editor;
}

/// Registers an editor for as long as it lives.
struct Registration
{
    Registration(const char* theName, EditorCreator creator)
        : name(theName)
    {
        registerEditor(name, std::move(creator));
    }
    ~Registration() { unregisterEditor(name); }

    const std::string name;
};

} // namespace

class TestRegisteredRowEditor : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void winsOverThatOfThePage();
    void isHandedHints();
    void writesWhenItIsLeft();
    void writesWhenItIsLeftInAnInactiveWindow();
    void writesWhenItSignals();
    void writesWithoutASignalBeforeAnotherSelection();
    void endsByEnterAndEscape();
    void writesNothingUntouched();
    void clearsOnlyWhatIsOptional();
    void keepsWhatIsRefused();
    void showsNothingWithoutACommonValue_data();
    void showsNothingWithoutACommonValue();
    void isOneEditWhileItHasTheFocus();
    void isDisabledWhenReadOnly();
    void givesWayIfItCannotBeMade();
    void mayBeDestroyedByTheApplication();
};

void TestRegisteredRowEditor::winsOverThatOfThePage()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    auto* editor = qobject_cast<QSpinBox*>(f.page->editor("bolts"));
    QVERIFY(editor);
    QCOMPARE(editor->value(), 1);
    QCOMPARE(f.text("bolts"), QString("1"));
    QVERIFY(!qobject_cast<QSpinBox*>(f.page->editor("length")));
}

void TestRegisteredRowEditor::isHandedHints()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    QCOMPARE(f.page->editor("group")->property("title").toString(), QString("Group"));
    QCOMPARE(f.page->editor("group")->property("key").toString(), QString("group"));
    QCOMPARE(f.page->editor("group")->property("optional").toBool(), true);
    QCOMPARE(f.page->editor("bolts")->property("optional").toBool(), false);
    QCOMPARE(f.page->editor("bolts")->property("isInteger").toBool(), true);
}

void TestRegisteredRowEditor::writesWhenItIsLeft()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    auto* editor = qobject_cast<QSpinBox*>(f.page->editor("bolts"));
    editor->setFocus();
    editor->setValue(7);
    QCOMPARE(f.model->writes, QStringList());
    f.button->setFocus();
    QCOMPARE(f.model->writes, QStringList("bolts of 0 1 2"));
    QCOMPARE(f.model->beams[1].bolts, 7);
    QCOMPARE(f.stack->count(), 1);
}

void TestRegisteredRowEditor::writesWhenItIsLeftInAnInactiveWindow()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    auto* editor = qobject_cast<QSpinBox*>(f.page->editor("bolts"));
    editor->setFocus();
    editor->setValue(7);
    f.inAnotherWindow([] {});
    QCOMPARE(f.model->writes, QStringList());
    f.inAnotherWindow([&] { f.button->setFocus(); });
    QCOMPARE(f.model->writes, QStringList("bolts of 0 1 2"));
}

void TestRegisteredRowEditor::writesWhenItSignals()
{
    const Registration box("property.flag", &checkBox);
    const PageFixture f;
    auto* editor = qobject_cast<MultiEditCheckBox*>(f.page->editor("active"));
    QVERIFY(editor);
    QVERIFY(editor->isChecked());
    QCOMPARE(f.model->writes, QStringList());
    editor->setChecked(false);
    QCOMPARE(f.model->writes, QStringList("active of 0 1 2"));
    QCOMPARE(f.model->beams[2].isActive, false);
}

void TestRegisteredRowEditor::writesWithoutASignalBeforeAnotherSelection()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    auto* editor = qobject_cast<QSpinBox*>(f.page->editor("bolts"));
    editor->setFocus();
    editor->setValue(7);
    QVERIFY(f.page->isPending());
    f.model->announce();
    f.page->flush();
    QCOMPARE(editor->value(), 7);
    f.page->setSelection({1});
    QCOMPARE(f.model->writes, QStringList("bolts of 0 1 2"));
    QVERIFY(!f.page->isPending());
}

void TestRegisteredRowEditor::endsByEnterAndEscape()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    auto* editor = qobject_cast<QSpinBox*>(f.page->editor("bolts"));
    editor->setFocus();
    editor->setValue(7);
    f.press(Qt::Key_Escape);
    QCOMPARE(editor->value(), 1);
    QCOMPARE(f.model->writes, QStringList());
    editor->setValue(7);
    f.press(Qt::Key_Return);
    QCOMPARE(f.model->writes, QStringList("bolts of 0 1 2"));
}

void TestRegisteredRowEditor::writesNothingUntouched()
{
    const Registration spin("property.integer", &spinBox);
    const Registration box("property.flag", &checkBox);
    const PageFixture f;
    f.model->beams[1].bolts = 3;
    f.model->beams[1].isActive = false;
    f.model->announce();
    f.page->flush();
    QCOMPARE(f.page->row("bolts").state, PropertyState::Varies);
    for (const char* key : {"bolts", "group", "active"}) {
        f.page->editor(key)->setFocus();
        f.button->setFocus();
        QVERIFY(!f.page->isPending());
    }
    f.page->setSelection({1});
    f.page->hide();
    QCOMPARE(f.model->writes, QStringList());
}

void TestRegisteredRowEditor::clearsOnlyWhatIsOptional()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    f.page->setValue("group", 4);
    f.model->writes.clear();
    qobject_cast<QSpinBox*>(f.page->editor("group"))->setValue(-1000);
    f.page->editor("group")->setFocus();
    f.button->setFocus();
    QCOMPARE(f.model->writes, QStringList("group of 0 1 2"));
    QVERIFY(!f.model->beams[0].group);
    qobject_cast<QSpinBox*>(f.page->editor("bolts"))->setValue(-1000);
    f.page->editor("bolts")->setFocus();
    f.button->setFocus();
    QCOMPARE(f.model->writes.size(), 1);
    QCOMPARE(f.edit("bolts"), EditState::Refused);
    QVERIFY(!f.page->finishEditing());
}

void TestRegisteredRowEditor::keepsWhatIsRefused()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    auto* editor = qobject_cast<QSpinBox*>(f.page->editor("bolts"));
    editor->setFocus();
    editor->setValue(2);
    f.button->setFocus();
    QCOMPARE(f.edit("bolts"), EditState::Refused);
    QCOMPARE(f.page->row("bolts").reason, QString("Bolts come in odd numbers."));
    QCOMPARE(editor->toolTip(), QString("Bolts come in odd numbers."));
    QCOMPARE(editor->value(), 2);
    editor->setFocus();
    editor->setValue(3);
    f.button->setFocus();
    QCOMPARE(f.model->writes, QStringList("bolts of 0 1 2"));
    QCOMPARE(editor->toolTip(), QString());
}

void TestRegisteredRowEditor::showsNothingWithoutACommonValue_data()
{
    columns<PropertyState::Kind, bool, QString>("kind", "canBeEmpty", "text");
    row("no object clears it", PropertyState::NoObject, true, QString());
    row("an unreadable value clears it", PropertyState::Unreadable, true, QString());
    row("no value clears it", PropertyState::NoValue, true, QString());
    row("values that differ clear it", PropertyState::Varies, true, getVariesString());
    row("no object disables one that is never empty", PropertyState::NoObject, false, QString());
    row("no value disables one that is never empty", PropertyState::NoValue, false, QString());
    row("values that differ disable one that is never empty", PropertyState::Varies, false,
        getVariesString());
}

void TestRegisteredRowEditor::showsNothingWithoutACommonValue()
{
    QFETCH(const PropertyState::Kind, kind);
    QFETCH(const bool, canBeEmpty);
    const Registration spin("property.integer", canBeEmpty ? &simpleSpinBox : &spinBoxNeverEmpty);
    QWidget form;
    const auto bolts = field::integer().between(1, 99);
    const PropertySelection::Row row{"bolts", "&Bolts", {}, bolts, "Bolts", {{0, bolts}}};
    vrn::qt::detail::RowEditor* editor = vrn::qt::detail::makeRegisteredEditor(&form, row);
    const PropertyState common{PropertyState::Common, 7, QString()};
    const vrn::units::Context units;
    editor->show(common, units);
    editor->setReadOnly(false);
    QCOMPARE(editor->text(), QString("7"));

    editor->show({kind, {}, QString()}, units);
    editor->setReadOnly(false);
    QTEST(editor->text(), "text");
    QCOMPARE(editor->widget()->isEnabled(), canBeEmpty);
    QCOMPARE(editor->entry().state, EditState::Untouched);

    editor->show(common, units);
    editor->setReadOnly(false);
    QCOMPARE(editor->text(), QString("7"));
    QVERIFY(editor->widget()->isEnabled());
}

void TestRegisteredRowEditor::isOneEditWhileItHasTheFocus()
{
    const Registration box("property.flag", &checkBox);
    const PageFixture f;
    auto* editor = qobject_cast<MultiEditCheckBox*>(f.page->editor("active"));
    editor->setFocus();
    editor->setChecked(false);
    editor->setChecked(true);
    editor->setChecked(false);
    QCOMPARE(f.model->writes.size(), 3);
    QCOMPARE(f.stack->count(), 1);
    f.button->setFocus();
    editor->setFocus();
    editor->setChecked(true);
    QCOMPARE(f.stack->count(), 2);
    f.stack->undo();
    f.stack->undo();
    QVERIFY(f.model->beams[1].isActive);
}

void TestRegisteredRowEditor::isDisabledWhenReadOnly()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    f.page->setReadOnly(true);
    QVERIFY(!f.page->editor("bolts")->isEnabled());
    f.page->setReadOnly(false);
    QVERIFY(f.page->editor("bolts")->isEnabled());
}

void TestRegisteredRowEditor::givesWayIfItCannotBeMade()
{
    const Registration none("property.flag",
        [](QWidget*, const Hints&) -> EditorMetaData { throw std::runtime_error("no licence"); });
    const Registration null(
        "property.integer", [](QWidget*, const Hints&) { return EditorMetaData(); });
    const PageFixture f;
    QCOMPARE(f.text("active"), QString("Yes"));
    QCOMPARE(f.text("bolts"), QString("1"));
}

void TestRegisteredRowEditor::mayBeDestroyedByTheApplication()
{
    const Registration spin("property.integer", &spinBox);
    const PageFixture f;
    delete f.page->editor("bolts");
    QVERIFY(!f.page->editor("bolts"));
    QVERIFY(f.page->row("bolts").isReadOnly);
    f.model->announce();
    f.page->flush();
    f.model->setUnits(vrn::units::Context(8));
    f.part<QToolButton>("section.geometry")->click();
    f.page->setReadOnly(true);
    QVERIFY(f.page->finishEditing());
    f.page->setSelection({});
}

VRN_TEST(TestRegisteredRowEditor)
#include "tst_registered_row_editor.moc"
