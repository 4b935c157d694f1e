#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QStyleFactory>
#include <QVBoxLayout>

#include "controls/parts/readable_colours_p.h"
#include "support/contrast.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>

using namespace vrn::test;
using vrn::qt::detail::laidOver;
using vrn::qt::detail::ReadableColours;
using vrn::qt::detail::readableOn;

namespace {

const QString black = "QLineEdit { color: #000; }";
const QString red = "QLineEdit { color: #e61414; }";

QPalette darkPalette()
{
    QPalette palette(QColor(53, 53, 53), QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, QColor(240, 240, 240));
    return palette;
}

// With Qt 6, windows hear of it through the event loop.
void setApplicationPalette(const QPalette& palette)
{
    QApplication::setPalette(palette);
    QCoreApplication::processEvents();
}

// An edit in a window, on a dark palette.
struct Form
{
    Form()
        : edit(new QLineEdit("123"))
        , other(new QLineEdit)
        , colours(new ReadableColours(edit))
    {
        setApplicationPalette(darkPalette());
        auto* rows = new QVBoxLayout(&window);
        rows->addWidget(other);
        rows->addWidget(edit);
        window.show();
    }

    Legibility found() const { return legibility(*edit, QRect(4, 3, 30, edit->height() - 6)); }

    QColor colour(QPalette::ColorRole role) const { return edit->palette().color(role); }

    QWidget window;
    QLineEdit* edit;
    QLineEdit* other;
    ReadableColours* colours;
};

using Step = std::function<void(Form&)>;

} // namespace

Q_DECLARE_METATYPE(Step)

class TestReadableColours : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        qApp->setStyleSheet(QString());
        QApplication::setStyle(QStyleFactory::create("fusion"));
        setApplicationPalette(QPalette());
        TestObject::cleanup();
    }

    void theTextStaysReadable_data()
    {
        const auto light = QPalette(QColor(239, 239, 239));
        columns<Step>("step");
        row("at once", Step([](Form&) {}));
        row("when another style sheet follows",
            Step([](Form& f) { f.colours->setStyleSheet(red); }));
        row("when the application sets a dark ground", Step([](Form& f) {
            QPalette palette = f.edit->palette();
            palette.setColor(QPalette::Base, QColor(60, 0, 0));
            f.edit->setPalette(palette);
        }));
        row("when the application sets a dark ground and no more", Step([](Form& f) {
            QPalette palette;
            palette.setColor(QPalette::Base, QColor(60, 0, 0));
            f.edit->setPalette(palette);
        }));
        row("when the palette gets light", Step([=](Form&) { setApplicationPalette(light); }));
        row("when the palette gets light and dark again", Step([=](Form&) {
            setApplicationPalette(light);
            setApplicationPalette(darkPalette());
        }));
        row("when the window gets a palette", Step([=](Form& f) {
            f.window.setPalette(light);
            f.window.setPalette(darkPalette());
        }));
        row("when the window gets a style sheet",
            Step([](Form& f) { f.window.setStyleSheet("QSlider { margin: 1px; }"); }));
        row("when the window loses its style sheet", Step([](Form& f) {
            f.window.setStyleSheet("QSlider { margin: 1px; }");
            f.window.setStyleSheet(QString());
        }));
        row("when the application gets a style sheet",
            Step([](Form&) { qApp->setStyleSheet("QLineEdit { selection-color: red; }"); }));
        row("when the style changes",
            Step([](Form&) { QApplication::setStyle(QStyleFactory::create("windows")); }));
        row("when the edit is read-only", Step([](Form& f) { f.edit->setReadOnly(true); }));
        row("when the edit moves to another window", Step([](Form& f) {
            QWidget other;
            f.edit->setParent(&other);
            other.grab();
            f.window.layout()->addWidget(f.edit);
        }));
    }

    void theTextStaysReadable()
    {
        QFETCH(Step, step);
        Form form;
        form.colours->setStyleSheet(black);
        step(form);
        const Legibility found = form.found();
        QVERIFY2(
            found.contrast >= 4.5, qPrintable(found.text.name() + " on " + found.ground.name()));
    }

    void theApplicationsChangeOfACopiedPaletteStays()
    {
        Form form;
        form.colours->setStyleSheet(black);
        QPalette palette = form.edit->palette();
        palette.setColor(QPalette::Highlight, Qt::magenta);
        form.edit->setPalette(palette);
        form.colours->setStyleSheet(red);
        QCOMPARE(form.colour(QPalette::Highlight), QColor(Qt::magenta));
        form.edit->setStyleSheet(QString());
        QCOMPARE(form.colour(QPalette::Highlight), QColor(Qt::magenta));
        QCOMPARE(form.colour(QPalette::Base), QColor(35, 35, 35));
        QCOMPARE(form.colour(QPalette::Text), QColor(240, 240, 240));
    }

    void aStyleSheetOfTheApplicationIsLeftAlone()
    {
        Form form;
        form.colours->setStyleSheet(black);
        const QString theirs = "QLineEdit { color: #404040; background-color: #303030; }";
        form.edit->setStyleSheet(theirs);
        form.other->setStyleSheet(theirs);
        QCOMPARE(form.colour(QPalette::Text), form.other->palette().color(QPalette::Text));
        QCOMPARE(form.colour(QPalette::Base), form.other->palette().color(QPalette::Base));
        form.edit->setStyleSheet(QString());
        QCOMPARE(form.colour(QPalette::Text), QColor(240, 240, 240));
        QCOMPARE(form.colour(QPalette::Base), QColor(35, 35, 35));
    }

    // The application may copy the palette to another edit.
    void aPaletteBesideAStyleSheetOfTheApplicationHasNoMark()
    {
        Form form;
        form.colours->setStyleSheet(black);
        form.edit->setStyleSheet("QLineEdit { margin: 1px; }");
        QCOMPARE(form.colour(QPalette::NoRole), form.other->palette().color(QPalette::NoRole));
        form.edit->setStyleSheet(QString());
        QCOMPARE(form.colour(QPalette::Base), QColor(35, 35, 35));
    }

    void coloursOfTheApplicationsStyleSheetGoWithIt()
    {
        Form form;
        form.edit->setReadOnly(true);
        form.edit->setStyleSheet("QLineEdit { selection-background-color: #00ff00; }");
        QCOMPARE(form.colour(QPalette::Highlight), QColor("#00ff00"));
        form.edit->setStyleSheet(QString());
        QCOMPARE(
            form.colour(QPalette::Highlight), form.other->palette().color(QPalette::Highlight));
    }

    void coloursOfTheApplicationsStyleSheetStay()
    {
        qApp->setStyleSheet("QLineEdit { selection-background-color: #00ff00; }");
        Form form;
        form.colours->setStyleSheet(black);
        QCOMPARE(form.colour(QPalette::Highlight), QColor("#00ff00"));
        form.colours->setStyleSheet(red);
        QCOMPARE(form.colour(QPalette::Highlight), QColor("#00ff00"));
        form.edit->setStyleSheet(QString());
        QCOMPARE(form.colour(QPalette::Highlight), QColor("#00ff00"));
        QCOMPARE(form.colour(QPalette::Base), QColor(35, 35, 35));
    }

    void aPartOfAStyledWidgetIsReadable()
    {
        setApplicationPalette(darkPalette());
        QWidget window;
        auto* panel = new QWidget(&window);
        panel->setStyleSheet("* { background-color: white; }");
        auto* rows = new QVBoxLayout(panel);
        auto* label = new QLabel("1234");
        rows->addWidget(label);
        new ReadableColours(label, panel);
        window.show();
        QVERIFY(legibility(*label, label->rect()).contrast >= 4.5);
        setApplicationPalette(QPalette(QColor(239, 239, 239)));
        setApplicationPalette(darkPalette());
        QVERIFY(legibility(*label, label->rect()).contrast >= 4.5);
    }

    void blackOrWhite_data()
    {
        columns<QColor, QColor>("ground", "text");
        row("on white", QColor(Qt::white), QColor(Qt::black));
        row("on black", QColor(Qt::black), QColor(Qt::white));
        row("on yellow", QColor(Qt::yellow), QColor(Qt::black));
        row("on blue", QColor(Qt::blue), QColor(Qt::white));
        row("on the grey of equal contrast", QColor(117, 117, 117), QColor(Qt::white));
        row("on the next grey", QColor(118, 118, 118), QColor(Qt::black));
    }

    void blackOrWhite()
    {
        QFETCH(QColor, ground);
        QTEST(readableOn(ground), "text");
    }

    void aColourIsLaidOverAnother_data()
    {
        columns<QColor, QColor>("colour", "seen");
        row("opaque", QColor(10, 20, 30), QColor(10, 20, 30));
        row("transparent", QColor(10, 20, 30, 0), QColor(200, 100, 0));
        row("half-transparent", QColor(0, 100, 255, 51), QColor(160, 100, 51));
    }

    void aColourIsLaidOverAnother()
    {
        QFETCH(QColor, colour);
        QTEST(laidOver(colour, QColor(200, 100, 0)), "seen");
    }
};

VRN_TEST(TestReadableColours)
#include "tst_readable_colours.moc"
