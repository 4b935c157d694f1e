// Runs the examples, and uses the fields that they have made as a user does. main
// returns non-zero if something is reported or comes out otherwise.

#include "form.h"

#include <cstdio>

namespace {

int failures = 0;

void check(bool passed, const char* what)
{
    if (!passed) {
        ++failures;
        std::printf("    failed: %s\n", what);
    }
}

void onMessage(QtMsgType, const QMessageLogContext&, const QString& text)
{
    // The offscreen platform says this of every window.
    check(text.startsWith("This plugin does not support "), qPrintable(text));
}

void press(QWidget* widget, int key, const QString& text)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(widget, &event);
    }
}

void use(Form& form)
{
    const auto edits = form.findChildren<QLineEdit*>();
    const QLineEdit elsewhere(&form);
    form.show();
    form.activateWindow();
    QApplication::processEvents();

    const Selection before = form.selection;
    for (QLineEdit* edit : edits) {
        if (!edit->isVisible())
            continue;
        edit->setFocus();
        check(edit->hasFocus(), "a field takes the focus");
        press(edit, Qt::Key_Return, "\r");
        press(edit, Qt::Key_Tab, "\t");
        check(!edit->hasFocus(), "Tab leaves the field");
    }
    check(form.selection == before, "Tab and Enter in an untouched field write nothing");

    for (QLineEdit* edit : edits) {
        if (edit->accessibleName() != "Depth")
            continue;
        edit->setFocus();
        edit->selectAll();
        press(edit, Qt::Key_2, "2");
        press(edit, Qt::Key_Return, "\r");
        for (const Beam& beam : form.selection)
            check(beam.depth == 2.0, "a depth that is entered is written");
    }
}

} // namespace

std::vector<Example>& examples()
{
    static std::vector<Example> all;
    return all;
}

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    qInstallMessageHandler(onMessage);
    vrn::smartassert::set_assert_handler([](const vrn::smartassert::AssertReport& report) {
        check(false, ("assertion " + report.expression).c_str());
    });
    for (const Example& example : examples()) {
        std::puts(example.place);
        std::fflush(stdout); // Before a crash.
        const auto form = example.make();
        form->run();
        use(*form);
    }
    std::printf("%zu examples, %d failures\n", examples().size(), failures);
    return examples().empty() || failures != 0 ? 1 : 0;
}
