#include "Pelo/Errors.h"
#include "Pelo/Layout.h"
#include "Pelo/Slot.h"
#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"
#include "fuzz/harness/Lines.h"
#include "fuzz/harness/Scratch.h"
#include "state/HostTable.h"

#include <algorithm>
#include <cstring>
#include <vector>

/// Any bytes as the file of a shared table: it is refused, or walked up to the damage.
namespace fuzz {

namespace {

using Pelo::U64;
using VcsEvpn::HostSchema;
using Slot = Pelo::Slot<HostSchema>;
using Words = std::vector<U64>;

constexpr auto hostFormat = Pelo::formatOf<HostSchema>;

/// What can be wrong with a table although its checksums are right.
constexpr unsigned sealsHeader = 1;
constexpr unsigned sealsCounts = 2;
constexpr unsigned sealsSlots = 4;

/// An empty table of up to 32 slots, in which `input` fills some.
Words tableOf(Input & input) {
    U64 const capacity = input.below(33);
    Words words(Pelo::headerWords + capacity * hostFormat.slotWords());
    auto const header = Pelo::makeHeader(hostFormat, capacity);
    std::copy(header.begin(), header.end(), words.begin());
    U64 live = 0;
    U64 dead = 0;
    for (U64 number = 0; number < capacity; ++number) {
        Slot slot;
        auto const state = input.below(8);
        if (state == 1 || state == 2) {
            slot.stateIs(state == 1 ? Pelo::SlotState::live : Pelo::SlotState::dead);
            slot.keyIs(Pelo::EncodedKey<HostSchema>({Nolt::EthAddr::ofValue(input.byte()), {}}));
            slot.valueIs({Nolt::IpAddr(input.byte()), 0});
            (state == 1 ? live : dead) += 1;
        }
        auto const & sealed = slot.sealed(number);
        std::copy(sealed.begin(), sealed.end(), words.data() + Slot::place(number));
    }
    auto const counts = Pelo::makeCounts({live, dead, input.flag()});
    std::copy(counts.begin(), counts.end(), words.begin() + Pelo::countsFirstWord);
    return words;
}

/// Changes bytes at places that `input` names, then makes the checksums right that it asks for.
void damage(Words & words, Input & input) {
    auto const seals = input.below(8);
    auto * const bytes = reinterpret_cast<std::uint8_t *>(words.data());
    while (input.rest().size() >= 3) {
        auto const place = input.word() % (words.size() * sizeof(U64));
        bytes[place] = input.byte();
    }
    if ((seals & sealsHeader) != 0) {
        // The checksum is the last of these words, and that of the words before it.
        words[Pelo::fixedWords - 1] =
            Pelo::checksum(~U64{0}, std::span(words).first(Pelo::fixedWords - 1));
    }
    if ((seals & sealsCounts) != 0) {
        constexpr auto last = Pelo::countsFirstWord + Pelo::countsWords - 1;
        words[last] = Pelo::checksum(
            ~U64{1}, std::span(words).subspan(Pelo::countsFirstWord, Pelo::countsWords - 1));
    }
    if ((seals & sealsSlots) != 0) {
        U64 const capacity = (words.size() - Pelo::headerWords) / hostFormat.slotWords();
        for (U64 number = 0; number < capacity; ++number) {
            Slot slot;
            auto * const from = words.data() + Slot::place(number);
            std::copy_n(from, slot.words().size(), slot.words().begin());
            auto const & sealed = slot.sealed(number);
            std::copy(sealed.begin(), sealed.end(), from);
        }
    }
    // An odd generation is a writer that has died: each read would wait a quarter of a second.
    words[Pelo::generationWord] &= ~U64{1};
}

void walk(VcsEvpn::HostTable const & table, std::size_t slots) {
    std::size_t walked = 0;
    for (auto at = table.begin(); at; ++at) {
        static_cast<void>(at.value());
        static_cast<void>(table.host(at.key()));
        check(++walked <= slots, "a walk reaches more keys than there are slots");
    }
    check(walked == table.size(), "a walk ends well with another number of keys than the size");
    static_cast<void>(table.host({Nolt::EthAddr::ofValue(0x020000000001), Vxlan::Vni(10)}));
}

void open(Scratch const & file, std::size_t size) {
    try {
        walk(*VcsEvpn::openHostTable(file.descriptor(), "fuzz\n\x1b[2J"),
             size / hostFormat.slotSize());
    } catch (Pelo::TableError const & error) {
        checkLine(error.what());
    } catch (Pelo::CorruptionDetectedException const & error) {
        checkLine(error.what());
    }
}

} // namespace

void tableFile(std::string_view bytes) {
    static Scratch file;
    Input input(bytes);
    if (input.below(8) == 0) {
        std::string raw(input.rest());
        if (raw.size() > Pelo::generationWord * sizeof(U64)) {
            raw[Pelo::generationWord * sizeof(U64)] &= '\xfe';
        }
        file.fill(raw);
        return open(file, raw.size());
    }
    auto words = tableOf(input);
    damage(words, input);
    auto const size = words.size() * sizeof(U64);
    file.fill({reinterpret_cast<char const *>(words.data()), size - input.rest().size()});
    open(file, size);
}

} // namespace fuzz
