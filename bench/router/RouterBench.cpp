#include "VxlanController/VxlanControllerCliModel.h"
#include "bench/router/States.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>

/// The logical-router commands. A command keeps what it has collected, so each iteration
/// renders a new one.
namespace {

namespace Cli = VxlanController::Cli;

constexpr Vex::U32 text = 1;
constexpr Vex::U32 json = 2;

template <class MakeCommand>
void render(benchmark::State & run, Vex::U32 format, std::int64_t items,
            MakeCommand const & makeCommand) {
    auto const null = static_cast<Vex::U32>(open("/dev/null", O_WRONLY | O_CLOEXEC));
    for (auto _ : run) {
        makeCommand()->render(null, format, 2);
    }
    run.SetItemsProcessed(static_cast<std::int64_t>(run.iterations()) * items);
}

void routes(benchmark::State & run, Vex::U32 routers, Vex::U32 format, char const * prefix) {
    auto const status = bench::routedRouters(routers);
    auto const filter = Nolt::IpGenPrefix::fromString(prefix);
    render(run, format, bench::routes, [&] { return Cli::vcsLRRouteFactory(status, "", filter); });
}

void map(benchmark::State & run, Vex::U32 format, char const * router) {
    auto const switches = bench::routerSwitchInfo();
    auto const published = bench::publishedRouters();
    render(run, format, bench::manyRouters,
           [&] { return Cli::vcsLRMapFactory(published, switches, router, "", nullptr); });
}

void detail(benchmark::State & run, Vex::U32 format, char const * router) {
    auto const switches = bench::routerSwitchInfo();
    auto const published = bench::publishedRouters();
    auto const status = bench::portedRouters();
    render(run, format, bench::manyRouters,
           [&] { return Cli::vcsLRFactory(published, switches, status, false, router); });
}

constexpr Vex::U32 wide = bench::wideRouters;
constexpr char const * every = "";
constexpr char const * few = "10.1.2.0/24";
constexpr char const * oneRouter = "tenant-4711";

} // namespace

BENCHMARK_CAPTURE(routes, wide_text, wide, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(routes, wide_json, wide, json, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(routes, wide_prefix, wide, text, few)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(routes, deep_text, 1, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(routes, deep_json, 1, json, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(routes, deep_prefix, 1, text, few)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(map, text, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(map, json, json, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(map, one_router, text, oneRouter)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(detail, text, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(detail, json, json, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(detail, one_router, text, oneRouter)->Unit(benchmark::kMillisecond);
