#include "app/OneLine.h"

#include <iostream>

namespace korvane::app {

void complain(std::string_view text) {
    std::cerr << "korvane-tuner: " + onOneLine(text) + '\n';
}

}  // namespace korvane::app
