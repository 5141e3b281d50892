#include "bench/mac/States.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>

/// The advertised MAC tables: collecting and printing them.
namespace {

void renderAdvertised(benchmark::State & run, Vex::U32 format) {
    namespace Cli = VxlanController::Cli;
    auto const command = Cli::vcsVniAdvertisedFactory(bench::advertisedState(), nullptr, nullptr,
                                                      false, Vxlan::VniOrNone(), Nolt::EthAddr(),
                                                      "", Cli::vtepListFactory());
    auto const null = static_cast<Vex::U32>(open("/dev/null", O_WRONLY | O_CLOEXEC));
    for (auto _ : run) {
        command->render(null, format, 2);
    }
    run.SetItemsProcessed(static_cast<int64_t>(run.iterations()) * bench::advertisedMacs);
}

} // namespace

BENCHMARK_CAPTURE(renderAdvertised, text, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(renderAdvertised, json, 2)->Unit(benchmark::kMillisecond);
