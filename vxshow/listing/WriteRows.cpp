#include "vxshow/listing/WriteRows.h"

#include "outfmt/Interrupt.h"
#include "vxshow/listing/Arranged.h"
#include "vxshow/listing/Csv.h"
#include "vxshow/listing/JsonLines.h"
#include "vxshow/listing/Wide.h"

#include <array>

namespace vxshow::listing {

namespace {

constexpr Column tableColumn{"table", "Table", Type::text};
constexpr Column countColumn{"count", "Count", Type::number};
constexpr std::array countColumns{tableColumn, countColumn};

class Counter final : public RowSink {
public:
    void row(Row /* row */) override {
        if (++count_ % 4096 == 0) {
            outfmt::checkInterrupt();
        }
    }

    Vex::U64 count() const { return count_; }

private:
    Vex::U64 count_ = 0;
};

void write(outfmt::OutputBuffer & buffer, Form form, Shown const & shown, Walk const & walk) {
    switch (form) {
    case Form::wide:
        return writeWide(buffer, shown, walk);
    case Form::csv:
        return writeCsv(buffer, shown, walk);
    case Form::jsonLines:
        return writeJsonLines(buffer, shown, walk);
    }
}

Vex::U64 countOf(TablePlan const & table, Plan const & plan, WalkTable const & walk) {
    Counter counter;
    arranged([&](RowSink & sink) { walk(table.table, sink); }, {}, plan.top)(counter);
    return counter.count();
}

void writeCounts(outfmt::OutputBuffer & buffer, Plan const & plan, Tables tables,
                 Surface const & surface, WalkTable const & walk) {
    constexpr std::array<std::size_t, 2> all{0, 1};
    auto const columns = plan.form == Form::wide ? std::span<std::size_t const>(all)
                                                 : std::span<std::size_t const>(all).subspan(1);
    std::vector<std::array<Cell, 2>> rows;
    for (TablePlan const & table : plan.tables) {
        rows.push_back({tables[table.table].name, countOf(table, plan, walk)});
    }
    auto const writeFrom = [&](std::string_view name, std::span<std::array<Cell, 2> const> some) {
        Table const counts{name, countColumns};
        write(buffer, plan.form, {counts, columns, plan.header, surface}, [&](RowSink & sink) {
            for (auto const & row : some) {
                sink.row(row);
            }
        });
    };
    if (plan.form != Form::jsonLines) {
        return writeFrom("", rows);
    }
    for (std::size_t place = 0; place < rows.size(); ++place) {
        writeFrom(tables[plan.tables[place].table].name, std::span(rows).subspan(place, 1));
    }
}

} // namespace

void writeRows(int fd, Plan const & plan, Tables tables, Surface const & surface,
               WalkTable const & walk) {
    outfmt::OutputBuffer buffer(fd, outfmt::OutputBuffer::Parting::lineEnds);
    if (plan.count) {
        writeCounts(buffer, plan, tables, surface, walk);
        buffer.flush();
        return;
    }
    for (TablePlan const & table : plan.tables) {
        if (plan.form == Form::wide && &table != &plan.tables.front()) {
            buffer.append('\n');
        }
        auto const rows =
            arranged([&](RowSink & sink) { walk(table.table, sink); }, table.sort, plan.top);
        write(buffer, plan.form, {tables[table.table], table.columns, plan.header, surface}, rows);
    }
    buffer.flush();
}

} // namespace vxshow::listing
