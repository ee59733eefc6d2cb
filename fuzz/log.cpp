// Log files: any bytes give rows, a line of findings and a replay, and the columns agree with the cells.
#include <cstddef>
#include <cstdint>

#include "Support.h"
#include "core/Numbers.h"
#include "logs/LogFindings.h"
#include "logs/clsTXTdata.h"
#include "platform/RuntimeError.h"

namespace {

using namespace korvane;
using fuzz::require;
using logs::CellReading;

// Whether the call ends with a failure that callers know.
template <class Call>
bool fails(Call call) {
    try {
        call();
        return false;
    } catch (const platform::RuntimeError& failure) {
        require(failure.number() == platform::kErrorTypeMismatch || failure.number() == platform::kErrorOverflow);
        return true;
    }
}

void checkCells(const logs::clsTXTdata& log) {
    const std::int32_t last = std::min(log.storedRows(), 40);
    for (std::int32_t row = 1; row <= last; ++row) {
        for (int column = 0; column < logs::kReadColumns; ++column) {
            require(!log.TData(column, row).empty());
        }
        require(row > log.ItemCount() || !fails([&] { static_cast<void>(log.number(logs::kRateColumn, row)); }));
    }
}

void checkColumns(const logs::clsTXTdata& log) {
    for (int column = 0; column < logs::kReadColumns; ++column) {
        const auto& numbers = log.column(column, CellReading::Number);
        const auto rows = static_cast<std::size_t>(log.ItemCount()) + 1;
        require(numbers.values.size() == rows && log.column(column, CellReading::Val).values.size() == rows);
        require((numbers.failedRow == 0) == (numbers.failure == 0) && numbers.failedRow <= log.ItemCount());
    }
    require(log.column(1, CellReading::Number).failure != platform::kErrorTypeMismatch);
    require(log.column(5, CellReading::Number).failure != platform::kErrorTypeMismatch);
}

void replay(logs::clsTXTdata& log) {
    for (int i = 0; i < 20; ++i) {
        bool more = true;
        if (fails([&] { more = log.getNextSimDataPacket(); })) {
            return;
        }
        require(more == (log.replayRow() > 1));
        static_cast<void>(fails([&] { static_cast<void>(log.getSimSpeed()); }));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Script script({data, size});
    const char decimal = script.next() % 2 == 0 ? '.' : ',';
    const support::TempFolder folder;
    const auto file = folder.write("log.txt", fuzz::textOf(script.bytes(size)));
    core::LiveTable live;
    logs::clsTXTdata log(live, decimal);
    require(!log.LoadFromFile(file));
    require(log.storedRows() >= log.ItemCount() && log.storedRows() <= log.ItemCount() + 1);
    require(logs::findingsOf(log).starts_with("log.txt: " + core::textOf(log.ItemCount()) + " rows"));
    checkCells(log);
    checkColumns(log);
    replay(log);
    return 0;
}
