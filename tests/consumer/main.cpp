// A first program that uses the library. It reads 12.5, which shows that the libraries are
// found, linked and loaded. If anything is wrong, main returns a non-zero value.

#include <vrn/assert/smart_assert.h>
#include <vrn/environment/environment.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/validators.h>
#include <vrn/units/unknown_unit.h>

#include <QApplication>

#include <cstdio>
#include <string>

namespace {

// Whether the library reports a broken contract to this program's handler. It does not if
// the program and the library use different companions.
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

// The program can catch an exception type that the library throws.
bool unknownUnitIsCaught()
{
    try {
        throw vrn::units::UnknownUnit("furlong");
    } catch (const std::runtime_error& error) {
        return std::string(error.what()).find("furlong") != std::string::npos;
    }
}

// The library does not find the icons of a package that was moved after it was built. The
// CMake files of the package say where they are.
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
