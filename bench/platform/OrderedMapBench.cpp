#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/OrderedMap.h"
#include "Vex/Ptr.h"
#include "Vex/Slot.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

/// The ordered collection alone: filled in key order and in scattered order, looked up,
/// walked and destroyed. Like a command, a run works on as many tables at a time as make
/// up a million entries, since small tables matter because there are so many of them. The
/// item is one entry.
namespace {

constexpr std::size_t entriesInAll = 1'000'000;

struct Value {
    Vex::U64 number;
    Vex::U64 rest;

    Vex::U64 const & key() const noexcept { return number; }
};

class Item : public Vex::Tracked<Item, Vex::Entity> {
public:
    static constexpr char const * vexTypeName = "Bench::Item";

    explicit Item(Vex::U64 number) : number_(number) {}

    Vex::U64 const & number() const noexcept { return number_; }

private:
    Vex::U64 number_;
};

using Values = Vex::OrderedMap<Vex::ValueSlot<Vex::U64, Value, &Value::key>>;
using Items = Vex::OrderedMap<Vex::EntitySlot<Vex::U64, Item, &Item::number>>;
using Set = Vex::OrderedMap<Vex::SetSlot<Vex::U32>>;

void insert(Values & map, Vex::U64 key) {
    map.upsert(Values::Slot(Value{key, 1}));
}

void insert(Items & map, Vex::U64 key) {
    map.findOrInsert(key, [&] { return Items::Slot(Vex::makePtr<Item>(key)); });
}

void insert(Set & map, Vex::U64 key) {
    map.upsert(Set::Slot(static_cast<Vex::U32>(key), true));
}

Vex::U64 read(Value const & value) {
    return value.rest;
}

Vex::U64 read(Item const & item) {
    return item.number();
}

Vex::U64 read(Vex::U32 const & member) {
    return member;
}

std::vector<Vex::U64> keys(std::size_t size, bool scattered) {
    std::vector<Vex::U64> all(size);
    std::iota(all.begin(), all.end(), Vex::U64{1});
    if (scattered) {
        std::shuffle(all.begin(), all.end(), std::mt19937_64(2018));
    }
    return all;
}

template <class Map>
class Tables {
public:
    explicit Tables(std::size_t size)
        : count_(std::max<std::size_t>(entriesInAll / size, 1)),
          maps_(std::make_unique<Map[]>(count_)) {}

    std::size_t count() const noexcept { return count_; }

    Map * begin() const noexcept { return maps_.get(); }

    Map * end() const noexcept { return maps_.get() + count_; }

    void fill(std::vector<Vex::U64> const & withKeys) const {
        for (Map & map : *this) {
            for (Vex::U64 const key : withKeys) {
                insert(map, key);
            }
        }
    }

private:
    std::size_t count_;
    std::unique_ptr<Map[]> maps_;
};

void perEntry(benchmark::State & run) {
    run.SetItemsProcessed(run.iterations() * static_cast<int64_t>(entriesInAll));
}

std::size_t sizeOf(benchmark::State const & run) {
    return static_cast<std::size_t>(run.range(0));
}

template <class Map>
void fill(benchmark::State & run, bool scattered) {
    auto const order = keys(sizeOf(run), scattered);
    for (auto _ : run) {
        run.PauseTiming();
        auto tables = std::make_unique<Tables<Map>>(sizeOf(run));
        run.ResumeTiming();
        tables->fill(order);
        run.PauseTiming();
        tables.reset();
        run.ResumeTiming();
    }
    perEntry(run);
}

template <class Map>
void fillAscending(benchmark::State & run) {
    fill<Map>(run, false);
}

template <class Map>
void fillScattered(benchmark::State & run) {
    fill<Map>(run, true);
}

template <class Map>
void find(benchmark::State & run) {
    auto const order = keys(sizeOf(run), true);
    Tables<Map> const tables(sizeOf(run));
    tables.fill(order);
    for (auto _ : run) {
        for (Map const & map : tables) {
            for (Vex::U64 const key : order) {
                benchmark::DoNotOptimize(map.find(static_cast<typename Map::Key>(key)));
            }
        }
    }
    perEntry(run);
}

template <class Map>
void walk(benchmark::State & run) {
    Tables<Map> const tables(sizeOf(run));
    tables.fill(keys(sizeOf(run), true));
    for (auto _ : run) {
        Vex::U64 sum = 0;
        for (Map const & map : tables) {
            for (auto const & entry : map) {
                sum += read(entry);
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    perEntry(run);
}

template <class Map>
void destroy(benchmark::State & run) {
    auto const order = keys(sizeOf(run), true);
    for (auto _ : run) {
        run.PauseTiming();
        auto tables = std::make_unique<Tables<Map>>(sizeOf(run));
        tables->fill(order);
        run.ResumeTiming();
        tables.reset();
    }
    perEntry(run);
}

/// Heap bytes per entry, including its entity, if any, but not the map itself.
template <class Map>
void memory(benchmark::State & run) {
    std::size_t taken = 0;
    for (auto _ : run) {
        Tables<Map> const tables(sizeOf(run));
        std::size_t const before = mallinfo2().uordblks + mallinfo2().hblkhd;
        tables.fill(keys(sizeOf(run), true));
        taken = mallinfo2().uordblks + mallinfo2().hblkhd - before;
    }
    run.counters["bytes/entry"] = static_cast<double>(taken) / static_cast<double>(entriesInAll);
    run.counters["map"] = static_cast<double>(sizeof(Map));
}

void sizes(benchmark::internal::Benchmark * bench) {
    bench->Unit(benchmark::kMillisecond)->Arg(4)->Arg(10)->Arg(1000)->Arg(1'000'000);
}

void setSizes(benchmark::internal::Benchmark * bench) {
    bench->Unit(benchmark::kMillisecond)->Arg(1)->Arg(2)->Arg(4);
}

} // namespace

BENCHMARK_TEMPLATE(fillAscending, Values)->Apply(sizes);
BENCHMARK_TEMPLATE(fillScattered, Values)->Apply(sizes);
BENCHMARK_TEMPLATE(find, Values)->Apply(sizes);
BENCHMARK_TEMPLATE(walk, Values)->Apply(sizes);
BENCHMARK_TEMPLATE(destroy, Values)->Apply(sizes);
BENCHMARK_TEMPLATE(memory, Values)->Apply(sizes)->Iterations(1);
BENCHMARK_TEMPLATE(fillAscending, Items)->Apply(sizes);
BENCHMARK_TEMPLATE(fillScattered, Items)->Apply(sizes);
BENCHMARK_TEMPLATE(find, Items)->Apply(sizes);
BENCHMARK_TEMPLATE(walk, Items)->Apply(sizes);
BENCHMARK_TEMPLATE(destroy, Items)->Apply(sizes);
BENCHMARK_TEMPLATE(memory, Items)->Apply(sizes)->Iterations(1);
BENCHMARK_TEMPLATE(fillScattered, Set)->Apply(setSizes);
BENCHMARK_TEMPLATE(walk, Set)->Apply(setSizes);
BENCHMARK_TEMPLATE(destroy, Set)->Apply(setSizes);
BENCHMARK_TEMPLATE(memory, Set)->Apply(setSizes)->Iterations(1);
