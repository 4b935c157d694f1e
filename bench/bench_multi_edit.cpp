#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/unit_validator.h>

#include <QtGlobal>

#include <memory>
#include <vector>

#include "comparison.h"

namespace bench {
namespace {

using namespace vrn::qt;
using Quantity = vrn::units::IConverter::quantity;
using Selection = std::vector<boost::any>;
namespace UnitId = vrn::units::UnitId;

constexpr std::size_t objects = 100000;

// The values of a selection, as its model returns them.
std::shared_ptr<const Selection> selection(double first, double others)
{
    auto values = std::make_shared<Selection>(objects, Quantity{UnitId::GEO_LENGTH, others});
    values->front() = Quantity{UnitId::GEO_LENGTH, first};
    return values;
}

void read(MultiEditLineEdit& field, const Selection& values, bool varies)
{
    field.reset();
    for (const boost::any& value : values)
        field.readValue(value);
    if (field.dataVaries() != varies)
        qFatal("the selection was not read");
}

// The least that a program must do to compare the values of a selection.
void readBare(const Selection& values, bool varies)
{
    boost::any common;
    bool differ = false;
    for (const boost::any& value : values) {
        const boost::any copy = value;
        if (common.empty())
            common = copy;
        else if (boost::any_cast<const Quantity&>(copy).value
            != boost::any_cast<const Quantity&>(common).value)
            differ = true;
    }
    if (differ != varies)
        qFatal("the selection was not read");
}

} // namespace

void addMultiEditComparisons()
{
    const std::shared_ptr<MultiEditLineEdit> field(MultiEditLineEdit::create(nullptr, QString(),
        new UnitValidator(vrn::units::Context(), UnitId::GEO_LENGTH), 0, ExpandHorizontal));
    const auto common = selection(7.62, 7.62);
    const auto varying = selection(7.62, 8.0);

    add({"multi-edit/100000 equal quantities", "a copy of each boost::any, doubles compared", 10.0,
        [=] { read(*field, *common, false); }, [=] { readBare(*common, false); }});
    // The field only tests a flag for each value, while the loop copies it.
    add({"multi-edit/100000 quantities that vary from the second on",
        "a copy of each boost::any, doubles compared", 0.5, [=] { read(*field, *varying, true); },
        [=] { readBare(*varying, true); }});
}

} // namespace bench
