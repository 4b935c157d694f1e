#include <vrn/qt/cell_data.h>
#include <vrn/qt/i_validator.h>
#include <vrn/units/i_converter.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>

#include "members_model.h"
#include "members_table.h"
#include "support/any_to_string.h"
#include "support/clipboard_rules.h"
#include "support/random_seed.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace vrn::test;
using gallery::MembersModel;
using gallery::MembersTable;
using Quantity = vrn::units::IConverter::quantity;
namespace UnitId = vrn::units::UnitId;

namespace {

constexpr int valueColumns = MembersModel::Duplicate;
constexpr int mostRows = 9;

/// What a user types into a cell, and the value that this means; empty for a text that is
/// refused.
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

/// The rules, on plain rows of typed values, with the clipboard and the editor that is open.
class Rules : public ClipboardRules
{
public:
    using Row = std::array<boost::any, valueColumns>;

    struct Editor
    {
        int row;
        int column;
        QString text;
    };

    /// The validators are those of the model.
    explicit Rules(const MembersModel& model)
        : m_model(model)
    {}

    const boost::any& at(int row, int column) const
    {
        return rows[std::size_t(row)][std::size_t(column)];
    }
    /// The row of the building as it is. Its delegate stays at the top if rows are removed.
    static bool isLocked(int row) { return row == 0; }

    /// An editor shows what is stored in its cell meanwhile.
    void store(const Place& place, const boost::any& value)
    {
        if (!set(rows[std::size_t(place.row)], place.column, value))
            return;
        if (editor && editor->row == place.row && editor->column == place.column)
            refreshEditor();
    }

    // --- the editor ---

    void open(int row, int column)
    {
        const bool isTyped = column != MembersModel::Active && column < valueColumns;
        if (isLocked(row) || !isTyped)
            return;
        editor = Editor{row, column, {}};
        refreshEditor();
    }

    // The list of materials is a box for many values: another one than it shows varies from that,
    // and a box that varies writes nothing.
    void refreshEditor()
    {
        if (!editor)
            return;
        const QString text =
            validator(editor->column).reformat(at(editor->row, editor->column), {});
        const bool varies = editor->column == MembersModel::Material && !editor->text.isEmpty()
            && text != editor->text;
        editor->text = varies ? "*VARIES*" : text;
    }

    void commit()
    {
        if (!editor)
            return;
        const Editor closed = *std::exchange(editor, {});
        const boost::any value = meaning(closed.column, closed.text);
        if (!isLocked(closed.row) && !value.empty())
            set(rows[std::size_t(closed.row)], closed.column, value);
    }

    // --- rows ---

    void duplicate(int row)
    {
        const Row copied = rows[std::size_t(row)];
        rows.insert(rows.begin() + row + 1, copied);
        if (editor && editor->row > row)
            ++editor->row;
    }

    void remove(int row)
    {
        rows.erase(rows.begin() + row);
        if (editor && editor->row == row)
            editor.reset();
        else if (editor && editor->row > row)
            --editor->row;
    }

    // --- commands on the selected cells ---

    void clear(const std::vector<Place>& selected)
    {
        for (const Place& place : selected)
            store(place, {});
    }

    std::vector<Row> rows;
    std::optional<Editor> editor;

protected:
    int rowCount() const override { return int(rows.size()); }

    std::optional<QString> written(const Place& place) const override
    {
        if (place.column >= valueColumns)
            return {};
        const boost::any& value = at(place.row, place.column);
        return value.empty()
            ? QString()
            : validator(place.column).reformat(value, 1U << vrn::qt::ValidationFlagUserLocale);
    }

    void read(const Place& place, const QString& text) override
    {
        boost::any value;
        if (validator(place.column).validate(text, value, {}))
            store(place, value);
    }

    bool append(int column, const QStringList& line) override
    {
        const int row = rowCount();
        rows.push_back({std::wstring(), 235, {}, {}, {}, {}});
        for (const QString& text : line)
            read({row, column++}, text);
        return true;
    }

private:
    vrn::qt::IValidator& validator(int column) const { return *m_model.validator(column); }

    /// False if the column does not take the value.
    static bool set(Row& row, int column, const boost::any& value)
    {
        if (column >= valueColumns || (column == MembersModel::Material && value.empty()))
            return false;
        const bool clearsName = column == MembersModel::Name && value.empty();
        row[std::size_t(column)] = clearsName ? boost::any(std::wstring()) : value;
        return true;
    }

    boost::any meaning(int column, const QString& text) const
    {
        for (const Entry& entry : entries()) {
            if (entry.column == column && text == entry.text)
                return entry.value;
        }
        boost::any value;
        return validator(column).validate(text, value, {}) ? value : boost::any();
    }

    const MembersModel& m_model;
};

/// A table of the gallery beside the rules for it.
class Beside : public Subject
{
public:
    // A model tester takes most of the time.
    explicit Beside(bool hasTester)
    {
        if (hasTester)
            m_tester = std::make_unique<QAbstractItemModelTester>(
                &m_model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        m_table.resize(400, 150);
        m_table.show();
        QApplication::setActiveWindow(&m_table);
        QApplication::clipboard()->setText({});
        for (int row = 0; row < m_model.rowCount(); ++row)
            m_rules.rows.push_back(shown(row));
    }

    static QStringList actions()
    {
        QStringList names;
        for (const Action& action : allActions())
            names << action.first;
        return names;
    }

    QString perform(int action, unsigned argument) override
    {
        (this->*allActions()[std::size_t(action)].second)(argument);
        return difference();
    }

private:
    using Action = std::pair<const char*, void (Beside::*)(unsigned)>;

    static const std::vector<Action>& allActions()
    {
        static const std::vector<Action> all = {
            {"select", &Beside::select},
            {"extend", &Beside::extend},
            {"clear", &Beside::clear},
            {"copy", &Beside::copy},
            {"cut", &Beside::cut},
            {"another text", &Beside::takeText},
            {"paste", &Beside::paste},
            {"paste below", &Beside::pasteBelow},
            {"press a button", &Beside::pressButton},
            {"insert", &Beside::insert},
            {"remove", &Beside::remove},
            {"check", &Beside::check},
            {"system", &Beside::setSystem},
            {"move", &Beside::move},
            {"scroll", &Beside::scroll},
            {"open", &Beside::open},
            {"type", &Beside::type},
            {"open and type", &Beside::openAndType},
            {"end", &Beside::end},
        };
        return all;
    }

    int rowOf(unsigned argument) const
    {
        return static_cast<int>(argument % unsigned(m_model.rowCount()));
    }
    QModelIndex cellOf(unsigned argument, int columns = MembersModel::ColumnCount) const
    {
        const auto column = static_cast<int>((argument / 16U) % unsigned(columns));
        return m_model.index(rowOf(argument), column);
    }

    Rules::Row shown(int row) const
    {
        Rules::Row values;
        for (int column = 0; column < valueColumns; ++column) {
            values[std::size_t(column)] =
                m_model.index(row, column).data(vrn::qt::EditRole).value<boost::any>();
        }
        return values;
    }

    std::vector<Place> selected() const
    {
        std::vector<Place> places;
        for (const QModelIndex& index : m_table.selectionModel()->selectedIndexes())
            places.push_back({index.row(), index.column()});
        return places;
    }

    // Directly, because an exception that passes through Qt leaks memory.
    void press(int key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        m_table.keyPressEvent(&event);
    }

    void goTo(const QModelIndex& index)
    {
        if (index != m_table.currentIndex())
            m_rules.commit();
        m_table.selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    }

    // --- the selection ---

    void select(unsigned argument) { goTo(cellOf(argument)); }

    void extend(unsigned argument)
    {
        m_table.selectionModel()->select(QItemSelection(m_table.currentIndex(), cellOf(argument)),
            QItemSelectionModel::ClearAndSelect);
    }

    void move(unsigned argument)
    {
        const QModelIndex before = m_table.currentIndex();
        QTest::keyClick(&m_table, argument % 2U ? Qt::Key_Down : Qt::Key_Right);
        if (m_table.currentIndex() != before)
            m_rules.commit();
    }

    void scroll(unsigned argument)
    {
        m_table.scrollTo(cellOf(argument), QAbstractItemView::PositionAtTop);
    }

    // --- commands ---

    void clear(unsigned argument)
    {
        m_rules.clear(selected());
        QTest::keyClick(&m_table, argument % 2U ? Qt::Key_Delete : Qt::Key_Backspace);
    }

    void copy(unsigned /*argument*/)
    {
        m_rules.copy(selected());
        press(Qt::Key_C, Qt::ControlModifier);
        compareClipboard();
    }

    void cut(unsigned /*argument*/)
    {
        m_rules.copy(selected());
        m_rules.clear(selected());
        press(Qt::Key_X, Qt::ControlModifier);
        compareClipboard();
    }

    void compareClipboard()
    {
        const QString text = QApplication::clipboard()->text();
        if (text != m_rules.clipboard)
            m_difference = QString("the clipboard holds \"%1\" instead of \"%2\"")
                               .arg(text, m_rules.clipboard);
    }

    void takeText(unsigned argument)
    {
        static const std::array<const char*, 4> texts = {
            "S355", "8 ft", "one\tS460\ntwo\tS235\n", "left\tS275\t2 m2\nnew\tS999\t1 m\n"};
        m_rules.clipboard = texts[argument % texts.size()];
        QApplication::clipboard()->setText(m_rules.clipboard);
    }

    void paste(unsigned /*argument*/)
    {
        const std::vector<Place> places = selected();
        const auto lines = int(m_rules.clipboard.count('\n'));
        if (places.size() == 1 && places.front().row + lines > mostRows)
            return;
        const bool throws = !m_rules.paste(places);
        bool thrown = false;
        try {
            press(Qt::Key_V, Qt::ControlModifier);
        } catch (const std::out_of_range&) {
            thrown = true;
        }
        if (thrown != throws)
            m_difference = thrown ? "an exception" : "no exception";
    }

    void pasteBelow(unsigned argument)
    {
        goTo(m_model.index(m_model.rowCount() - 1, cellOf(argument).column()));
        paste(argument);
    }

    // --- the model ---

    void pressButton(unsigned argument)
    {
        if (m_model.rowCount() >= mostRows)
            return;
        const int row = rowOf(argument);
        const QModelIndex button = m_model.index(row, MembersModel::Duplicate);
        m_rules.commit();
        m_rules.duplicate(row);
        m_table.scrollTo(button);
        QTest::mouseClick(m_table.viewport(), Qt::LeftButton, Qt::NoModifier,
            m_table.visualRect(button).center());
    }

    void insert(unsigned argument)
    {
        if (m_model.rowCount() >= mostRows)
            return;
        m_rules.duplicate(rowOf(argument));
        m_model.duplicate(rowOf(argument));
    }

    void remove(unsigned argument)
    {
        if (m_model.rowCount() <= 2)
            return;
        m_rules.remove(rowOf(argument));
        m_model.removeRow(rowOf(argument));
    }

    void check(unsigned argument)
    {
        const int row = rowOf(argument);
        if (Rules::isLocked(row))
            return;
        goTo(m_model.index(row, MembersModel::Active));
        const auto* isActive = boost::any_cast<bool>(&m_rules.at(row, MembersModel::Active));
        m_rules.store({row, MembersModel::Active}, !(isActive && *isActive));
        QTest::keyClick(&m_table, Qt::Key_Space);
    }

    void setSystem(unsigned argument)
    {
        m_model.setUnitSystem(static_cast<int>(argument % 10U));
        m_rules.refreshEditor();
    }

    // --- the editor, which stays open for later steps ---

    QWidget* editor() const
    {
        QWidget* whole = m_table.indexWidget(m_table.currentIndex());
        auto* box = whole ? whole->findChild<QComboBox*>() : nullptr;
        return box ? box : whole;
    }

    void open(unsigned argument)
    {
        const QModelIndex cell = cellOf(argument, MembersModel::Active);
        goTo(cell);
        if (!m_rules.editor)
            m_rules.open(cell.row(), cell.column());
        QTest::keyClick(&m_table, Qt::Key_F2);
    }

    void type(unsigned argument)
    {
        if (!m_rules.editor || !editor())
            return;
        if (m_rules.editor->column == MembersModel::Material) {
            // Not End: the entry of a varying box is the last one.
            const auto& materials = MembersModel::materials();
            const std::size_t chosen = argument % materials.size();
            QTest::keyClick(editor(), Qt::Key_Home);
            for (std::size_t i = 0; i < chosen; ++i)
                QTest::keyClick(editor(), Qt::Key_Down);
            m_rules.editor->text = materials[chosen].first;
            return;
        }
        std::vector<const char*> texts;
        for (const Entry& entry : entries()) {
            if (entry.column == m_rules.editor->column)
                texts.push_back(entry.text);
        }
        const char* text = texts[argument % texts.size()];
        QTest::keyClick(editor(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(editor(), Qt::Key_Delete);
        QTest::keyClicks(editor(), text);
        m_rules.editor->text = text;
    }

    void openAndType(unsigned argument)
    {
        open(argument);
        type(argument / 256U);
    }

    void end(unsigned argument)
    {
        if (!m_rules.editor || !editor())
            return;
        switch (argument % 5U) {
        case 0:
            m_rules.commit();
            QTest::keyClick(editor(), Qt::Key_Return);
            break;
        case 1:
            walk(1, Qt::Key_Tab, Qt::NoModifier);
            break;
        case 2:
            walk(-1, Qt::Key_Backtab, Qt::ShiftModifier);
            break;
        case 3:
            m_rules.commit();
            m_table.setFocus();
            break;
        default:
            m_rules.editor.reset();
            QTest::keyClick(editor(), Qt::Key_Escape);
            break;
        }
    }

    // The next cell is edited then.
    void walk(int step, Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        const int cells = m_model.rowCount() * MembersModel::ColumnCount;
        const int from = m_rules.editor->row * MembersModel::ColumnCount + m_rules.editor->column;
        const int to = (from + step + cells) % cells;
        m_rules.commit();
        QTest::keyClick(editor(), key, modifiers);
        m_rules.open(to / MembersModel::ColumnCount, to % MembersModel::ColumnCount);
    }

    // Not after each step: the other events that are posted make this slow.
    void deleteClosedEditors() const
    {
        const int open = m_rules.editor ? 1 : 0;
        if (m_table.viewport()->children().size() > open)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QString difference()
    {
        deleteClosedEditors();
        if (!m_difference.isEmpty())
            return m_difference;
        if (m_model.rowCount() != static_cast<int>(m_rules.rows.size()))
            return QString("%1 rows instead of %2")
                .arg(m_model.rowCount())
                .arg(m_rules.rows.size());
        for (int row = 0; row < m_model.rowCount(); ++row) {
            const Rules::Row values = shown(row);
            for (int column = 0; column < valueColumns; ++column) {
                const boost::any& is = values[std::size_t(column)];
                if (!isSame(is, m_rules.at(row, column)))
                    return QString("%1,%2 is %3 instead of %4")
                        .arg(row)
                        .arg(column)
                        .arg(textOf(is), textOf(m_rules.at(row, column)));
            }
        }
        return differenceOfEditor();
    }

    QString differenceOfEditor() const
    {
        const QWidget* is = editor();
        const auto& due = m_rules.editor;
        if (!is || !due)
            return is ? "an editor is open" : due ? "no editor is open" : "";
        if (m_table.currentIndex() != m_model.index(due->row, due->column))
            return "the editor is in another cell";
        const auto* box = qobject_cast<const QComboBox*>(is);
        const auto* edit = qobject_cast<const QLineEdit*>(is);
        const QString text = box ? box->currentText() : edit ? edit->text() : "no text";
        // An editor that has come into the first row shows no values.
        if (Rules::isLocked(due->row) || text == due->text)
            return {};
        return QString("the editor shows \"%1\" instead of \"%2\"").arg(text, due->text);
    }

    MembersModel m_model{MembersModel::building(5)};
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    MembersTable m_table{&m_model};
    Rules m_rules{m_model};
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
