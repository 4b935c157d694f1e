#include "injection/farm.h"

#include "injection/actions.h"
#include "injection/stage.h"

#include "support/address_sanitizer.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <map>
#include <new>
#include <utility>

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(VRN_ADDRESS_SANITIZER)
#include <execinfo.h>
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

// Where the process of a cell puts down that a sanitizer has found something, in place of
// the report. Null for one that reports.
vrn::test::injection::Outcome* placeOfStack = nullptr;

} // namespace

#if defined(VRN_ADDRESS_SANITIZER)
// A report takes ten times as long as a cell, and one for each stack is enough. The
// processes are copies, so addresses are the same in all of them.
extern "C" Q_DECL_EXPORT void __asan_on_error();
void __asan_on_error()
{
    if (!placeOfStack)
        return;
    backtrace(placeOfStack->stack, vrn::test::injection::stackLimit);
    _exit(1);
}
#endif

namespace vrn::test::injection {
namespace {

// Seconds; a cell takes some hundredths of one.
constexpr unsigned timeLimit = 20;

using Stack = std::vector<void*>;

struct Worker
{
    Outcome* outcome = nullptr;
    int log = -1;
    pid_t process = 0;
    Cell cell;
    /// Where the cell has failed before: then it runs again, with a report.
    Stack known;
};

void endForTime(int)
{
    std::fputs("takes too long\n", stderr);
#if defined(VRN_ADDRESS_SANITIZER)
    __sanitizer_print_stack_trace();
#endif
    _exit(1);
}

void start(const Stage& stage, Worker& worker, const Cell& cell, Stack known = {})
{
    worker.cell = cell;
    worker.known = std::move(known);
    new (worker.outcome) Outcome();
    if (ftruncate(worker.log, 0) != 0 || lseek(worker.log, 0, SEEK_SET) != 0)
        qFatal("no room for a log");
    const pid_t parent = getpid();
    worker.process = fork();
    if (worker.process < 0)
        qFatal("cannot fork");
    if (worker.process > 0)
        return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1);
    placeOfStack = worker.known.empty() ? worker.outcome : nullptr;
    dup2(worker.log, STDOUT_FILENO);
    dup2(worker.log, STDERR_FILENO);
    std::signal(SIGALRM, &endForTime);
    alarm(timeLimit);
    stage.run(cell, *worker.outcome);
    std::fflush(nullptr);
    _exit(0); // Nothing of the process is taken down: it is a copy.
}

QByteArray read(int file)
{
    QByteArray text(int(lseek(file, 0, SEEK_END)), '\0');
    const auto size = pread(file, text.data(), std::size_t(text.size()), 0);
    return text.left(int(size));
}

// A line of a stack: "#1 0x7f5c in f(int) ../qt/src/a.cpp:36:5", or with a library in
// brackets at its end.
struct Frame
{
    explicit Frame(const QString& line)
    {
        const QString text = line.section(QStringLiteral(" in "), 1);
        file = text.section(QLatin1Char(' '), -1);
        function = text.section(QLatin1Char(' '), 0, -2).section(QLatin1Char('('), 0, 0);
        function.remove(QStringLiteral("vrn::qt::")).remove(QStringLiteral("detail::"));
        isOfLibrary = file.contains(QStringLiteral("qt/src/"))
            || file.contains(QStringLiteral("companion/"));
        isOfRuntime = file.contains(QStringLiteral("sanitizer"))
            || file.contains(QStringLiteral("/nptl/")) || file.contains(QStringLiteral("sysdeps"))
            || file.contains(QStringLiteral("libstdc++"));
    }

    QString function;
    QString file;
    bool isOfLibrary = false;
    bool isOfRuntime = false;
};

// What a sanitizer found, the function in which it did, and who called it in the library.
QByteArray essenceOf(const QByteArray& log)
{
    static const QRegularExpression error(
        QStringLiteral("ERROR: AddressSanitizer: ([\\w-]+)|runtime error: [^\\n]*"
                       "|terminate called[^\\n]*|takes too long"));
    static const QRegularExpression address(QStringLiteral(" ?0x[0-9a-f]+"));
    const QString text = QString::fromUtf8(log);
    const auto found = error.match(text);
    if (!found.hasMatch())
        return {};
    QString essence = found.captured(1).isEmpty() ? found.captured().remove(address)
                                                  : found.captured(1);
    bool isInside = true;
    int callers = 0;
    const QStringList lines = text.mid(found.capturedEnd()).split(QLatin1Char('\n'));
    bool isStack = false;
    for (const QString& line : lines) {
        const bool isFrame = line.startsWith(QStringLiteral("    #"));
        if (isStack && !isFrame)
            break;
        isStack = isFrame;
        const Frame frame(line);
        if (!isFrame || frame.isOfRuntime)
            continue;
        if (isInside && !frame.isOfLibrary)
            essence += QStringLiteral(" in ") + frame.function;
        isInside = false;
        if (frame.isOfLibrary && ++callers <= 4)
            essence += QStringLiteral(" < %1 (%2)")
                           .arg(frame.function, frame.file.section(QLatin1Char('/'), -1));
    }
    return essence.toUtf8();
}

Result resultOf(const Worker& worker, int status)
{
    Result result{worker.cell, *worker.outcome, {}, read(worker.log)};
    const bool endedWell = result.outcome.ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    result.failure = endedWell ? QByteArray(result.outcome.failure) : essenceOf(result.log);
    if (!endedWell && result.failure.isEmpty()) {
        result.failure = WIFSIGNALED(status)
            ? QByteArray("ended by signal ") + QByteArray::number(WTERMSIG(status))
            : QByteArray("ended too early");
    }
    return result;
}

// Sets the stage of `cell` and calls `play` on it.
void onStage(const Cell& cell, const std::function<void(const Stage&)>& play)
{
    const auto setAndPlay = [&] {
        const Stage stage(cell);
        play(stage);
    };
    if (actionOf(cell).beforeLoop)
        return setAndPlay();
    // Within the loop of the application, as nearly all that an application does.
    QTimer::singleShot(0, qApp, [&] {
        setAndPlay();
        QApplication::quit();
    });
    QApplication::exec();
}

class Farm
{
public:
    Farm(int jobs, std::function<void(const Result&)> take)
        : m_workers(static_cast<std::size_t>(jobs))
        , m_take(std::move(take))
    {
        for (Worker& worker : m_workers) {
            void* shared = mmap(nullptr, sizeof(Outcome), PROT_READ | PROT_WRITE,
                MAP_SHARED | MAP_ANONYMOUS, -1, 0);
            if (shared == MAP_FAILED)
                qFatal("no shared memory");
            worker.outcome = static_cast<Outcome*>(shared);
            worker.log = memfd_create("log", MFD_CLOEXEC);
        }
    }

    ~Farm()
    {
        for (const Worker& worker : m_workers) {
            munmap(worker.outcome, sizeof(Outcome));
            close(worker.log);
        }
    }

    Farm(const Farm&) = delete;
    Farm& operator=(const Farm&) = delete;

    void run(const Stage& stage, const std::vector<Cell>& cells)
    {
        std::fflush(nullptr);
        auto next = cells.begin();
        int running = 0;
        const auto startNext = [&](Worker& worker) {
            if (next == cells.end())
                return;
            start(stage, worker, *next++);
            ++running;
        };
        for (Worker& worker : m_workers)
            startNext(worker);
        while (running > 0) {
            int status = 0;
            const pid_t process = wait(&status);
            const auto worker = std::find_if(m_workers.begin(), m_workers.end(),
                [&](const Worker& candidate) { return candidate.process == process; });
            if (worker == m_workers.end() || !finish(stage, *worker, status))
                continue;
            --running;
            startNext(*worker);
        }
    }

private:
    // False if the cell runs again.
    bool finish(const Stage& stage, Worker& worker, int status)
    {
        Result result = resultOf(worker, status);
        const Stack stack(std::begin(result.outcome.stack), std::end(result.outcome.stack));
        if (stack.front()) {
            const auto known = m_failures.find(stack);
            if (known == m_failures.end()) {
                start(stage, worker, result.cell, stack);
                return false;
            }
            result.failure = known->second;
        } else if (!worker.known.empty()) {
            if (result.failure.isEmpty())
                result.failure = "fails at times";
            m_failures[worker.known] = result.failure;
        }
        worker.process = 0;
        m_take(result);
        std::fflush(nullptr);
        return true;
    }

    std::vector<Worker> m_workers;
    std::function<void(const Result&)> m_take;
    std::map<Stack, QByteArray> m_failures;
};

} // namespace

void runForked(std::vector<Cell> cells, int jobs, const std::function<void(const Result&)>& take)
{
#if defined(VRN_ADDRESS_SANITIZER)
    void* frame[1];
    backtrace(frame, 1); // What it loads at first use is there for all.
#endif
    Farm farm(jobs, take);
    for (auto begin = cells.begin(); begin != cells.end();) {
        const Cell first = *begin;
        const auto end = std::stable_partition(
            begin, cells.end(), [&](const Cell& cell) { return Stage::isCommon(cell, first); });
        const std::vector<Cell> ofStage(begin, end);
        onStage(first, [&](const Stage& stage) { farm.run(stage, ofStage); });
        begin = end;
    }
}

void runHere(const Cell& cell, Outcome& outcome, const std::function<void()>& atEnd)
{
    onStage(cell, [&](const Stage& stage) {
        stage.run(cell, outcome);
        atEnd();
        std::fflush(nullptr);
        _exit(0);
    });
    _exit(1);
}

} // namespace vrn::test::injection
