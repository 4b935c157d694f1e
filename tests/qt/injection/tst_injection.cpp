// The injection matrix: each control, each action of user and program, each place where
// foreign code runs meanwhile, and whatever that code may do there.
//
//     tst_injection                        a fixed sample
//     tst_injection --random 5000          random cells; prints its seed
//     tst_injection --all --only "*EnumBox / * / @(valueChanged|activated)"
//     tst_injection --all --reference      with widgets of Qt
//     tst_injection --cell "a SimpleCheckBox / the user presses Space / toggled / a dialog"
//     tst_injection --list
//     tst_injection --random 5000 --excluded   whether there is still a reason

#include "injection/controls.h"
#include "injection/exclusions.h"
#include "injection/farm.h"
#include "injection/matrix.h"
#include "injection/report.h"
#include "injection/stage.h"

#include "support/address_sanitizer.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QThread>
#include <QWindow>

#include <cstdio>
#include <random>

using namespace vrn::test::injection;

#if defined(VRN_ADDRESS_SANITIZER)
// A process of a cell ends without a look at what it leaves: that would take longer than
// the cell.
extern "C" Q_DECL_EXPORT const char* __asan_default_options();
const char* __asan_default_options()
{
    return "detect_leaks=0:handle_abort=1:max_free_fill_size=4096:free_fill_byte=205";
}
extern "C" Q_DECL_EXPORT const char* __ubsan_default_options();
const char* __ubsan_default_options()
{
    return "print_stacktrace=1";
}
#endif

namespace {

// For a build without sanitizers, which sees only some of what a destroyed control leads to:
// nothing is destroyed before its signal is over, or by what Qt itself does not survive.
const char* const sample = "* / !(*loop runs) / !(an event*|the application*) / "
                           "@(deleteLater|call|throw|reparent|a style)*";
constexpr unsigned sampleSeed = 1;
constexpr std::size_t sampleSize = 300;

// Exceptions go no further than to the event that has led to them.
class Application : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::PlatformSurface)
            keepInactive(receiver);
        try {
            return QApplication::notify(receiver, event);
        } catch (...) {
            return true;
        }
    }

private:
    // The platform without a screen activates each window that is shown, but for tool tips.
    static void keepInactive(QObject* window)
    {
        for (const QWidget* widget : topLevelWidgets()) {
            if (widget->windowHandle() == window
                && widget->testAttribute(Qt::WA_ShowWithoutActivating))
                widget->windowHandle()->setFlags(
                    (widget->windowFlags() & ~Qt::WindowType_Mask) | Qt::ToolTip);
        }
    }
};

void list(const Matrix& matrix)
{
    for (const Cell& cell : matrix.cells())
        std::printf("%s\n", nameOf(cell).constData());
    std::printf("\nExcluded:\n");
    for (const Exclusion& row : exclusions()) {
        std::printf("%s\n    %s: %s\n", row.pattern.constData(), row.header.constData(),
            row.reason.constData());
    }
}

} // namespace

int main(int argc, char** argv)
{
    // As vrn_add_test() has it.
    for (const auto& [name, value] :
        {std::pair("QT_QPA_PLATFORM", "offscreen"), std::pair("QT_STYLE_OVERRIDE", "fusion"),
            std::pair("QT_QPA_PLATFORMTHEME", ""), std::pair("LC_ALL", "C.UTF-8")}) {
        if (!qEnvironmentVariableIsSet(name))
            qputenv(name, value);
    }
    const Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser options;
    options.addOptions({
        {"all", "All cells."},
        {"random", "<n> random cells.", "n"},
        {"seed", "The seed of --random.", "seed"},
        {"only", "No other cells than those of the shell's <pattern>; may be given again.",
            "pattern"},
        {"excluded", "Those cells that are excluded, in place of the others."},
        {"cell", "The cell <name>, in this process.", "name"},
        {"list", "The names of all cells, and what is excluded."},
        {"jobs", "So many processes at a time.", "n", QString::number(QThread::idealThreadCount())},
        {"reference", "Plain widgets of Qt in place of the controls."},
        {"logs", "Prints what the first cell of each failure has written."},
    });
    options.addHelpOption();
    options.process(application);

    std::vector<Cell> rehearsals = warmUp();
    rehearsals.erase(std::remove_if(rehearsals.begin(), rehearsals.end(),
                         [isReference = options.isSet("reference")](const Cell& cell) {
                             return controlOf(cell).isReference != isReference;
                         }),
        rehearsals.end());
    if (options.isSet("cell")) {
        const auto cell = cellOf(options.value("cell").toUtf8());
        if (!cell) {
            std::fprintf(stderr, "no such cell\n");
            return 2;
        }
        static Outcome outcome;
        runHere(*cell, outcome, [] {
            std::printf("%s\n%s\n",
                !outcome.reached    ? "not reached"
                    : !outcome.done ? "nothing to do it to"
                                    : "done",
                outcome.failure);
        });
    }

    const bool isSample = !options.isSet("all") && !options.isSet("random")
        && !options.isSet("list");
    std::vector<CellPattern> patterns;
    for (const QString& pattern : options.values("only"))
        patterns.emplace_back(pattern.toUtf8());
    if (patterns.empty())
        patterns.emplace_back(isSample ? sample : "*");
    const int jobs = std::max(1, options.value("jobs").toInt());
    Report report(options.isSet("logs"));
    Matrix matrix(std::move(patterns));
    runForked(matrix.ofPatterns(rehearsals), jobs, [&](const Result& result) {
        report.take(result);
        matrix.take(result);
    });
    matrix.fill();
    std::printf("%d cells, and %d that are not reached, and %d excluded\n",
        int(matrix.cells().size()), matrix.notReached(), int(matrix.excluded().size()));
    if (options.isSet("list")) {
        list(matrix);
        return 0;
    }

    QByteArray again = "--all";
    std::vector<Cell> cells = options.isSet("excluded") ? matrix.excluded() : matrix.cells();
    if (!options.isSet("all")) {
        const unsigned seed = options.isSet("seed") ? options.value("seed").toUInt()
            : isSample                              ? sampleSeed
                                                    : std::random_device()();
        std::shuffle(cells.begin(), cells.end(), std::mt19937(seed));
        const std::size_t count = isSample ? sampleSize : options.value("random").toUInt();
        cells.resize(std::min(cells.size(), count));
        again = "--random " + QByteArray::number(qulonglong(count)) + " --seed "
            + QByteArray::number(seed);
    }
    std::printf("%s\n", again.constData());
    runForked(cells, jobs, [&](const Result& result) { report.take(result); });
    report.print();
    if (!report.isGood())
        std::printf("To repeat this: tst_injection %s\nor: tst_injection --cell \"<name>\"\n",
            again.constData());
    return report.isGood() ? 0 : 1;
}
