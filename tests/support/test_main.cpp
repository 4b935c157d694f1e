#include "support/test_main.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace vrn::test {
namespace {

struct Registered
{
    QString name;
    TestRegistration::Run run;
};

std::vector<Registered>& registered()
{
    static std::vector<Registered> tests;
    return tests;
}

const Registered* find(const QString& name)
{
    const std::vector<Registered>& all = registered();
    const auto found = std::find_if(
        all.begin(), all.end(), [&name](const Registered& test) { return test.name == name; });
    return found == all.end() ? nullptr : &*found;
}

// Runs each class in its own process. The status is the number of classes that failed.
int runEach(const std::vector<const Registered*>& tests, const QStringList& arguments)
{
    if (arguments.contains(QStringLiteral("-o"))) {
        std::fputs(
            "-o needs the name of one test class: several would overwrite the file\n", stderr);
        return 1;
    }
    const QString program = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    QStringList failed;
    for (const Registered* test : tests) {
        if (QProcess::execute(program, QStringList(test->name) + arguments) != 0)
            failed << test->name;
    }
    std::printf("%d of %d test classes failed%s%s\n", static_cast<int>(failed.size()),
        static_cast<int>(tests.size()), failed.isEmpty() ? "" : ": ",
        qPrintable(failed.join(QStringLiteral(", "))));
    return static_cast<int>(failed.size());
}

int runNamed(int argc, char** argv)
{
    std::vector<const Registered*> tests;
    std::vector<char*> others = {argv[0]};
    QStringList otherTexts;
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        if (const Registered* test = find(argument)) {
            tests.push_back(test);
        } else {
            others.push_back(argv[i]);
            otherTexts << argument;
        }
    }
    if (tests.empty()) {
        for (const Registered& test : registered())
            tests.push_back(&test);
    }
    if (tests.size() != 1)
        return runEach(tests, otherTexts);
    const int count = static_cast<int>(others.size());
    others.push_back(nullptr);
    return tests.front()->run(count, others.data());
}

} // namespace

TestRegistration::TestRegistration(const char* file, Run run)
{
    registered().push_back({QFileInfo(QString::fromLocal8Bit(file)).baseName(), run});
}

} // namespace vrn::test

int main(int argc, char** argv)
{
    return vrn::test::runNamed(argc, argv);
}
