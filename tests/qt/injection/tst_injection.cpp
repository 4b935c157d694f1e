// The injection matrix: each control, each action of user and program, each place where
// foreign code runs meanwhile, and whatever that code may do there.
//
//     tst_injection                        a fixed sample
//     tst_injection --random 5000          random cells; prints its seed
//     tst_injection --all --only "*EnumBox / *"
//     tst_injection --cell "a SimpleCheckBox / the user presses Space / toggled / a dialog"
//     tst_injection --list

#include "injection/actions.h"
#include "injection/controls.h"
#include "injection/deeds.h"
#include "injection/exclusions.h"
#include "injection/farm.h"
#include "injection/places.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QThread>
#include <QWindow>

#include <cstdio>
#include <random>

#include <fnmatch.h>

using namespace vrn::test::injection;

#if defined(__SANITIZE_ADDRESS__)
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

// As often as a place is visited in one action, up to this, the deed is done at each visit.
constexpr int occurrenceLimit = 3;

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

struct Counts
{
    int passed = 0;
    int failed = 0;
    int notReached = 0;
    int notApplicable = 0;
    int excluded = 0;
};

class Report
{
public:
    explicit Report(bool withLogs)
        : m_withLogs(withLogs)
    {}

    Counts counts;

    void take(const Result& result)
    {
        const bool isDue = result.cell.isRehearsal()
            || (result.outcome.reached && result.outcome.done);
        if (!result.failure.isEmpty())
            fail(result);
        else if (isDue)
            ++counts.passed;
        else if (result.outcome.reached)
            ++counts.notApplicable;
        else
            ++counts.notReached;
    }

    void print() const
    {
        std::vector<std::pair<QByteArray, QByteArrayList>> groups(m_groups.begin(), m_groups.end());
        std::stable_sort(groups.begin(), groups.end(),
            [](const auto& a, const auto& b) { return a.second.size() > b.second.size(); });
        for (const auto& [failure, names] : groups)
            std::printf("\n%d x %s\n    %s\n", int(names.size()), failure.constData(),
                names.first().constData());
        std::printf(
            "\n%d passed, %d failed, %d not reached, %d with nothing to do it to, %d excluded\n",
            counts.passed, counts.failed, counts.notReached, counts.notApplicable, counts.excluded);
    }

private:
    void fail(const Result& result)
    {
        ++counts.failed;
        const QByteArray name = nameOf(result.cell);
        std::printf("FAIL  %s\n      %s\n", name.constData(), result.failure.constData());
        QByteArrayList& names = m_groups[result.failure];
        if (names.isEmpty() && m_withLogs)
            std::printf("%s\n", result.log.constData());
        names.append(name);
    }

    std::map<QByteArray, QByteArrayList> m_groups;
    bool m_withLogs;
};

bool matches(const QByteArray& pattern, const QByteArray& name)
{
    return fnmatch(pattern.constData(), name.constData(), 0) == 0;
}

// Whether the pattern is about the control. Qt's own are asked for by name.
bool speaksOf(const QByteArray& pattern, const QByteArray& control)
{
    const QByteArray first = pattern.split('/').first().trimmed();
    return matches(first, control) && control.startsWith("Qt's") == first.startsWith("Qt's");
}

// Each control with each action, and no deed. All actions of a control: what the program
// can do with it is a deed, too.
std::vector<Cell> rehearsals(const QByteArrayList& patterns)
{
    std::vector<Cell> cells;
    for (Cell cell; cell.control < int(controls().size()); ++cell.control) {
        const char* name = controls()[std::size_t(cell.control)].name;
        if (std::none_of(patterns.begin(), patterns.end(),
                [name](const QByteArray& pattern) { return speaksOf(pattern, name); }))
            continue;
        for (cell.action = 0; cell.action < int(actions().size()); ++cell.action)
            cells.push_back(cell);
    }
    return cells;
}

// The matrix as the rehearsals show it.
class Matrix
{
public:
    void take(const Result& rehearsal)
    {
        if (rehearsal.outcome.applies)
            m_rehearsals[{rehearsal.cell.control, rehearsal.cell.action}] = rehearsal.outcome;
    }

    /// The cells of the pattern that are reached; the others are counted.
    std::vector<Cell> cells(const QByteArrayList& patterns, Counts& counts) const
    {
        std::vector<Cell> cells;
        for (const auto& [which, outcome] : m_rehearsals) {
            Cell cell;
            std::tie(cell.control, cell.action) = which;
            for (cell.place = 0; cell.place < int(placeNames().size()); ++cell.place) {
                if (!outcome.offered[cell.place])
                    continue;
                for (cell.deed = 0; cell.deed < int(deeds().size()); ++cell.deed)
                    add(cell, outcome.visits[cell.place], patterns, cells, counts);
            }
        }
        return cells;
    }

private:
    void add(Cell cell, int visits, const QByteArrayList& patterns, std::vector<Cell>& cells,
        Counts& counts) const
    {
        const int action = deeds()[std::size_t(cell.deed)].action;
        if (action >= 0 && m_rehearsals.count({cell.control, action}) == 0)
            return;
        const bool isExcluded = exclusionOf(controls()[std::size_t(cell.control)].name,
            actions()[std::size_t(cell.action)].name, placeNames()[std::size_t(cell.place)],
            deeds()[std::size_t(cell.deed)].name);
        cell.occurrence = 1;
        do {
            if (std::none_of(patterns.begin(), patterns.end(),
                    [name = nameOf(cell)](const auto& pattern) { return matches(pattern, name); }))
                continue;
            if (visits == 0)
                ++counts.notReached;
            else if (isExcluded)
                ++counts.excluded;
            else
                cells.push_back(cell);
        } while (++cell.occurrence <= std::min(visits, limitOf(cell)));
    }

    // Filters see the parts of a control one after the other.
    static int limitOf(const Cell& cell)
    {
        const QByteArray place = placeNames()[std::size_t(cell.place)];
        return place.startsWith("an event filter") ? 1 : occurrenceLimit;
    }

    std::map<std::pair<int, int>, Outcome> m_rehearsals;
};

void list(const std::vector<Cell>& cells)
{
    for (const Cell& cell : cells)
        std::printf("%s\n", nameOf(cell).constData());
    std::printf("\nExcluded:\n");
    for (const Exclusion& row : exclusions()) {
        std::printf("%s / %s / %s / %s\n    %s: %s\n", row.control, row.action, row.place, row.deed,
            row.header, row.reason);
    }
}

} // namespace

int main(int argc, char** argv)
{
    for (const auto& [name, value] : {std::pair("QT_QPA_PLATFORM", "offscreen"),
             std::pair("QT_STYLE_OVERRIDE", "fusion"), std::pair("QT_QPA_PLATFORMTHEME", "")}) {
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
            "pattern", "*"},
        {"cell", "The cell <name>, in this process.", "name"},
        {"list", "The names of all cells, and what is excluded."},
        {"jobs", "So many processes at a time.", "n", QString::number(QThread::idealThreadCount())},
        {"logs", "Prints what the first cell of each failure has written."},
    });
    options.addHelpOption();
    options.process(application);

    warmUp();
    if (options.isSet("cell")) {
        const auto cell = cellOf(options.value("cell").toUtf8());
        if (!cell)
            qFatal("no such cell");
        static Outcome outcome;
        runHere(*cell, outcome, [] {
            std::printf("%s\n%s\n",
                !outcome.applies       ? "does not apply"
                    : !outcome.reached ? "not reached"
                    : !outcome.done    ? "nothing to do it to"
                                       : "done",
                outcome.failure);
        });
    }

    QByteArrayList patterns;
    for (const QString& pattern : options.values("only"))
        patterns.append(pattern.toUtf8());
    const int jobs = std::max(1, options.value("jobs").toInt());
    Report report(options.isSet("logs"));
    Matrix matrix;
    runForked(rehearsals(patterns), jobs, [&](const Result& result) {
        if (!result.failure.isEmpty())
            report.take(result);
        matrix.take(result);
    });
    std::vector<Cell> cells = matrix.cells(patterns, report.counts);
    std::printf("%d cells are reached\n", int(cells.size()));
    if (options.isSet("list")) {
        list(cells);
        return 0;
    }

    if (!options.isSet("all")) {
        const bool isRandom = options.isSet("random");
        const unsigned seed = options.isSet("seed") ? options.value("seed").toUInt()
            : isRandom                              ? std::random_device()()
                                                    : sampleSeed;
        std::printf("--seed %u\n", seed);
        std::shuffle(cells.begin(), cells.end(), std::mt19937(seed));
        const std::size_t count = isRandom ? options.value("random").toUInt() : sampleSize;
        cells.resize(std::min(cells.size(), count));
    }
    runForked(cells, jobs, [&](const Result& result) { report.take(result); });
    report.print();
    return report.counts.failed == 0 ? 0 : 1;
}
