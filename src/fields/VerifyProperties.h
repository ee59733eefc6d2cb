// How scripts reach the verification of a window's sends: as properties of the window.
#pragma once

#include <array>

#include "controls/PropertyTable.h"

namespace korvane::fields {

// "Verify", the program's choice, and "VerifyResult". The window has verifySwitch() and verifyReport().
template <class Window>
inline constexpr std::array kVerifyProperties{
    controls::PropertyInfo{"Verify",
                           [](const controls::Object& object) -> controls::Value {
                               return dynamic_cast<const Window&>(object).verifySwitch().On.get();
                           },
                           [](controls::Object& object, const controls::Value& value) {
                               dynamic_cast<Window&>(object).verifySwitch().On =
                                   controls::detail::fromValue<bool>(value);
                           }},
    controls::PropertyInfo{"VerifyResult",
                           [](const controls::Object& object) -> controls::Value {
                               return dynamic_cast<const Window&>(object).verifyReport().Text.get();
                           },
                           nullptr},
};

}  // namespace korvane::fields
