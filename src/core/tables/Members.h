// The members of the shared tables by name. Scripts know them by these names.
#pragma once

#include <string_view>
#include <tuple>

namespace korvane::core {

// What scripts may do with a member.
enum class Access { ReadWrite, ReadOnly };

template <class Table, class Value>
struct Member {
    std::string_view name;
    Value Table::*place;
    Access access = Access::ReadWrite;
};

template <class Table, class Value>
Member(std::string_view, Value Table::*) -> Member<Table, Value>;
template <class Table, class Value>
Member(std::string_view, Value Table::*, Access) -> Member<Table, Value>;

// A tuple of all members of `Table`, each once. It is declared beside the table; the tests find a missing member.
template <class Table>
inline constexpr std::tuple<> kMembers;

}  // namespace korvane::core
