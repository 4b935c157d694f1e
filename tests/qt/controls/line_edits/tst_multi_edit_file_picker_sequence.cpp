#include <vrn/qt/multi_edit_file_picker.h>

#include "multi_edit_line_edit_model.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;

namespace {

// What the picker's validator makes of paths: it cuts a value, but not a text.
struct Paths
{
    using Value = QString;

    static QString written(const QString& path) { return path; }
    static QString rewritten(const QString& text) { return text.left(260); }
    static boost::any valueOf(const QString& text) { return text.left(260).toStdString(); }
    static bool accepts(const QString& /*text*/) { return true; }
};

struct Model : public vrn::test::MultiEditModel<Paths>
{
    Model() { valid = true; }

    void picked()
    {
        if (!varies)
            ++due;
    }
};

const QStringList actions = {"reset", "readValue", "setValue", "forceVaries", "a letter",
    "Backspace", "Enter", "select all and delete", "pick without a choice", "Undo", "Undo"};

class PickerBesideModel : public vrn::test::Subject
{
public:
    PickerBesideModel()
    {
        QObject::connect(
            &m_picker, &MultiEditFilePicker::valueChanged, &m_picker, [this] { ++m_count; });
        QObject::connect(m_picker.m_edit->edit(), &QLineEdit::textEdited, &m_picker,
            [this] { m_isEdited = true; });
    }

    QString perform(int action, unsigned argument) override
    {
        // Few values, so that some are read twice; the last two differ in what is cut.
        static const QStringList values = {"", "/a", "/b", QString::fromUtf8("/größe"), "*VARIES*",
            "/" + QString(259, 'x') + "y", "/" + QString(259, 'x') + "z"};
        const QString value = values[int(argument % unsigned(values.size()))];
        QLineEdit* edit = m_picker.m_edit->edit();
        switch (action) {
        case 0:
            m_picker.reset();
            m_model.reset();
            break;
        case 1:
            m_picker.readValue(value.toStdString());
            m_model.read(value);
            break;
        case 2:
            m_picker.setValue(value.toStdString());
            m_model.set(value);
            break;
        case 3:
            m_picker.forceVaries();
            m_model.forceVaries();
            break;
        case 4:
            QTest::keyClick(edit, char('a' + argument % 26));
            m_model.edited(m_model.text + QChar('a' + argument % 26));
            break;
        case 5:
            QTest::keyClick(edit, Qt::Key_Backspace);
            if (!m_model.text.isEmpty())
                m_model.edited(m_model.text.chopped(1));
            break;
        case 6:
            QTest::keyClick(edit, Qt::Key_Return);
            m_model.finished();
            break;
        case 7:
            QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(edit, Qt::Key_Delete);
            if (!m_model.text.isEmpty())
                m_model.edited({});
            break;
        case 8:
            pick();
            break;
        case 9:
        case 10:
            // Qt decides what comes back, if anything does. The cursor goes to the end for
            // later keys.
            m_isEdited = false;
            QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
            edit->end(false);
            if (m_isEdited)
                m_model.edited(edit->text());
            break;
        }
        return difference();
    }

private:
    void pick()
    {
        bool thrown = false;
        try {
            QMetaObject::invokeMethod(&m_picker, "onPick");
        } catch (const boost::bad_any_cast&) {
            thrown = true;
        }
        if (thrown != m_model.varies)
            QTest::qFail("a pick throws exactly while the control varies", __FILE__, __LINE__);
        m_model.picked();
    }

    QString difference() const
    {
        const QString text = m_picker.m_edit->edit()->text();
        if (text != m_model.text)
            return QStringLiteral("text \"%1\" instead of \"%2\"").arg(text, m_model.text);
        if (m_picker.dataVaries() != m_model.varies)
            return QStringLiteral("varies: %1").arg(!m_model.varies);
        if (m_count != m_model.due)
            return QStringLiteral("%1 signals instead of %2").arg(m_count).arg(m_model.due);
        if (!vrn::test::sameValue(m_picker.getCurrentValue(), m_model.current())) {
            return QStringLiteral("value %1 instead of %2")
                .arg(vrn::test::describe(m_picker.getCurrentValue()),
                    vrn::test::describe(m_model.current()));
        }
        if (!vrn::test::sameValue(m_picker.getValue(), m_model.current()))
            return QStringLiteral("getValue() differs from getCurrentValue()");
        return {};
    }

    // Its type has no dialog that the user would have to close.
    MultiEditFilePicker m_picker{nullptr, TypeofPath(4)};
    int m_count = 0;
    bool m_isEdited = false;
    Model m_model;
};

} // namespace

class TestMultiEditFilePickerSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomSequencesFollowTheRules()
    {
        vrn::test::runRandomSequences(
            actions, [] { return std::make_unique<PickerBesideModel>(); });
    }
};

VRN_TEST(TestMultiEditFilePickerSequence)
#include "tst_multi_edit_file_picker_sequence.moc"
