#include <vrn/qt/multi_edit_file_picker.h>

#include "multi_edit_line_edit_model.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;

namespace {

// What the picker's validator makes of paths: it cuts a value, but not a text.
struct Paths
{
    using Value = QString;

    // The last two differ in what is cut.
    static QString sample(unsigned index)
    {
        static const QStringList values = {"", "/a", "/b", QString::fromUtf8("/größe"), "*VARIES*",
            "/" + QString(259, 'x') + "y", "/" + QString(259, 'x') + "z"};
        return values[int(index % unsigned(values.size()))];
    }

    static boost::any boxed(const QString& path) { return path.toStdString(); }
    static QString written(const QString& path) { return path; }
    static QString rewritten(const QString& text) { return text.left(260); }
    static boost::any valueOf(const QString& text) { return text.left(260).toStdString(); }
    static bool accepts(const QString& /*text*/) { return true; }
};

struct Model : public MultiEditModel<Paths>
{
    Model() { valid = true; }

    void picked()
    {
        if (!varies)
            ++due;
    }
};

// Its type has no dialog that the user would have to close.
class Picker : public MultiEditFilePicker
{
public:
    Picker()
        : MultiEditFilePicker(nullptr, TypeofPath(4))
    {}

    QLineEdit* edit() { return m_edit->edit(); }
    bool isValueValid() const { return m_edit->isValueValid(); }

    QToolButton* addButton(
        const boost::function<QString(const QString&)>& fn, const QPixmap& pixmap)
    {
        return m_edit->addButton(fn, pixmap);
    }

    boost::any getCurrentValue() const override
    {
        const boost::any value = MultiEditFilePicker::getCurrentValue();
        if (!sameValue(getValue(), value))
            QTest::qFail("getValue() differs from getCurrentValue()", __FILE__, __LINE__);
        return value;
    }
};

class Beside : public MultiEditLineEditSubject<Picker, Model>
{
public:
    Beside()
        : MultiEditLineEditSubject(new Picker)
    {}

    static QStringList actions()
    {
        return MultiEditLineEditSubject::actions() << "pick without a choice";
    }

protected:
    void performOther(int /*action*/, unsigned /*argument*/) override
    {
        bool thrown = false;
        try {
            QMetaObject::invokeMethod(field(), "onPick");
        } catch (const boost::bad_any_cast&) {
            thrown = true;
        }
        if (thrown != model().varies)
            QTest::qFail("a pick throws exactly while the control varies", __FILE__, __LINE__);
        model().picked();
    }
};

} // namespace

class TestMultiEditFilePickerSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomSequencesFollowTheRules()
    {
        runRandomSequences(Beside::actions(), [] { return std::make_unique<Beside>(); });
    }
};

VRN_TEST(TestMultiEditFilePickerSequence)
#include "tst_multi_edit_file_picker_sequence.moc"
