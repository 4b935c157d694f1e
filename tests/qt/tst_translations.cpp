#include <vrn/companion_qt/combo_box.h>
#include <vrn/qt/default_editor_factory.h>
#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/multi_edit_group_box.h>
#include <vrn/qt/varies_string.h>

#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QLocale>
#include <QToolButton>
#include <QToolTip>
#include <QTranslator>

#include "support/test_main.h"
#include "support/test_object.h"

namespace {

using namespace vrn::qt;

/// The names for true and false of a validator.
QStringList yesAndNoOfValidator()
{
    const auto validator = DefaultValidatorFactory().create(kindOf<bool>(), {});
    return {validator->reformat(true, {}), validator->reformat(false, {})};
}

/// Those of an editor.
QStringList yesAndNoOfEditor()
{
    const auto editor = DefaultEditorFactory(nullptr).create("yes_no", {});
    const std::unique_ptr<QWidget> widget(editor->widget);
    const auto* list = widget->findChild<QComboBox*>();
    return {list->itemText(0), list->itemText(1)};
}

/// A language in which every text is "?".
class Unknown : public QTranslator
{
public:
    QString translate(const char*, const char*, const char*, int) const override { return "?"; }
    bool isEmpty() const override { return false; }
};

} // namespace

// The program's resources hold German texts, and nobody asks for them but the
// library, when it is loaded.
class TestTranslations : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextOfAVaryingSelectionIsTranslated()
    {
        QCOMPARE(vrn::qt::getVariesString(), QString("*VERSCHIEDEN*"));
    }

    void theVariousEntryOfAComboBoxHasTheSameText()
    {
        VRN_QT4_ComboBox box;
        box.addVarious(true);
        QCOMPARE(box.currentText(), vrn::qt::getVariesString());
    }

    void yesAndNoAreTranslatedAtTheFirstUseByEach()
    {
        QCOMPARE(yesAndNoOfValidator(), QStringList({"Ja", "Nein"}));
        {
            Unknown language;
            QVERIFY(QCoreApplication::installTranslator(&language));
            QCOMPARE(yesAndNoOfValidator(), QStringList({"Ja", "Nein"}));
            QCOMPARE(yesAndNoOfEditor(), QStringList({"?", "?"}));
        }
        QCOMPARE(yesAndNoOfEditor(), QStringList({"?", "?"}));
    }

    void theToolTipOfAResetButtonIsTranslated()
    {
        QWidget form;
        Hints hints;
        setTextHint(hints, "editor", "lineedit");
        setHint<bool>(hints, "optional", true);
        const EditorMetaData editor = createEditorFromHints(&form, hints);
        QCOMPARE(editor.widget->findChild<QToolButton*>()->toolTip(),
            QString("Auf die Vorgabe setzen."));
    }

    void theToolTipOfAVaryingControlIsTranslated()
    {
        QWidget form;
        auto* box = vrn::qt::MultiEditGroupBox::create("Brandschutz", &form);
        form.show();
        box->forceVaries();
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), box->mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(box, &event);
        QCOMPARE(QToolTip::text(), QString("Die ausgewählten Objekte unterscheiden sich."));
    }
};

// The constructor of the application loads the translations, so the locale is set before it.
class GermanUser
{
public:
    GermanUser() { QLocale::setDefault(QLocale(QStringLiteral("de_DE"))); }
};

class GermanApplication
    : private GermanUser
    , public QApplication
{
public:
    using QApplication::QApplication;
};

VRN_TEST_IN(TestTranslations, GermanApplication)
#include "tst_translations.moc"
