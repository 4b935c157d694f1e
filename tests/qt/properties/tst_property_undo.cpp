#include <vrn/qt/property_error.h>
#include <vrn/qt/property_selection.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beam_model.h"

#include <QPointer>
#include <QSignalSpy>
#include <QUndoStack>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

/// Three beams of different lengths, and a stack.
struct Undoing
{
    Undoing()
        : model(3)
        , selection(&model, model.ids(), &stack)
    {
        for (auto& beam : model.beams)
            beam.second.length = lengthOf(beam.first);
    }

    static double lengthOf(std::uint64_t key) { return double(10 + key) / 3.0; }

    bool haveOldLengths() const
    {
        for (const auto& beam : model.beams) {
            if (!haveSameBits(beam.second.length, lengthOf(beam.first)))
                return false;
        }
        return true;
    }
    bool haveLength(double length) const
    {
        for (const auto& beam : model.beams) {
            if (!haveSameBits(beam.second.length, length))
                return false;
        }
        return true;
    }

    BeamModel model;
    QUndoStack stack;
    PropertySelection selection;
};

} // namespace

class TestPropertyUndo : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesEachObjectItsOwnValue();
    void restoresWhatConversionsLose();
    void isPushedAfterTheWrite();
    void writesOnce();
    void passesOverWhatIsGoneAndDoesNotForgetIt();
    void announcesUndoAndRedo();
    void outlivesTheSelection();
    void outlivesTheModel();
    void turnsObsoleteIfTheModelThrows_data();
    void turnsObsoleteIfTheModelThrows();
    void turnsObsoleteInAMacro();
    void turnsObsoleteWhileAnotherEditIsWritten();
    void survivesADestroyedModelInFailed();
    void mergesNothingByItself();
    void mergesOneGesture();
    void mergesNoOtherPropertyAndNoOtherGesture();
    void mergesOtherObjects();
    void dropsAGestureThatComesBack();
    void doesNotMergeAcrossTheCleanState();
};

void TestPropertyUndo::givesEachObjectItsOwnValue()
{
    Undoing undoing;
    undoing.selection.edit("length", 7.62);
    QVERIFY(undoing.haveLength(7.62));
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
    undoing.stack.redo();
    QVERIFY(undoing.haveLength(7.62));
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
}

void TestPropertyUndo::restoresWhatConversionsLose()
{
    Undoing undoing;
    Beam& beam = undoing.model.beams[1];
    const std::string strange = "T\xfcr";
    beam.grade = strange;
    beam.comment = std::wstring(L"a\0b", 3);
    beam.factor = -0.0;
    undoing.selection.edit("grade", QString("S355"));
    undoing.selection.edit("comment", QString());
    undoing.selection.edit("factor", 0.0);
    while (undoing.stack.canUndo())
        undoing.stack.undo();
    QCOMPARE(beam.grade, strange);
    QCOMPARE(beam.comment, std::wstring(L"a\0b", 3));
    QVERIFY(haveSameBits(beam.factor, -0.0));
}

void TestPropertyUndo::isPushedAfterTheWrite()
{
    // The stack tells of its end, too.
    int inWrite = -1;
    bool isWritten = false;
    Undoing undoing;
    undoing.model.afterWrite = [&] { inWrite = undoing.stack.count(); };
    connect(&undoing.stack, &QUndoStack::indexChanged, this,
        [&] { isWritten = undoing.haveLength(5.0) && !undoing.model.isWriting(); });
    undoing.selection.edit("length", 5.0);
    QCOMPARE(inWrite, 0);
    QVERIFY(isWritten);
}

void TestPropertyUndo::writesOnce()
{
    Undoing undoing;
    undoing.selection.edit("length", 5.0);
    undoing.stack.undo();
    undoing.stack.redo();
    QCOMPARE(undoing.model.writes,
        (QStringList{"length of 0 1 2", "length of 0 1 2", "length of 0 1 2"}));
}

void TestPropertyUndo::passesOverWhatIsGoneAndDoesNotForgetIt()
{
    Undoing undoing;
    undoing.selection.edit("length", 5.0);
    auto gone = undoing.model.beams.extract(1);
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
    QVERIFY(undoing.stack.canRedo());
    undoing.stack.redo();
    undoing.model.beams.insert(std::move(gone));
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
}

void TestPropertyUndo::announcesUndoAndRedo()
{
    Undoing undoing;
    undoing.selection.edit("length", 5.0);
    undoing.model.flush();
    int changed = 0;
    connect(&undoing.model, &PropertyModel::changed, this,
        [&](const PropertyKeys& keys, const ObjectIds& ids) {
            ++changed;
            QCOMPARE(keys, (PropertyKeys{"area", "camber", "length"}));
            QCOMPARE(ids, undoing.model.ids());
        });
    undoing.stack.undo();
    undoing.stack.redo();
    undoing.model.flush();
    QCOMPARE(changed, 1);
}

void TestPropertyUndo::outlivesTheSelection()
{
    Undoing undoing;
    undoing.selection.edit("length", 5.0);
    undoing.selection = PropertySelection();
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
}

void TestPropertyUndo::outlivesTheModel()
{
    QUndoStack stack;
    {
        BeamModel model(2);
        PropertySelection selection(&model, model.ids(), &stack);
        selection.edit("length", 5.0);
        selection.edit("length", 6.0);
    }
    QCOMPARE(stack.count(), 2);
    stack.undo();
    QCOMPARE(stack.count(), 1);
    stack.undo();
    QCOMPARE(stack.count(), 0);
}

void TestPropertyUndo::turnsObsoleteIfTheModelThrows_data()
{
    columns<bool>("isRedo");
    row("when it is undone", false);
    row("when it is done again", true);
}

void TestPropertyUndo::turnsObsoleteIfTheModelThrows()
{
    QFETCH(bool, isRedo);
    Undoing undoing;
    QSignalSpy failed(&undoing.model, &PropertyModel::failed);
    undoing.selection.edit("name", QString("ridge"));
    undoing.selection.edit("length", 5.0);
    if (isRedo)
        undoing.stack.undo();
    undoing.model.beforeWrite = [] { throw PropertyError("The file is read-only."); };
    if (isRedo)
        undoing.stack.redo();
    else
        undoing.stack.undo();
    QCOMPARE(undoing.stack.count(), 1);
    QVERIFY(isRedo ? undoing.haveOldLengths() : undoing.haveLength(5.0));
    QCOMPARE(failed.count(), 0);
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed[0].at(0).toString(), QString("The file is read-only."));
    undoing.model.beforeWrite = {};
    undoing.stack.undo();
    QCOMPARE(undoing.model.beams[0].name, QString("B1"));
}

void TestPropertyUndo::turnsObsoleteInAMacro()
{
    Undoing undoing;
    undoing.stack.beginMacro("both");
    undoing.selection.edit("name", QString("ridge"));
    undoing.selection.edit("length", 5.0);
    undoing.stack.endMacro();
    QSignalSpy failed(&undoing.model, &PropertyModel::failed);
    undoing.model.beforeWrite = [] { throw 7; };
    undoing.stack.undo();
    undoing.model.beforeWrite = {};
    undoing.stack.redo();
    undoing.stack.undo();
    undoing.model.flush();
    QCOMPARE(failed.count(), 2);
    QVERIFY(undoing.haveLength(5.0));
    QCOMPARE(undoing.model.writes.size(), 4);
}

void TestPropertyUndo::turnsObsoleteWhileAnotherEditIsWritten()
{
    Undoing undoing;
    QSignalSpy failed(&undoing.model, &PropertyModel::failed);
    undoing.selection.edit("name", QString("ridge"));
    undoing.model.beforeWrite = [&] { undoing.stack.undo(); };
    undoing.selection.edit("length", 5.0);
    undoing.model.flush();
    QCOMPARE(failed.count(), 1);
    QCOMPARE(undoing.stack.count(), 1);
    QCOMPARE(undoing.stack.undoText(), QString("Length of 3 beams"));
    QCOMPARE(undoing.model.beams[0].name, QString("ridge"));
    undoing.model.beforeWrite = {};
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
}

void TestPropertyUndo::survivesADestroyedModelInFailed()
{
    QUndoStack stack;
    QPointer<BeamModel> model = new BeamModel(2);
    PropertySelection selection(model, model->ids(), &stack);
    selection.edit("length", 5.0);
    selection.edit("length", 6.0);
    model->beforeWrite = [] { throw 7; };
    connect(model, &PropertyModel::failed, this, [&] { delete model; });
    stack.undo();
    stack.undo();
    QTRY_VERIFY(!model);
}

void TestPropertyUndo::mergesNothingByItself()
{
    Undoing undoing;
    undoing.selection.edit("length", 5.0);
    undoing.selection.edit("length", 6.0);
    QCOMPARE(undoing.stack.count(), 2);
}

void TestPropertyUndo::mergesOneGesture()
{
    Undoing undoing;
    for (int i = 0; i < 10; ++i)
        undoing.selection.edit("length", 5.0 + i, 1);
    QCOMPARE(undoing.stack.count(), 1);
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
    undoing.stack.redo();
    QVERIFY(undoing.haveLength(14.0));
    QCOMPARE(undoing.model.writes.size(), 12);
}

void TestPropertyUndo::mergesNoOtherPropertyAndNoOtherGesture()
{
    Undoing undoing;
    undoing.selection.edit("length", 5.0, 1);
    undoing.selection.edit("length", 6.0, 2);
    QCOMPARE(undoing.stack.count(), 2);
    undoing.selection.edit("width", 100.0, 2);
    QCOMPARE(undoing.stack.count(), 3);
    undoing.selection.edit("length", 7.0, 2);
    QCOMPARE(undoing.stack.count(), 4);
    BeamModel other(1);
    PropertySelection(&other, {0}, &undoing.stack).edit("length", 8.0, 2);
    QCOMPARE(undoing.stack.count(), 5);
}

void TestPropertyUndo::mergesOtherObjects()
{
    Undoing undoing;
    PropertySelection(&undoing.model, {0, 1}, &undoing.stack).edit("length", 5.0, 1);
    PropertySelection(&undoing.model, {1, 2}, &undoing.stack).edit("length", 6.0, 1);
    // The second object comes back to what it was.
    PropertySelection(&undoing.model, {1}, &undoing.stack).edit("length", Undoing::lengthOf(1), 1);
    QCOMPARE(undoing.stack.count(), 1);
    undoing.stack.undo();
    QVERIFY(undoing.haveOldLengths());
    QCOMPARE(undoing.model.writes.last(), QString("length of 0 2"));
    undoing.stack.redo();
    QVERIFY(haveSameBits(undoing.model.beams[0].length, 5.0));
    QVERIFY(haveSameBits(undoing.model.beams[1].length, Undoing::lengthOf(1)));
    QVERIFY(haveSameBits(undoing.model.beams[2].length, 6.0));
}

void TestPropertyUndo::dropsAGestureThatComesBack()
{
    BeamModel model(2);
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    selection.edit("length", 5.0, 1);
    selection.edit("length", 3.0, 1);
    QCOMPARE(stack.count(), 0);
    QVERIFY(!stack.canUndo());
}

void TestPropertyUndo::doesNotMergeAcrossTheCleanState()
{
    Undoing undoing;
    undoing.selection.edit("length", 5.0, 1);
    undoing.stack.setClean();
    undoing.selection.edit("length", 6.0, 1);
    QVERIFY(!undoing.stack.isClean());
    undoing.stack.undo();
    QVERIFY(undoing.stack.isClean());
    QVERIFY(undoing.haveLength(5.0));
}

VRN_TEST(TestPropertyUndo)
#include "tst_property_undo.moc"
