#pragma once

// What an example takes for granted: it stands in a function of a form that edits the
// selected beams of a model.

#include <vrn/assert/smart_assert.h>
#include <vrn/base/any_predicates.h>
#include <vrn/q/input_context.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/delegates.h>
#include <vrn/qt/factories.h>
#include <vrn/qt/object_model.h>
#include <vrn/qt/property_selection.h>
#include <vrn/qt/property_table_model.h>
#include <vrn/qt/table_view.h>
#include <vrn/qt/validators.h>
#include <vrn/units/units.h>

#include <boost/make_shared.hpp>

#include <QApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QTableView>
#include <QUndoStack>

#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using namespace vrn;
using namespace vrn::qt;
using namespace vrn::units;

struct Beam
{
    double depth = 10.0 / 3.0; // More digits than a field shows.
    IConverter::quantity span{UnitId::GEO_LENGTH, 10.0 / 3.0};
    int grade = 235;
    bool isVisible = true;
    bool isProtected = false;

    bool isFixed(std::size_t direction) const { return direction == 0; }

    bool operator==(const Beam& other) const
    {
        return depth == other.depth && span == other.span && grade == other.grade
            && isVisible == other.isVisible && isProtected == other.isProtected;
    }
};

using Selection = std::vector<Beam>;

struct Model
{
    void setDepth(Selection& selection, double depth)
    {
        for (Beam& beam : selection)
            beam.depth = depth;
    }
    void setVisible(Selection& selection, bool visible)
    {
        for (Beam& beam : selection)
            beam.isVisible = visible;
    }

    // What belongs to no beam.
    void setGrade(const boost::any&) {}
    void setSections(const std::string&) {}
    void setSpan(double) {}
};

class Form : public QWidget
{
public:
    ~Form() override
    {
        // The field with the focus ends its editing while the slots have their members.
        hide();
    }

    virtual void run() = 0;

    QWidget* const form = this;
    const double minimum = 0.0;
    const double maximum = 100.0;
    boost::any m_shown;
    Model model;
    Selection selection{2};
};

struct Example
{
    const char* place;
    std::unique_ptr<Form> (*make)();
};

std::vector<Example>& examples();

template <typename Function>
struct ExampleEntry
{
    explicit ExampleEntry(const char* place)
    {
        examples().push_back(
            {place, []() -> std::unique_ptr<Form> { return std::make_unique<Function>(); }});
    }
};
