#include <vrn/base/any_predicates.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/validators.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QToolButton>

#include <functional>
#include <memory>
#include <vector>

#include "comparison.h"

namespace bench {
namespace {

using namespace vrn::qt;
using Quantity = vrn::units::IConverter::quantity;
using Differ = bool (*)(const boost::any&, const boost::any&);
namespace UnitId = vrn::units::UnitId;

// The property page of a member: forty controls, some of every kind.
constexpr int numbers = 10;
constexpr int quantities = 8;
constexpr int texts = 6;
constexpr int lists = 6;
constexpr int checks = 6;
constexpr int radios = 2;
constexpr int files = 2;
static_assert(numbers + quantities + texts + lists + checks + radios + files == 40);

const NamedValueList& grades()
{
    static const NamedValueList entries = {{QStringLiteral("S235"), 235},
        {QStringLiteral("S275"), 275}, {QStringLiteral("S355"), 355}};
    return entries;
}

QString caption(int row)
{
    return QStringLiteral("Property %1").arg(row);
}

class Page : public QWidget
{
public:
    Page()
    {
        const boost::shared_ptr<IValidator> number(new DoubleEditValidator(2, 0.0, 100.0, false));
        const boost::shared_ptr<IValidator> text(new StringEditValidator(40));
        const boost::shared_ptr<IValidator> length(
            new UnitValidator(vrn::units::Context(), UnitId::GEO_LENGTH));
        repeat(numbers, [&] { addLineEdit(number, 12.5, &vrn::any_differ<double>); });
        repeat(quantities, [&] {
            addLineEdit(length, Quantity{UnitId::GEO_LENGTH, 7.62}, &differAsQuantities);
        });
        repeat(texts, [&] {
            addLineEdit(text, std::wstring(L"north wing"), &vrn::any_differ<std::wstring>);
        });
        repeat(lists, [&] {
            auto* box = MultiEditEnumBox::create(this, nextCaption(), &vrn::any_equal<int>);
            box->setValues(grades());
            add(box, 275, &vrn::any_differ<int>);
        });
        repeat(checks, [&] {
            add(MultiEditCheckBox::create(nextCaption(), this), true, &vrn::any_differ<bool>);
        });
        repeat(radios, [&] {
            HBoxLayouter row;
            add(MultiEditRadioButtonGroup::create(nextCaption(), grades(), &vrn::any_equal<int>,
                    &vrn::any_less<int>, this, &row, true, false),
                275, &vrn::any_differ<int>);
        });
        repeat(files, [&] {
            m_layout->addWidget(new QLabel(nextCaption()), m_layout->rowCount(), 0);
            add(new MultiEditFilePicker(this, TypeofPathFile), std::string("/models/a.frame"),
                &vrn::any_differ<std::string>);
        });
    }

    void read(int objects)
    {
        for (const Property& property : m_properties)
            readInto(*property.control, property.value, objects);
    }

    void readBare(int objects)
    {
        for (const Property& property : m_properties) {
            MultiEditValue value(property.differ);
            readInto(value, property.value, objects);
        }
    }

private:
    struct Property
    {
        MultiEditControlBase* control;
        boost::any value;
        Differ differ;
    };

    static bool differAsQuantities(const boost::any& a, const boost::any& b)
    {
        const auto& left = boost::any_cast<const Quantity&>(a);
        const auto& right = boost::any_cast<const Quantity&>(b);
        return left.unit_id != right.unit_id || left.value != right.value;
    }

    static void readInto(MultiEditControlBase& control, const boost::any& value, int objects)
    {
        control.reset();
        for (int object = 0; object < objects; ++object)
            control.readValue(value);
        if (control.dataVaries() || control.getCurrentValue().empty())
            qFatal("the selection was not read");
    }

    static void repeat(int count, const std::function<void()>& make)
    {
        for (int i = 0; i < count; ++i)
            make();
    }

    QString nextCaption() const { return caption(static_cast<int>(m_properties.size())); }

    void addLineEdit(
        const boost::shared_ptr<IValidator>& validator, const boost::any& value, Differ differ)
    {
        add(MultiEditLineEdit::create(this, nextCaption(), validator, 0, ExpandHorizontal), value,
            differ);
    }

    template <typename Control>
    void add(Control* control, const boost::any& value, Differ differ)
    {
        m_layout->addWidget(control, m_layout->rowCount(), 1);
        m_properties.push_back({control, value, differ});
    }

    QGridLayout* m_layout = new QGridLayout(this);
    std::vector<Property> m_properties;
};

void show(QWidget& page)
{
    page.show();
    QCoreApplication::processEvents();
}

void showPage()
{
    Page page;
    show(page);
}

void showPlainPage()
{
    QWidget page;
    auto* layout = new QGridLayout(&page);
    int row = 0;
    const auto add = [&](QWidget* widget) {
        layout->addWidget(new QLabel(caption(row)), row, 0);
        layout->addWidget(widget, row++, 1);
    };
    while (row < numbers + quantities + texts)
        add(new QLineEdit);
    for (int i = 0; i < lists; ++i) {
        auto* box = new QComboBox;
        for (const auto& entry : grades())
            box->addItem(entry.first, boost::any_cast<int>(entry.second));
        add(box);
    }
    for (int i = 0; i < checks; ++i, ++row)
        layout->addWidget(new QCheckBox(caption(row)), row, 1);
    for (int i = 0; i < radios; ++i, ++row) {
        auto* box = new QGroupBox(caption(row));
        auto* buttons = new QHBoxLayout(box);
        for (const auto& entry : grades())
            buttons->addWidget(new QRadioButton(entry.first));
        layout->addWidget(box, row, 1);
    }
    for (int i = 0; i < files; ++i) {
        auto* picker = new QWidget;
        auto* parts = new QHBoxLayout(picker);
        parts->setContentsMargins(0, 0, 0, 0);
        parts->addWidget(new QLineEdit);
        parts->addWidget(new QToolButton);
        add(picker);
    }
    show(page);
}

} // namespace

void addPropertyPageComparisons()
{
    const auto page = std::make_shared<Page>();
    add({"property page/40 controls shown", "the same of plain Qt widgets", 2.0, &showPage,
        &showPlainPage});
    add({"property page/read from 10000 objects", "40 bare MultiEditValues", 3.0,
        [=] { page->read(10000); }, [=] { page->readBare(10000); }});
    add({"property page/read from 100000 objects at once", "from 1000 objects, 100 times", 1.3,
        [=] { page->read(100000); },
        [=] {
            for (int i = 0; i < 100; ++i)
                page->read(1000);
        }});
}

} // namespace bench
