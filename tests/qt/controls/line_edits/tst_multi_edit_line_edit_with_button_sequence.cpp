#include <vrn/qt/multi_edit_line_edit_with_button.h>

#include "multi_edit_line_edit_model.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QToolButton>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

constexpr double computed = 12.5;

class Beside : public MultiEditLineEditSubject<MultiEditLineEditWithButton, MultiEditLineEditModel>
{
public:
    Beside()
        : MultiEditLineEditSubject(new MultiEditLineEditWithButton(
            percentage(), 7, [](QWidget*, int, boost::any& value) { value = computed; }))
    {}

    static QStringList actions()
    {
        return MultiEditLineEditSubject::actions() << "a click on the button"
                                                   << "a click on the button";
    }

protected:
    void performOther(int /*action*/, unsigned /*argument*/) override
    {
        field()->getButton()->click();
        model().set(computed);
    }
};

} // namespace

class TestMultiEditLineEditWithButtonSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomSequenceFollowsTheTables()
    {
        runRandomSequences(Beside::actions(), [] { return std::make_unique<Beside>(); });
    }
};

VRN_TEST(TestMultiEditLineEditWithButtonSequence)
#include "tst_multi_edit_line_edit_with_button_sequence.moc"
