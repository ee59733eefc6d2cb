#include "documents/Markdown.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace korvane::documents {

namespace {

constexpr std::string_view kIndent = "    ";
constexpr std::string_view kFence = "```";

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream stream(line.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) {
        cells.push_back(trimmed(cell));
    }
    return cells;
}

bool isRule(const std::string& line) {
    return line.find_first_not_of("|-: ") == std::string::npos;
}

class Parser {
public:
    explicit Parser(Document& document) : document_(document) {}

    void take(const std::string& line) {
        if (line.starts_with(kFence)) {
            fenced_ = !fenced_;
            inBlock_ = false;
        } else if (fenced_ || (line.starts_with(kIndent) && (inBlock_ || afterBlank_))) {
            takeShown(fenced_ ? line : line.substr(kIndent.size()));
        } else if (line.empty()) {
            takeBlank();
        } else {
            inBlock_ = false;
            takeWords(line);
        }
        afterBlank_ = line.empty();
    }

private:
    void takeShown(const std::string& line) {
        if (!inBlock_) {
            document_.blocks.push_back({section_, {}});
        } else if (!fenced_) {
            auto& lines = document_.blocks.back().lines;
            lines.insert(lines.end(), static_cast<std::size_t>(blanks_), std::string());
        }
        inBlock_ = true;
        blanks_ = 0;
        document_.blocks.back().lines.push_back(line);
    }

    void takeBlank() {
        ++blanks_;
        inTable_ = false;
        document_.prose += '\n';
    }

    void takeWords(const std::string& line) {
        if (line.starts_with('#')) {
            const auto level = line.find_first_not_of('#');
            section_ = trimmed(line.substr(level));
            document_.headings.push_back({static_cast<int>(level), section_});
        } else if (line.starts_with('|')) {
            takeRow(line);
            return;
        }
        inTable_ = false;
        document_.prose += line + ' ';
    }

    void takeRow(const std::string& line) {
        if (!inTable_) {
            document_.tables.push_back({section_, cellsOf(line), {}});
        } else if (!isRule(line)) {
            document_.tables.back().rows.push_back(cellsOf(line));
        }
        inTable_ = true;
        document_.prose += isRule(line) ? std::string() : '\n' + line + '\n';
    }

    Document& document_;
    std::string section_;
    int blanks_ = 0;
    bool fenced_ = false;
    bool inBlock_ = false;
    bool inTable_ = false;
    bool afterBlank_ = true;
};

}  // namespace

std::string Block::text() const {
    std::string all;
    for (const auto& line : lines) {
        all += line + '\n';
    }
    return all;
}

Document parseDocument(std::string name, std::string_view text) {
    Document document{std::move(name), {}, {}, {}, {}};
    Parser parser(document);
    std::istringstream stream{std::string(text)};
    for (std::string line; std::getline(stream, line);) {
        parser.take(line);
    }
    return document;
}

std::filesystem::path projectFolder() {
    const char* const folder = std::getenv("KORVANE_SOURCE");
    if (folder == nullptr) {
        throw std::runtime_error("KORVANE_SOURCE has to name the project's folder");
    }
    return folder;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream.is_open()) {
        throw std::runtime_error("there is no file " + file.string());
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

Document document(const std::string& name) {
    return parseDocument(name, contentOf(projectFolder() / name));
}

std::vector<Document> allDocuments() {
    std::vector<std::string> names;
    for (const char* const folder : {".", "docs"}) {
        for (const auto& entry : std::filesystem::directory_iterator(projectFolder() / folder)) {
            if (entry.path().extension() == ".md") {
                names.push_back((std::filesystem::path(folder) / entry.path().filename()).lexically_normal().string());
            }
        }
    }
    std::ranges::sort(names);
    std::vector<Document> documents;
    std::ranges::transform(names, std::back_inserter(documents), document);
    return documents;
}

Table tableIn(const Document& document, std::string_view section) {
    const auto table = std::ranges::find(document.tables, section, &Table::section);
    if (table == document.tables.end()) {
        throw std::runtime_error(document.name + " has no table under " + std::string(section));
    }
    return *table;
}

std::vector<std::string> found(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> parts;
    for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator(); ++match) {
        parts.push_back((*match)[1].str());
    }
    return parts;
}

std::vector<std::string> codeIn(const std::string& text) {
    return found(text, "`([^`]+)`");
}

std::string plain(std::string text) {
    std::erase(text, '`');
    return text;
}

std::string anchorOf(const std::string& heading) {
    std::string anchor;
    for (const char letter : heading) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == ' ') {
            anchor += '-';
        } else if (byte >= 0x80 || std::isalnum(byte) != 0 || letter == '-' || letter == '_') {
            anchor += static_cast<char>(std::tolower(byte));
        }
    }
    return anchor;
}

}  // namespace korvane::documents
