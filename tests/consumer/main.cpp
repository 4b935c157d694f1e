// What a first program does with the library. That it reads 12.5 shows that the
// libraries are found, linked and loaded; main returns non-zero otherwise.

#include <vrn/assert/smart_assert.h>
#include <vrn/environment/environment.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/validators.h>
#include <vrn/units/unknown_unit.h>

#include <QApplication>

#include <cstdio>
#include <string>

namespace {

// True if the library reports a broken contract to the handler of this program.
// It does not when the program and the library have different companions.
bool reportArrives()
{
    int reports = 0;
    auto previous = vrn::smartassert::set_assert_handler(
        [&reports](const vrn::smartassert::AssertReport&) { ++reports; });
    const vrn::qt::DoubleEditValidator inverted(2, 1.0, 0.0, true);
    vrn::smartassert::set_assert_handler(previous);
    return reports == 1;
}

bool fieldHoldsNumber()
{
    auto* field = vrn::qt::SimpleLineEdit::create(nullptr, "Span",
        new vrn::qt::DoubleEditValidator(2, 0.0, 100.0, true), 0, vrn::qt::ExpandHorizontal);
    field->setValue(12.5);
    const boost::any value = field->getValue();
    delete field;
    return boost::any_cast<double>(value) == 12.5;
}

// The exception's type has one identity on both sides of the library's border.
bool unknownUnitIsCaught()
{
    try {
        throw vrn::units::UnknownUnit("furlong");
    } catch (const std::runtime_error& error) {
        return std::string(error.what()).find("furlong") != std::string::npos;
    }
}

// A package that was moved after it was built is not where the library looks by
// itself; its own CMake files tell where the icons are.
bool installedIconIsFound()
{
#ifdef VRN_QT2_DATA_DIR
    vrn::app::Environment::instance().getPaths({}).addPath(VRN_QT2_DATA_DIR);
    const auto icon = vrn::qt::Pixmap::create(L"control_repeat_blue.png");
    return icon && icon->size() == QSize(32, 32);
#else
    return true;
#endif
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const bool passed = reportArrives() && fieldHoldsNumber() && unknownUnitIsCaught()
        && installedIconIsFound();
    std::puts(passed ? "passed" : "failed");
    return passed ? 0 : 1;
}
