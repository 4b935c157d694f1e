#include <vrn/base/any_predicates.h>
#include <vrn/qt/simple_enum_box.h>

#include <QApplication>
#include <QComboBox>

#include <memory>
#include <string>

#include "comparison.h"

namespace bench {
namespace {

using namespace vrn::qt;

NamedValueList entries(int count)
{
    NamedValueList values;
    for (int i = 0; i < count; ++i)
        values.emplace_back(QStringLiteral("Entry %1").arg(i), i);
    return values;
}

// Both are filled and sized, and the last entry is selected: its search takes longest.
void useEnumBox(SimpleEnumBox& box, const NamedValueList& values)
{
    box.setValues(values);
    box.adjustSize();
    box.selectByValue(values.back().second);
    if (boost::any_cast<int>(box.getSelectedValue()) != static_cast<int>(values.size()) - 1)
        qFatal("the enum box selected another entry");
}

void useComboBox(QComboBox& box, const NamedValueList& values)
{
    box.clear();
    for (const auto& [name, value] : values)
        box.addItem(name, boost::any_cast<int>(value));
    box.setMinimumWidth(box.sizeHint().width());
    box.adjustSize();
    box.setCurrentIndex(box.findData(static_cast<int>(values.size()) - 1));
    if (box.currentData().toInt() != static_cast<int>(values.size()) - 1)
        qFatal("the combo box selected another entry");
}

void addComparison(int count)
{
    struct Sides
    {
        QWidget form;
        SimpleEnumBox* ours = SimpleEnumBox::create(&form, {}, &vrn::any_equal<int>);
        QComboBox* theirs = new QComboBox(&form);
        NamedValueList values;
    };
    const auto sides = std::make_shared<Sides>();
    sides->values = entries(count);
    sides->theirs->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    add({"enum box/" + std::to_string(count) + " entries", "QComboBox", 2.0,
        [sides] { useEnumBox(*sides->ours, sides->values); },
        [sides] { useComboBox(*sides->theirs, sides->values); }});
}

// One box is compared with ten boxes that have a tenth of its entries each.
void addGrowth(bool editable)
{
    const auto form = std::make_shared<QWidget>();
    const auto makeBox = [form, editable] {
        SimpleEnumBox* box = SimpleEnumBox::create(form.get(), {}, &vrn::any_equal<int>);
        box->setEditable(editable);
        return box;
    };
    SimpleEnumBox* large = makeBox();
    SimpleEnumBox* small = makeBox();
    const auto many = std::make_shared<NamedValueList>(entries(5000));
    const auto few = std::make_shared<NamedValueList>(entries(500));
    const auto select = [form](SimpleEnumBox* box, const NamedValueList& values) {
        box->setValues(values);
        box->adjustSize();
        box->selectByValue(values.back().second);
    };
    const std::string kind = editable ? "editable, " : "";
    add({"enum box/" + kind + "5000 entries at once", "500 entries ten times", 1.5,
        [=] { select(large, *many); },
        [=] {
            for (int i = 0; i < 10; ++i)
                select(small, *few);
        }});
}

} // namespace

void addEnumBoxComparisons()
{
    addComparison(500);
    addComparison(5000);
    addGrowth(false);
    addGrowth(true);
}

} // namespace bench
