#include "bench/arp/States.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>

/// ARP tables with 1,000,000 entries: collecting and printing them. Collecting is not
/// measured alone, since the set that a command prints exists only while it renders; a
/// MAC filter that matches nothing shows the share of walking the state.
namespace {

namespace Cli = VxlanController::Cli;

template <class CommandPtr>
void render(benchmark::State & run, CommandPtr const & command, Vex::U32 format) {
    auto const null = static_cast<Vex::U32>(open("/dev/null", O_WRONLY | O_CLOEXEC));
    for (auto _ : run) {
        command->render(null, format, 2);
    }
    run.SetItemsProcessed(static_cast<int64_t>(run.iterations()) * bench::arpEntries);
}

void advertised(benchmark::State & run, Vex::U32 vnis, Vex::U32 format, Nolt::EthAddr mac) {
    render(run,
           Cli::arpAdvertisedFactory(bench::advertisedArp(vnis), false, Vxlan::VniOrNone(), mac,
                                     Nolt::IpGenAddr()),
           format);
}

void received(benchmark::State & run, Vex::U32 switches, Vex::U32 vnis, Vex::U32 format,
              Nolt::EthAddr mac) {
    render(run,
           Cli::arpReceivedFactory(bench::receivedArp(switches, vnis), false, Vxlan::VniOrNone(),
                                   mac, Nolt::IpGenAddr(), ""),
           format);
}

constexpr Vex::U32 text = 1;
constexpr Vex::U32 json = 2;
constexpr Nolt::EthAddr every;
constexpr Nolt::EthAddr absentMac({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
constexpr Vex::U32 switches = bench::wideArpSwitches;
constexpr Vex::U32 vnis = bench::wideArpVnis;

} // namespace

BENCHMARK_CAPTURE(advertised, wide_text, vnis, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(advertised, wide_json, vnis, json, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(advertised, wide_filtered, vnis, text, absentMac)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(advertised, deep_text, 1, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(advertised, deep_json, 1, json, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(advertised, deep_filtered, 1, text, absentMac)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(received, wide_text, switches, vnis, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(received, wide_json, switches, vnis, json, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(received, deep_text, 1, 1, text, every)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(received, deep_json, 1, 1, json, every)->Unit(benchmark::kMillisecond);
