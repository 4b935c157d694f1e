#include <benchmark/benchmark.h>

#include <QApplication>

#include <cstdlib>
#include <iterator>
#include <string_view>
#include <vector>

#include "comparison.h"
#include "entry_spellings.h"

namespace bench {
void addDelegateComparisons();
void addEditor2dComparisons();
void addEntryComparisons();
void addEnumBoxComparisons();
void addFactoryComparisons();
void addLineEditComparisons();
void addMultiEditComparisons();
void addPropertyModelComparisons();
void addPropertyPageComparisons();
void addPropertyPageFormComparisons();
void addTableViewComparisons();
void addUnitComparisons();
void addValidatorComparisons();
} // namespace bench

// vrn-bench [FILTER]: compares the times of this library with those of what it replaces.
// vrn-bench spellings: compares what readers make of quantities that engineers write.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc > 1 && std::string_view(argv[1]) == "spellings")
        return bench::printEntrySpellings() ? EXIT_SUCCESS : EXIT_FAILURE;

    // The sides take turns, so that a busy machine slows both of them.
    char interleave[] = "--benchmark_enable_random_interleaving=true";
    char shortRounds[] = "--benchmark_min_time=0.05";
    std::vector<char*> arguments = {argv[0], interleave, shortRounds};
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    bench::addValidatorComparisons();
    bench::addLineEditComparisons();
    bench::addMultiEditComparisons();
    bench::addEnumBoxComparisons();
    bench::addDelegateComparisons();
    bench::addFactoryComparisons();
    bench::addPropertyModelComparisons();
    bench::addPropertyPageComparisons();
    bench::addPropertyPageFormComparisons();
    bench::addTableViewComparisons();
    bench::addUnitComparisons();
    bench::addEditor2dComparisons();
    bench::addEntryComparisons();
    return bench::run(argc > 1 ? argv[1] : "") ? EXIT_SUCCESS : EXIT_FAILURE;
}
