#include "ecu/CommandParser.h"

#include <algorithm>

namespace korvane::ecu {

namespace {

enum class Form { Single, Pair, Counted, FixedBody, SingleOrPair, SingleOrCounted };

struct CommandForm {
    std::uint8_t code;
    Form form;
    std::size_t body = 0;
};

constexpr CommandForm kForms[] = {
    {'x', Form::Single},          {'y', Form::Counted},        {'X', Form::Pair},           {'a', Form::Single},
    {247, Form::Single},          {'f', Form::Single},         {245, Form::Single},         {'m', Form::Single},
    {'p', Form::SingleOrCounted}, {'o', Form::SingleOrPair},   {'P', Form::FixedBody, 4},   {'i', Form::FixedBody, 4},
    {'g', Form::FixedBody, 4},    {'A', Form::FixedBody, 160}, {248, Form::FixedBody, 160}, {'F', Form::FixedBody, 160},
    {246, Form::FixedBody, 160},  {'b', Form::Single},         {'c', Form::Single},         {'M', Form::FixedBody, 9},
    {'d', Form::Single},          {'W', Form::FixedBody, 4},   {'R', Form::FixedBody, 2},   {'U', Form::FixedBody, 2},
    {'e', Form::Single},          {'(', Form::Pair},           {')', Form::Pair},           {'S', Form::Counted},
    {'!', Form::Counted, 1},
};

std::uint8_t complement(std::uint8_t code) {
    return static_cast<std::uint8_t>(0xFF - code);
}

}  // namespace

void CommandParser::feed(std::uint8_t byte, Micros at, CommandHandler& handler) {
    settle(at, handler);
    if (stage_ != Stage::Idle && at - lastByte_ > kPatience) {
        reset();
    }
    lastByte_ = at;
    switch (stage_) {
        case Stage::ShortForm:
            takeAfterShortForm(byte, at, handler);
            break;
        case Stage::Length:
            takeLength(byte);
            break;
        case Stage::Body:
            takeBody(byte);
            break;
        case Stage::Complement:
            takeComplement(byte, at, handler);
            break;
        case Stage::Idle:
            begin(byte, at, handler);
            break;
    }
}

void CommandParser::takeAfterShortForm(std::uint8_t byte, Micros at, CommandHandler& handler) {
    if (!continuesShortForm(byte)) {
        endShortForm(at, handler);
        begin(byte, at, handler);
    } else if (counted_) {
        takeLength(byte);
    } else {
        takeComplement(byte, at, handler);
    }
}

std::optional<Micros> CommandParser::shortFormEnd() const {
    return stage_ == Stage::ShortForm ? std::optional(lastByte_ + kQuiet) : std::nullopt;
}

void CommandParser::settle(Micros at, CommandHandler& handler) {
    if (const auto end = shortFormEnd(); end && at >= *end) {
        endShortForm(*end, handler);
    }
}

void CommandParser::begin(std::uint8_t byte, Micros at, CommandHandler& handler) {
    const auto* form = std::ranges::find(kForms, byte, &CommandForm::code);
    if (form == std::end(kForms)) {
        handler.unknown(byte, at);
        return;
    }
    code_ = byte;
    bodyLength_ = form->body;
    filled_ = 0;
    counted_ = form->form == Form::Counted || form->form == Form::SingleOrCounted;
    switch (form->form) {
        case Form::Single:
            handler.command(code_, {}, at);
            break;
        case Form::Pair:
            stage_ = Stage::Complement;
            break;
        case Form::Counted:
            stage_ = Stage::Length;
            break;
        case Form::FixedBody:
            stage_ = Stage::Body;
            break;
        case Form::SingleOrPair:
        case Form::SingleOrCounted:
            stage_ = Stage::ShortForm;
            break;
    }
}

void CommandParser::endShortForm(Micros at, CommandHandler& handler) {
    reset();
    handler.command(code_, {}, at);
}

bool CommandParser::continuesShortForm(std::uint8_t byte) const {
    return byte == (counted_ ? bodyLength_ : complement(code_));
}

void CommandParser::takeLength(std::uint8_t byte) {
    if (byte != bodyLength_) {
        reset();
    } else {
        stage_ = bodyLength_ == 0 ? Stage::Complement : Stage::Body;
    }
}

void CommandParser::takeBody(std::uint8_t byte) {
    body_.at(filled_++) = byte;
    if (filled_ == bodyLength_) {
        stage_ = Stage::Complement;
    }
}

void CommandParser::takeComplement(std::uint8_t byte, Micros at, CommandHandler& handler) {
    reset();
    if (byte == complement(code_)) {
        handler.command(code_, std::span(body_).first(bodyLength_), at);
    }
}

}  // namespace korvane::ecu
