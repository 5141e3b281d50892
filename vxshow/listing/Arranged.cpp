#include "vxshow/listing/Arranged.h"

#include "outfmt/Interrupt.h"

#include <algorithm>
#include <compare>
#include <limits>
#include <memory>

namespace vxshow::listing {

namespace {

/// Passes on the first rows only.
class Limiter final : public RowSink {
public:
    Limiter(RowSink & sink, Vex::U32 left) : sink_(sink), left_(left) {}

    void row(Row row) override {
        if (left_ != 0) {
            --left_;
            sink_.row(row);
        }
    }

private:
    RowSink & sink_;
    Vex::U32 left_;
};

/// Collects rows in one array of cells, and sorts numbers that stand for them.
class SortedRows final : public RowSink {
public:
    SortedRows(std::vector<SortKey> const & sort, std::optional<Vex::U32> top)
        : sort_(sort), top_(top.value_or(std::numeric_limits<Vex::U32>::max())) {}

    void row(Row row) override {
        outfmt::checkInterrupt();
        cellsOfRow_ = row.size();
        cells_.insert(cells_.end(), row.begin(), row.end());
        order_.push_back(order_.size());
        // Half of what is kept goes at once, so each row is looked at a few times only.
        constexpr std::size_t least = 1024;
        if (order_.size() >= std::max(least, 2 * top_)) {
            keepTop();
        }
    }

    void finish() {
        keepTop();
        std::sort(order_.begin(), order_.end(), Less{*this});
    }

    void replay(RowSink & sink) const {
        for (std::size_t const number : order_) {
            sink.row(rowAt(number));
        }
    }

private:
    struct Less {
        SortedRows & rows;

        bool operator()(std::size_t a, std::size_t b) const { return rows.isBefore(a, b); }
    };

    Row rowAt(std::size_t number) const {
        return Row(cells_).subspan(number * cellsOfRow_, cellsOfRow_);
    }

    bool isBefore(std::size_t a, std::size_t b) {
        if (++comparisons_ % 4096 == 0) {
            outfmt::checkInterrupt();
        }
        Row const rowA = rowAt(a);
        Row const rowB = rowAt(b);
        for (auto const & [column, descending] : sort_) {
            Cell const & cellA = rowA[column];
            Cell const & cellB = rowB[column];
            if (isKnown(cellA) != isKnown(cellB)) {
                return isKnown(cellA);
            }
            if (cellA != cellB) {
                return descending ? cellB < cellA : cellA < cellB;
            }
        }
        return a < b;
    }

    /// Forgets all but the first rows. Those that stay keep the order in which they came.
    void keepTop() {
        if (order_.size() <= top_) {
            return;
        }
        auto const end = order_.begin() + static_cast<std::ptrdiff_t>(top_);
        std::nth_element(order_.begin(), end, order_.end(), Less{*this});
        order_.erase(end, order_.end());
        std::sort(order_.begin(), order_.end());
        for (std::size_t place = 0; place < order_.size(); ++place) {
            auto const row = rowAt(order_[place]);
            std::copy(row.begin(), row.end(), cells_.begin() + offsetOf(place));
            order_[place] = place;
        }
        cells_.resize(order_.size() * cellsOfRow_);
    }

    std::ptrdiff_t offsetOf(std::size_t place) const {
        return static_cast<std::ptrdiff_t>(place * cellsOfRow_);
    }

    std::vector<SortKey> sort_;
    std::size_t top_;
    std::size_t cellsOfRow_ = 0;
    std::size_t comparisons_ = 0;
    std::vector<Cell> cells_;
    std::vector<std::size_t> order_;
};

} // namespace

Walk arranged(Walk const & walk, std::vector<SortKey> const & sort, std::optional<Vex::U32> top) {
    if (!sort.empty()) {
        auto const rows = std::make_shared<SortedRows>(sort, top);
        walk(*rows);
        rows->finish();
        return [rows](RowSink & sink) { rows->replay(sink); };
    }
    if (top) {
        return [walk, top](RowSink & sink) {
            Limiter limiter(sink, *top);
            walk(limiter);
        };
    }
    return walk;
}

} // namespace vxshow::listing
