#include <vrn/companion_qt/combo_box.h>
#include <vrn/qt/multi_edit_group_box.h>
#include <vrn/qt/varies_string.h>

#include <QApplication>
#include <QHelpEvent>
#include <QLocale>
#include <QToolTip>

#include "support/test_main.h"
#include "support/test_object.h"

// The program's resources hold a German text, and nobody asks for it but the
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
