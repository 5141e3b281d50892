#include "bench/mac/States.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>

/// The received MAC tables: collecting them, and collecting and printing them.
namespace {

using State = Vex::Ptr<Vex::Dir> (*)();

void perEntry(benchmark::State & run, Vex::U64 entries) {
    run.SetItemsProcessed(static_cast<int64_t>(run.iterations()) * static_cast<int64_t>(entries));
}

void collect(benchmark::State & run, State make, Vex::U64 entries) {
    auto const command = bench::receivedCommand(make());
    for (auto _ : run) {
        command->initialize();
    }
    perEntry(run, entries);
}

void render(benchmark::State & run, State make, Vex::U64 entries, Vex::U32 format) {
    auto const command = bench::receivedCommand(make());
    auto const null = static_cast<Vex::U32>(open("/dev/null", O_WRONLY | O_CLOEXEC));
    for (auto _ : run) {
        command->render(null, format, 2);
    }
    perEntry(run, entries);
}

constexpr Vex::U64 wide = Vex::U64{bench::wideSwitches} * bench::wideVnis * bench::wideMacs;
constexpr Vex::U64 deep = bench::deepMacs;

} // namespace

BENCHMARK_CAPTURE(collect, wide, bench::wideState, wide)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(collect, deep, bench::deepState, deep)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render, wide_text, bench::wideState, wide, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render, deep_text, bench::deepState, deep, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render, wide_json, bench::wideState, wide, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render, deep_json, bench::deepState, deep, 2)->Unit(benchmark::kMillisecond);
