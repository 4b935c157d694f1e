#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>

#include "multi_edit_line_edit_model.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QToolButton>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

constexpr double shownByReset = 50.0;
constexpr int reportedByReset = -1;

struct Model : public MultiEditLineEditModel
{
    bool pending = false;

    void edited(const QString& newText)
    {
        MultiEditLineEditModel::edited(newText);
        pending = false;
    }

    void click()
    {
        pending = true;
        set(shownByReset);
        ++due;
    }

    bool hasLostItsText() const { return !pending && MultiEditLineEditModel::hasLostItsText(); }

    boost::any current() const
    {
        return pending && !varies ? boost::any(reportedByReset) : MultiEditLineEditModel::current();
    }
};

class Beside : public MultiEditLineEditSubject<MultiEditLineEditWithResetButton, Model>
{
public:
    Beside()
        : MultiEditLineEditSubject(new MultiEditLineEditWithResetButton(
            percentage(), 7, [](int, boost::any& shown, boost::any& reported) {
                shown = shownByReset;
                reported = reportedByReset;
            }))
    {}

    static QStringList actions()
    {
        return MultiEditLineEditSubject::actions() << "a click on the button"
                                                   << "a click on the button";
    }

protected:
    void performOther(int /*action*/, unsigned /*argument*/) override
    {
        field()->template findChild<QToolButton*>("btn")->click();
        model().click();
    }
};

} // namespace

class TestMultiEditLineEditWithResetButtonSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomSequenceFollowsTheTables()
    {
        runRandomSequences(Beside::actions(), [] { return std::make_unique<Beside>(); });
    }
};

VRN_TEST(TestMultiEditLineEditWithResetButtonSequence)
#include "tst_multi_edit_line_edit_with_reset_button_sequence.moc"
