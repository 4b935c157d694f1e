#include <vrn/qt/cell_data.h>
#include <vrn/units/i_converter.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>

#include "members_model.h"
#include "members_table.h"
#include "support/any_to_string.h"
#include "support/random_seed.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <array>
#include <memory>
#include <stdexcept>

using namespace vrn::test;
using gallery::MembersModel;
using gallery::MembersTable;
using Quantity = vrn::units::IConverter::quantity;
namespace UnitId = vrn::units::UnitId;

namespace {

constexpr int valueColumns = MembersModel::Duplicate;
constexpr int mostRows = 9;

/// What a user types into a cell, and the value that the cell then has; empty for a text that
/// is refused.
struct Entry
{
    int column;
    const char* text;
    boost::any value;
};

boost::any quantity(UnitId::UnitId kind, double value)
{
    return Quantity{kind, value};
}

const std::vector<Entry>& entries()
{
    static const std::vector<Entry> all = {
        {MembersModel::Name, "B 12", std::wstring(L"B 12")},
        {MembersModel::Name, "", std::wstring()},
        {MembersModel::Area, "50 cm2", quantity(UnitId::SECT_AREA, 50 * 0.0001)},
        {MembersModel::Area, "5 kN", {}},
        {MembersModel::Length, "8 ft", quantity(UnitId::GEO_LENGTH, 8 * 0.3048)},
        {MembersModel::Length, "2.5 m", quantity(UnitId::GEO_LENGTH, 2.5)},
        {MembersModel::Length, "long", {}},
        {MembersModel::Length, "", {}},
        {MembersModel::Load, "1 kip/ft", quantity(UnitId::LOAD_LINE, 14.59390294)},
        {MembersModel::Load, "-3 kN/m", quantity(UnitId::LOAD_LINE, -3.0)},
    };
    return all;
}

bool isSame(const boost::any& is, const boost::any& wanted)
{
    const auto* left = boost::any_cast<Quantity>(&is);
    const auto* right = boost::any_cast<Quantity>(&wanted);
    return left && right ? *left == *right : sameValue(is, wanted);
}

QString textOf(const boost::any& value)
{
    const auto* number = boost::any_cast<Quantity>(&value);
    return number ? QString("{%1, %2}").arg(number->unit_id).arg(number->value, 0, 'g', 17)
                  : describe(value);
}

/// A table of the gallery beside plain rows of typed values.
class Beside : public Subject
{
public:
    // A model tester takes most of the time.
    explicit Beside(bool hasTester)
    {
        if (hasTester)
            m_tester = std::make_unique<QAbstractItemModelTester>(&m_model);
        m_table.resize(900, 400);
        m_table.show();
        QApplication::setActiveWindow(&m_table);
        for (int row = 0; row < m_model.rowCount(); ++row)
            m_rows.push_back(shown(row));
    }

    static QStringList actions()
    {
        return {"select", "extend", "clear", "clear by Backspace", "copy", "paste", "paste a word",
            "paste below", "duplicate", "remove", "check", "system", "move", "scroll", "type",
            "choose"};
    }

    QString perform(int action, unsigned argument) override
    {
        const QString name = actions().at(action);
        const int rows = m_model.rowCount();
        const int row = static_cast<int>(argument % unsigned(rows));
        const int column = static_cast<int>((argument / 16U) % MembersModel::ColumnCount);
        if (name == "select")
            goTo(m_model.index(row, column));
        else if (name == "extend")
            m_table.selectionModel()->select(
                QItemSelection(m_table.currentIndex(), m_model.index(row, column)),
                QItemSelectionModel::ClearAndSelect);
        else if (name.startsWith("clear"))
            clear(name == "clear" ? Qt::Key_Delete : Qt::Key_Backspace);
        else if (name == "copy")
            press(Qt::Key_C);
        else if (name.startsWith("paste"))
            paste(name, row);
        else if (name == "duplicate")
            duplicate(row);
        else if (name == "remove" && rows > 2)
            remove(row);
        else if (name == "check")
            check(row);
        else if (name == "system")
            m_model.setUnitSystem(static_cast<int>(argument % 10U));
        else if (name == "move")
            QTest::keyClick(&m_table, argument % 2U ? Qt::Key_Down : Qt::Key_Right);
        else if (name == "scroll")
            m_table.scrollTo(m_model.index(row, column), QAbstractItemView::PositionAtTop);
        else if (name == "type")
            type(row, argument / 16U);
        else if (name == "choose")
            choose(row, argument / 16U);
        return difference();
    }

private:
    using Row = std::array<boost::any, valueColumns>;

    Row shown(int row) const
    {
        Row values;
        for (int column = 0; column < valueColumns; ++column) {
            values[static_cast<std::size_t>(column)] =
                m_model.index(row, column).data(vrn::qt::EditRole).value<boost::any>();
        }
        return values;
    }

    boost::any& due(int row, int column)
    {
        return m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }

    void goTo(const QModelIndex& index)
    {
        m_table.selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    }

    // Directly, because an exception that passes through Qt leaks memory.
    void press(Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
        m_table.keyPressEvent(&event);
    }

    void clear(Qt::Key key)
    {
        for (const QModelIndex& index : m_table.selectionModel()->selectedIndexes()) {
            if (index.column() < valueColumns && index.column() != MembersModel::Material)
                due(index.row(), index.column()) = index.column() == MembersModel::Name
                    ? boost::any(std::wstring())
                    : boost::any();
        }
        QTest::keyClick(&m_table, key);
    }

    void paste(const QString& name, int row)
    {
        if (name == "paste below")
            pasteBelow(row);
        else if (name == "paste a word")
            pasteWord();
        else
            pasteBlock();
    }

    // A line of three cells on one of the last row, and a new row.
    void pasteBelow(int row)
    {
        if (m_model.rowCount() >= mostRows)
            return;
        QApplication::clipboard()->setText("left\tS275\t2 m2\nnew\tS999\t1 m\n");
        const int last = m_model.rowCount() - 1;
        goTo(m_model.index(last, MembersModel::Name));
        due(last, MembersModel::Name) = std::wstring(L"left");
        due(last, MembersModel::Material) = 275;
        due(last, MembersModel::Area) = quantity(UnitId::SECT_AREA, 2.0);
        // The material is one that does not exist, so it is that of a new member.
        m_rows.push_back({std::wstring(L"new"), 235, {}, {}, {}, {}});
        press(Qt::Key_V);
        goTo(m_model.index(row, MembersModel::Name));
    }

    void pasteWord()
    {
        QApplication::clipboard()->setText("S355");
        for (const QModelIndex& index : m_table.selectionModel()->selectedIndexes()) {
            if (index.column() == MembersModel::Name)
                due(index.row(), index.column()) = std::wstring(L"S355");
            else if (index.column() == MembersModel::Material)
                due(index.row(), index.column()) = 355;
        }
        press(Qt::Key_V);
    }

    // Lines of two cells over what is selected. A selection of more lines throws.
    void pasteBlock()
    {
        QApplication::clipboard()->setText("one\tS460\ntwo\tS235\n");
        const QModelIndexList selected = m_table.selectionModel()->selectedIndexes();
        if (selected.size() < 2)
            return;
        int top = selected.first().row();
        int left = selected.first().column();
        for (const QModelIndex& index : selected) {
            top = std::min(top, index.row());
            left = std::min(left, index.column());
        }
        // Any other column refuses these texts.
        bool throws = false;
        for (const QModelIndex& index : selected) {
            const int line = index.row() - top;
            throws = throws || line > 1;
            if (throws)
                break;
            if (index.column() == MembersModel::Name && left == MembersModel::Name)
                due(index.row(), index.column()) = std::wstring(line ? L"two" : L"one");
            else if (index.column() == MembersModel::Material && left == MembersModel::Name)
                due(index.row(), index.column()) = line ? 235 : 460;
            else if (index.column() == MembersModel::Material && left == MembersModel::Material)
                continue;
        }
        bool thrown = false;
        try {
            press(Qt::Key_V);
        } catch (const std::out_of_range&) {
            thrown = true;
        }
        m_difference = thrown == throws ? QString() : "an exception that is not due, or none";
    }

    void duplicate(int row)
    {
        if (m_model.rowCount() >= mostRows)
            return;
        m_rows.insert(m_rows.begin() + row + 1, m_rows[static_cast<std::size_t>(row)]);
        const QModelIndex button = m_model.index(row, MembersModel::Duplicate);
        m_table.scrollTo(button);
        QTest::mouseClick(m_table.viewport(), Qt::LeftButton, Qt::NoModifier,
            m_table.visualRect(button).center());
    }

    void remove(int row)
    {
        m_rows.erase(m_rows.begin() + row);
        m_model.removeRow(row);
    }

    void check(int row)
    {
        if (isLocked(row))
            return;
        const auto* isActive = boost::any_cast<bool>(&due(row, MembersModel::Active));
        due(row, MembersModel::Active) = !(isActive && *isActive);
        goTo(m_model.index(row, MembersModel::Active));
        QTest::keyClick(&m_table, Qt::Key_Space);
    }

    void type(int row, unsigned choice)
    {
        const Entry& entry = entries()[choice % entries().size()];
        const QModelIndex cell = m_model.index(row, entry.column);
        goTo(cell);
        QTest::keyClick(&m_table, Qt::Key_F2);
        auto* edit = m_table.viewport()->findChild<QLineEdit*>();
        if (isLocked(row) != (edit == nullptr)) {
            m_difference = "an editor that is not due, or none";
            return;
        }
        if (!edit)
            return;
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, entry.text);
        const bool isDropped = finish(edit, choice / 16U);
        if (!isDropped && !entry.value.empty())
            due(row, entry.column) = entry.value;
    }

    void choose(int row, unsigned choice)
    {
        goTo(m_model.index(row, MembersModel::Material));
        QTest::keyClick(&m_table, Qt::Key_F2);
        auto* list = m_table.viewport()->findChild<QComboBox*>();
        if (!list)
            return;
        QTest::keyClick(list, choice % 2U ? Qt::Key_End : Qt::Key_Home);
        if (!finish(list, choice / 16U))
            due(row, MembersModel::Material) = choice % 2U ? 460 : 235;
    }

    // Whether the entry is dropped.
    bool finish(QWidget* editor, unsigned choice)
    {
        switch (choice % 4U) {
        case 0:
            QTest::keyClick(editor, Qt::Key_Return);
            return false;
        case 1:
            QTest::keyClick(editor, Qt::Key_Tab);
            closeNext();
            return false;
        case 2:
            m_table.setFocus();
            return false;
        default:
            QTest::keyClick(editor, Qt::Key_Escape);
            return true;
        }
    }

    // After Tab, the next cell is edited.
    void closeNext()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (m_table.viewport()->isAncestorOf(QApplication::focusWidget()))
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    }

    // The row delegate of the first row moves along with rows that are inserted, but not with
    // those that are removed.
    bool isLocked(int row) const { return row == 0; }

    QString difference()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (!m_difference.isEmpty())
            return m_difference;
        if (m_table.viewport()->isAncestorOf(QApplication::focusWidget()))
            return "an editor is open";
        if (m_model.rowCount() != static_cast<int>(m_rows.size()))
            return QString("%1 rows instead of %2").arg(m_model.rowCount()).arg(m_rows.size());
        for (int row = 0; row < m_model.rowCount(); ++row) {
            const Row values = shown(row);
            for (int column = 0; column < valueColumns; ++column) {
                const boost::any& is = values[static_cast<std::size_t>(column)];
                if (!isSame(is, due(row, column)))
                    return QString("%1,%2 is %3 instead of %4")
                        .arg(row)
                        .arg(column)
                        .arg(textOf(is), textOf(due(row, column)));
            }
        }
        return {};
    }

    MembersModel m_model{MembersModel::building(5)};
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    MembersTable m_table{&m_model};
    std::vector<Row> m_rows;
    QString m_difference;
};

} // namespace

// The table of the gallery, cell by cell beside a plain model of typed values.
class TestGalleryTablesSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomSequencesKeepEachCell()
    {
        runRandomSequences(
            Beside::actions(), [] { return std::make_unique<Beside>(false); }, 50000);
    }

    void theModelIsSound()
    {
        const QString difference = findDifference(
            Beside::actions(), [] { return std::make_unique<Beside>(true); }, randomSeed(), 1000);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
};

VRN_TEST(TestGalleryTablesSequence)
#include "tst_gallery_tables_sequence.moc"
