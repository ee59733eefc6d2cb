// A file that one process holds: others see that it runs still.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace korvane::platform {

// Makes the file if there is none. Null while another holder has it. It is let go with the last copy of the result, and
// with the process, however that ends. An empty function: nobody else is there.
using FileHold = std::function<std::shared_ptr<const void>(const std::filesystem::path& file)>;

}  // namespace korvane::platform
