#include "fields/Fields.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "core/Bytes.h"
#include "core/Checked.h"
#include "core/Numbers.h"
#include "fields/SteppingBox.h"
#include "platform/RuntimeError.h"

namespace korvane::fields {

namespace {

using core::checked;

constexpr int kByteMask = 0xFF;

template <class... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

platform::RuntimeError misfit(const controls::Control& control, const std::string& range) {
    return {platform::kErrorOverflow, calledName(control) + " in \"" + titleOf(control.container()) +
                                          "\" holds a value that does not fit: it must be " + range +
                                          ".\r\nThe save ended there. It and what follows it was not sent."};
}

void choose(const Lists& lists, std::int32_t value) {
    if (lists.high == nullptr) {
        lists.low->choose(lists.lowByteOnly ? value & kByteMask : value);
        return;
    }
    lists.low->choose(value & kByteMask);
    lists.high->choose((value >> 8) & kByteMask);
}

std::int32_t rowOf(const controls::ComboBox& list) {
    if (list.ListIndex < 0) {
        throw misfit(list, "a row of the list");
    }
    return list.ListIndex;
}

std::int32_t rowsOf(const Lists& lists) {
    const std::int32_t low = rowOf(*lists.low);
    return lists.high == nullptr ? low : low + kByteValues * rowOf(*lists.high);
}

bool stores(const Field& field) {
    const auto* const own = std::get_if<Own>(&field.control);
    return own != nullptr ? static_cast<bool>(own->stored) : !std::holds_alternative<Caption>(field.control);
}

// To how many addresses a reply is shown.
int answersOf(const Field& field) {
    return field.answers.value_or(std::visit(Overloaded{
                                                 [&](const Boxes& boxes) { return boxes.count() * bytesOf(field); },
                                                 [](const Own& own) { return own.show ? 1 : 0; },
                                                 [](const auto&) { return 1; },
                                             },
                                             field.control));
}

// The box or the list whose label names the cell; null for others.
const controls::Control* namedControl(const Field& field, int cell) {
    const auto* const lists = std::get_if<Lists>(&field.control);
    return lists != nullptr ? lists->low : static_cast<const controls::Control*>(boxOf(field, cell));
}

}  // namespace

std::string calledName(const controls::Control& control) {
    return control.label().empty() ? control.path() : control.label();
}

std::string titleOf(const controls::Control* container) {
    const auto* const frame = dynamic_cast<const controls::Frame*>(container);
    return frame != nullptr ? frame->Caption.get() : std::string();
}

controls::TextBox* boxOf(const Field& field, int cell) {
    return std::visit(Overloaded{
                          [&](const Boxes& boxes) { return &boxes(cell); },
                          [](const Own& own) { return own.box; },
                          [](const auto&) -> controls::TextBox* { return nullptr; },
                      },
                      field.control);
}

std::string labelOf(const Field& field, int cell) {
    const auto* const control = namedControl(field, cell);
    return control != nullptr ? control->label() : std::string();
}

std::string titleOf(const Field& field, int cell) {
    const auto* const control = namedControl(field, cell);
    return control != nullptr ? titleOf(control->container()) : std::string();
}

Fields::Fields(core::SharedTables& tables, std::vector<Field> rows) : tables_(tables), rows_(std::move(rows)) {
    for (const Field& field : rows_) {
        for (int cell = 0; field.stepping && cell < cells(field); ++cell) {
            SteppingBox(field, cell, tables_).lock();
            std::get<Boxes>(field.control)(cell).KeyDown = [this, &field, cell](int keyCode, int) {
                SteppingBox(field, cell, tables_).key(keyCode);
            };
        }
    }
}

bool Fields::take(std::int32_t value, int addr, bool is16, From from) {
    keepImage(value, addr, is16);
    if (report_ != nullptr && from == From::Ecu) {
        report_->heard(addr, value, is16);
    }
    const auto distance = [&](const Field& field) {
        return std::int64_t{addr} - std::int64_t{tables_.addresses.*field.first};
    };
    const auto answers = [&](const Field& field) { return distance(field) >= 0 && distance(field) < answersOf(field); };
    const auto field = std::find_if(rows_.begin(), rows_.end(), answers);
    if (field == rows_.end()) {
        return false;
    }
    const int cell = static_cast<int>(distance(*field)) / bytesOf(*field);
    show(*field, value, cell);
    if (from == From::Ecu) {
        heard(*field, cell);
    }
    return true;
}

// A settings file passes words in the same way as bytes; a word is stored in the image only if it fits one byte.
void Fields::keepImage(std::int32_t value, int addr, bool is16) {
    auto& byte = checked(tables_.EEImage, addr);
    if (!is16 && !checked(tables_.EEParams, addr).is16bit) {
        byte = core::lowByte(value);
    } else if (value < kByteValues) {
        byte = core::toByte(value);
    }
}

template <class Condition>
const Field& Fields::first(Address address, Condition&& condition) const {
    const auto wanted = [&](const Field& field) { return field.first == address && condition(field); };
    const auto field = std::find_if(rows_.begin(), rows_.end(), wanted);
    if (field == rows_.end()) {
        platform::raiseSubscript();
    }
    return *field;
}

void Fields::show(Address address, std::int32_t value, int cell) {
    const Field& field = first(address, [](const Field& each) { return answersOf(each) > 0; });
    show(field, value, cell);
    heard(field, cell);
    if (report_ != nullptr) {
        report_->heard(std::int64_t{tables_.addresses.*address} + cell * bytesOf(field), value, bytesOf(field) == 2);
    }
}

void Fields::heard(const Field& field, int cell) const {
    if (const auto* const box = boxOf(field, cell); box != nullptr && marks_ != nullptr) {
        marks_->heard(*box);
    }
}

void Fields::watch(BoxMarks& marks, SaveReport& report) {
    marks_ = &marks;
    report_ = &report;
    for (const Field& field : rows_) {
        for (int cell = 0; cell < cells(field); ++cell) {
            if (const auto* const box = boxOf(field, cell); box != nullptr) {
                marks.add(*box);
                if (stores(field)) {
                    marks.setCells(*box, {tables_, field, cell});
                }
            }
        }
    }
}

const Field& Fields::storing(Address address) const {
    return first(address, stores);
}

void Fields::show(const Field& field, std::int32_t value, int cell) {
    std::visit(Overloaded{
                   [&](const Boxes&) { showBox(field, value, cell); },
                   [&](const Lists& lists) { choose(lists, value); },
                   [&](const Caption& label) { label.get().Caption = core::numberText(value).view(); },
                   [&](const Own& own) { own.show(value); },
               },
               field.control);
    shown_.insert(&field);
}

void Fields::showBox(const Field& field, std::int32_t value, int cell) {
    if (field.stepping) {
        SteppingBox(field, cell, tables_).show(value);
        return;
    }
    auto& box = std::get<Boxes>(field.control)(cell);
    if (field.codec.width == Width::TwoBytes) {
        const int addr = tables_.addresses.*field.first + cell * bytesOf(field);
        value = checked(tables_.EEImage, addr) + kByteValues * checked(tables_.EEImage, addr + 1);
    }
    box.Text = core::numberText(field.codec.shown(value, tables_)).view();
}

int Fields::addressOf(const Field& field, int cell) const {
    return tables_.addresses.*field.first + cell * bytesOf(field);
}

bool Fields::holds(const Field& field, int cell) const {
    const auto* const box = boxOf(field, cell);
    return box != nullptr ? !box->Text.get().empty() : shown_.contains(&field);
}

std::optional<std::int32_t> Fields::heldBy(const Field& field, int cell) const {
    try {
        return holds(field, cell) ? std::optional(stored(field, cell)) : std::nullopt;
    } catch (const platform::RuntimeError&) {
        return {};
    }
}

std::vector<Fields::Held> Fields::held() const {
    std::vector<Held> all;
    for (const Field& field : rows_) {
        for (int cell = 0; stores(field) && cell < cells(field); ++cell) {
            if (const auto value = heldBy(field, cell)) {
                all.push_back({addressOf(field, cell), *value, field.codec.width != Width::Byte});
            }
        }
    }
    return all;
}

bool Fields::put(std::int32_t value, int addr) {
    for (const Field& field : rows_) {
        const int distance = addr - addressOf(field, 0);
        const int bytes = bytesOf(field);
        const bool isHere = distance >= 0 && distance % bytes == 0 && distance / bytes < cells(field);
        const auto* const own = std::get_if<Own>(&field.control);
        if (isHere && stores(field) && (own == nullptr || own->show)) {
            putInto(field, value, distance / bytes);
            return true;
        }
    }
    return false;
}

// A box of two bytes is shown from the image, which a value that is only put there must not change.
void Fields::putInto(const Field& field, std::int32_t value, int cell) {
    if (std::holds_alternative<Boxes>(field.control) && !field.stepping) {
        boxOf(field, cell)->Text = core::numberText(field.codec.shown(value, tables_)).view();
    } else {
        show(field, value, cell);
    }
}

std::vector<Fields::Called> Fields::called() const {
    std::vector<Called> all;
    for (const Field& field : rows_) {
        for (int cell = 0; cell < cells(field); ++cell) {
            all.push_back(
                {addressOf(field, cell), addressOf(field, 0), field.codec, titleOf(field, cell), labelOf(field, cell)});
        }
    }
    return all;
}

int Fields::cells(const Field& field) {
    const auto* const boxes = std::get_if<Boxes>(&field.control);
    return boxes != nullptr ? boxes->count() : 1;
}

std::int32_t Fields::stored(const Field& field, int cell) const {
    return std::visit(Overloaded{
                          [&](const Boxes&) { return storedBox(field, cell); },
                          [](const Lists& lists) { return rowsOf(lists); },
                          [](const Caption&) { return 0; },
                          [](const Own& own) { return own.stored(); },
                      },
                      field.control);
}

std::int32_t Fields::storedBox(const Field& field, int cell) const {
    const auto& box = std::get<Boxes>(field.control)(cell);
    const Keeper keeper = field.stepping ? field.stepping->keeper : nullptr;
    const Codec codec = keeper != nullptr ? Codec{field.codec.width, 1.0, " steps"} : field.codec;
    try {
        return codec.stored(core::val((keeper != nullptr ? box.*keeper : box.Text).get()), tables_);
    } catch (const platform::RuntimeError&) {
        throw misfit(box, codec.range(tables_));
    }
}

}  // namespace korvane::fields
