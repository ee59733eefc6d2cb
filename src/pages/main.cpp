// korvane-pages: writes the manual pages and completions of both programs. A part of the build, not installed.
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "pages/Completions.h"
#include "pages/ManPage.h"

namespace {

using namespace korvane::pages;

void write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    if (!(stream << text << std::flush)) {
        throw std::runtime_error(file.string() + " can't be written");
    }
}

void writePages(const std::filesystem::path& folder, const std::string& date) {
    for (const auto& page : {tunerPage(), ecuPage()}) {
        write(folder / (page.program + ".1"), manPage(page, KORVANE_VERSION, date));
        write(folder / (page.program + ".bash"), bashCompletion(page));
        write(folder / ("_" + page.program), zshCompletion(page));
        write(folder / (page.program + ".fish"), fishCompletion(page));
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: korvane-pages FOLDER YYYY-MM-DD\n";
        return 2;
    }
    try {
        writePages(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "korvane-pages: " << error.what() << '\n';
        return 1;
    }
}
