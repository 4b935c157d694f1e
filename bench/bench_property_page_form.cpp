#include <vrn/qt/property_page.h>

#include <QApplication>
#include <QLineEdit>
#include <QPixmap>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "comparison.h"
#include "property_project.h"

namespace bench {
namespace {

namespace UnitId = vrn::units::UnitId;

constexpr std::size_t manyRows = 200;
constexpr std::size_t manySections = 10;
constexpr std::size_t openSections = 2;
constexpr std::size_t rowsOfSection = manyRows / manySections;

/// A page on all objects of a project. They are read as an edit from elsewhere makes it do.
struct ProjectPage
{
    explicit ProjectPage(std::size_t count)
        : project(count)
    {
        page.setModel(&project.model);
        page.setUndoStack(&project.stack);
        page.setSelection(project.ids);
        page.resize(400, 1400);
        page.show();
        page.flush();
    }

    void read()
    {
        project.model.announce();
        settle();
    }
    void edit()
    {
        value = value == 12.5 ? 7.62 : 12.5;
        page.setValue("length0", value);
        settle();
    }
    void undoAndRedo()
    {
        if (project.stack.canUndo())
            project.stack.undo();
        else
            project.stack.redo();
        settle();
    }
    void settle()
    {
        project.model.flush();
        page.flush();
    }

    Project project;
    PropertyPage page;
    double value = 12.5;
};

/// The objects of a project on many pages.
struct PageParts
{
    explicit PageParts(std::size_t count)
        : project(count)
    {}

    void read()
    {
        constexpr std::ptrdiff_t size = 1000;
        // To make them takes longer than to read.
        if (pages.empty()) {
            for (auto first = project.ids.begin(); first != project.ids.end(); first += size) {
                pages.push_back(std::make_unique<PropertyPage>());
                pages.back()->setModel(&project.model);
                pages.back()->setSelection(ObjectIds(first, first + size));
                pages.back()->show();
            }
        }
        project.model.announce();
        project.model.flush();
        for (const auto& page : pages)
            page->flush();
    }

    Project project;
    std::vector<std::unique_ptr<PropertyPage>> pages;
};

struct Rows
{
    std::array<double, manyRows> values{};
};

/// One object with lengths in sections, some of which are open.
struct LengthRows
{
    LengthRows(std::size_t sections, std::size_t open)
    {
        PropertySet<Rows> set("rows", [](int n) { return QString::number(n); });
        for (std::size_t i = 0; i < sections * rowsOfSection; ++i) {
            const std::size_t section = i / rowsOfSection;
            if (i % rowsOfSection == 0) {
                set.section(
                    "section" + std::to_string(section), QString::number(section), section < open);
            }
            rows.values[i] = 1.0 + double(i) / 7.0;
            set.add(
                keyOf(i), QStringLiteral("Length %1").arg(i),
                [i](const Rows& each) { return each.values[i]; },
                [i](Rows& each, double value) { each.values[i] = value; },
                vrn::qt::field::quantity(UnitId::GEO_LENGTH));
        }
        model.addKind(set, [this](ObjectId) { return &rows; });
    }

    static std::string keyOf(std::size_t row) { return "row" + std::to_string(row); }

    std::unique_ptr<PropertyPage> show()
    {
        auto page = std::make_unique<PropertyPage>();
        page->setModel(&model);
        page->setSelection({0});
        page->resize(400, 900);
        page->show();
        page->flush();
        page->grab();
        return page;
    }

    Rows rows;
    ObjectModel model;
};

/// All rows open, in two systems by turns.
struct Units
{
    Units()
        : lengths(manySections, manySections)
        , others(manySections, manySections)
        , page(lengths.show())
        , byHand(others.show())
    {
        for (std::size_t i = 0; i < manyRows; ++i) {
            QWidget* const editor = byHand->editor(LengthRows::keyOf(i));
            auto* const edit = qobject_cast<QLineEdit*>(editor);
            edits.push_back(edit ? edit : editor->findChild<QLineEdit*>());
        }
    }

    const vrn::units::Context& next()
    {
        isMetric = !isMetric;
        return isMetric ? metric : customary;
    }
    void setByHand()
    {
        const vrn::units::Context& units = next();
        for (std::size_t i = 0; i < manyRows; ++i)
            edits[i]->setText(field.text(others.rows.values[i], units));
    }
    void change()
    {
        lengths.model.setUnits(next());
        lengths.model.flush();
        page->flush();
    }

    LengthRows lengths;
    LengthRows others;
    std::unique_ptr<PropertyPage> page;
    std::unique_ptr<PropertyPage> byHand;
    std::vector<QLineEdit*> edits;
    const Field field = vrn::qt::field::quantity(UnitId::GEO_LENGTH);
    bool isMetric = true;
    const vrn::units::Context metric{0};
    const vrn::units::Context customary{8};
};

} // namespace

void addPropertyPageFormComparisons()
{
    const auto usual = std::make_shared<ProjectPage>(10000);
    const auto large = std::make_shared<ProjectPage>(100000);
    const auto parts = std::make_shared<PageParts>(100000);
    const auto undone = std::make_shared<ProjectPage>(10000);
    undone->edit();
    add({"property page form/read 40 properties of 10000 objects", "40 bare loops", 3.0,
        [=] { usual->read(); }, [=] { usual->project.readBare(); }});
    add({"property page form/read from 100000 objects at once", "the same, by pages of 1000", 1.3,
        [=] { large->read(); }, [=] { parts->read(); }});
    add({"property page form/edit 10000 objects", "bare loops that keep, set and read back", 2.0,
        [=] { usual->edit(); }, [=] { usual->project.editBare(); }});
    add({"property page form/undo it", "the same loops", 2.0, [=] { undone->undoAndRedo(); },
        [=] { undone->project.editBare(); }});

    const auto folded = std::make_shared<LengthRows>(manySections, openSections);
    const auto open = std::make_shared<LengthRows>(openSections, openSections);
    add({"property page form/200 rows in ten sections, two open", "the two sections alone", 1.3,
        [=] { folded->show(); }, [=] { open->show(); }});
    const auto units = std::make_shared<Units>();
    add({"property page form/change of units over 200 rows", "setText() of the same texts", 2.0,
        [=] { units->change(); }, [=] { units->setByHand(); }});
}

} // namespace bench
