#include <vrn/companion_qt/translator.h>

#include <QApplication>
#include <QLocale>

#include "support/test_main.h"
#include "support/test_object.h"

#include <memory>

// Needs application objects of its own: keys announced before one exists are
// taken up by the next.
class TestTranslator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QStringLiteral("de_DE"))); }

    void cleanup()
    {
        m_application.reset();
        TestObject::cleanup();
    }

    void aKeyAnnouncedBeforeTheApplicationIsTakenUpByIt()
    {
        QVERIFY(VRN_QT_InitTranslator("vrn_test"));
        QCOMPARE(QObject::tr("Beam"), QString("Beam"));
        startApplication();
        QCOMPARE(QObject::tr("Beam"), QString::fromUtf8("Träger"));
    }

    void theNextApplicationHasItToo()
    {
        startApplication();
        QCOMPARE(QObject::tr("Beam"), QString::fromUtf8("Träger"));
    }

    void aKeyWithoutAFileIsNotAnError()
    {
        startApplication();
        QVERIFY(VRN_QT_InitTranslator("vrn_no_such_key"));
        QCOMPARE(QObject::tr("Column"), QString("Column"));
    }

private:
    void startApplication()
    {
        static int argc = 1;
        static char name[] = "tst_translator";
        static char* argv[] = {name, nullptr};
        m_application = std::make_unique<QCoreApplication>(argc, argv);
    }

    std::unique_ptr<QCoreApplication> m_application;
};

class NoApplication
{
public:
    NoApplication(int&, char**) {}
};

VRN_TEST_IN(TestTranslator, NoApplication)
#include "tst_translator.moc"
