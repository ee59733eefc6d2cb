// Journals of a restore: any bytes are one, or are called damaged; what is taken for one is written again as it was.
// The same bytes with the right checksum behind them reach the reader behind it.
#include <string>

#include "Support.h"
#include "keep/restore/RestoreJournal.h"
#include "keep/restore/SettingCells.h"

namespace {

using namespace korvane;
using fuzz::require;

void checkJournal(const keep::RestoreJournal& journal, std::string_view bytes) {
    require(keep::encodeJournal(journal) == bytes);
    require(!journal.cells.empty() && journal.written >= 0);
    require(journal.written <= static_cast<int>(journal.cells.size()));
    int above = -1;
    for (const auto& cell : journal.cells) {
        require(cell.address > above && cell.address <= keep::kLastSetting);
        above = cell.address;
    }
}

void decode(std::string_view bytes) {
    const auto found = keep::decodeJournal(bytes);
    require(found.journal.has_value() == found.damage.empty());
    if (found.journal) {
        checkJournal(*found.journal, bytes);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = fuzz::textOf({data, size});
    decode(bytes);
    decode(keep::sealedJournal(bytes));
    return 0;
}
