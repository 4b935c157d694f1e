#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/unit_validator.h>

#include <QLocale>
#include <QProcess>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cstdio>
#include <cstdlib>
#include <locale>

using namespace vrn::qt;
using vrn::test::columns;
using vrn::test::row;
using vrn::units::Context;

namespace UnitId = vrn::units::UnitId;

namespace {

const std::bitset<32> userLocale(1U << ValidationFlagUserLocale);

/// What a validator makes of "1,5".
QString answerOf(IValidator& validator)
{
    boost::any value;
    if (!validator.validate("1,5", value, userLocale))
        return "refused";
    if (const auto* quantity = boost::any_cast<vrn::units::IConverter::quantity>(&value))
        return QString::number(quantity->value);
    return QString::number(boost::any_cast<double>(value));
}

QStringList answers()
{
    DoubleEditValidator number;
    DistanceEditValidator distance(UnitId::METRE, -1e9, 1e9, true);
    UnitValidator quantity(Context(), UnitId::GEO_LENGTH);
    return {answerOf(number), answerOf(distance), answerOf(quantity)};
}

/// Takes the steps that stand after "--run", prints the answers and ends. Without them it
/// is the test's application.
struct Application : public QApplication
{
    Application(int& argc, char** argv)
        : QApplication(argc, argv)
    {
        const QStringList steps = arguments().mid(2);
        if (arguments().value(1) == "--run")
            std::exit(take(steps));
    }

private:
    static int take(const QStringList& steps)
    {
        for (const QString& step : steps) {
            if (step == "ask")
                answers();
            else if (step == "setDefault")
                QLocale::setDefault(QLocale("de_DE"));
            else if (step == "qputenv")
                qputenv("LC_ALL", "de_DE.UTF-8");
            else if (step == "global")
                std::locale::global(std::locale("de_DE.UTF-8"));
            else if (!step.isEmpty())
                return 1;
        }
        std::puts(qPrintable(answers().join(' ')));
        return 0;
    }
};

} // namespace

// What is asked for the user's locale, and when: each row is an application of its own.
class TestUserLocale : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsAsked_data()
    {
        columns<QString, QString, QString>("environment", "steps", "answers");
        const QString plain = "C.UTF-8";
        const QString german = "de_DE.UTF-8";
        row("nothing German", plain, "", "refused 0 1");
        row("the environment, for all", german, "", "1.5 1.5 1.5");
        row("QLocale::setDefault(), for plain numbers", plain, "setDefault", "1.5 1.5 1");
        row("both, as the header says", plain, "setDefault qputenv", "1.5 1.5 1.5");
        row("not what comes after the first question", plain, "ask setDefault qputenv",
            "refused 0 1");
        row("not an environment that changes after it", plain, "ask qputenv", "refused 0 1");
        row("not the global std::locale", plain, "global", "refused 0 1");
    }

    void whatIsAsked()
    {
        QFETCH(QString, environment);
        QFETCH(QString, steps);
        QFETCH(QString, answers);
        QProcess application;
        auto variables = QProcessEnvironment::systemEnvironment();
        variables.insert("LC_ALL", environment);
        application.setProcessEnvironment(variables);
        application.start(QCoreApplication::applicationFilePath(),
            QStringList{"tst_user_locale", "--run"} + steps.split(' '));
        QVERIFY(application.waitForFinished());
        QCOMPARE(QString::fromUtf8(application.readAllStandardOutput()).trimmed(), answers);
    }

    // The inches are in the locale of the flags.
    void wholeFeetAreInTheGlobalLocale()
    {
        vrn::units::UnitFormat format;
        format.unit_id = UnitId::FEET_AND_FRACTIONAL_INCHES;
        format.precision = 8;
        UnitValidator validator(Context(0, {{UnitId::GEO_LENGTH, format}}), UnitId::GEO_LENGTH);
        const boost::any length = vrn::units::IConverter::quantity{
            UnitId::GEO_LENGTH, 1234.5 * 0.3048};
        QCOMPARE(validator.reformat(length, {}), QString("1234' 6 ''"));
        const std::locale before = std::locale::global(std::locale("de_DE.UTF-8"));
        const QString text = validator.reformat(length, {});
        std::locale::global(before);
        QCOMPARE(text, QString("1.234' 6 ''"));
        boost::any value;
        QVERIFY(validator.validate(text, value, {}));
        QCOMPARE(
            boost::any_cast<vrn::units::IConverter::quantity>(value).value, (1.234 + 0.5) * 0.3048);
    }

    // A number with a unit goes another way.
    void aDistanceWithAUnitIsInTheCLocale()
    {
        QLocale::setDefault(QLocale("de_DE"));
        DistanceEditValidator distance(UnitId::METRE, -1e9, 1e9, true);
        boost::any value;
        QVERIFY(distance.validate("1,5", value, userLocale));
        QCOMPARE(value, boost::any(1.5));
        QVERIFY(!distance.validate("1,5 m", value, userLocale));
        QVERIFY(distance.validate("1.5 m", value, userLocale));
        QCOMPARE(value, boost::any(1.5));
    }
};

VRN_TEST_IN(TestUserLocale, Application)
#include "tst_user_locale.moc"
