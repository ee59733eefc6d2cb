// What a document says, in pieces that tests compare with the program.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::documents {

struct Table {
    std::string section;  // the heading above it
    std::vector<std::string> header;
    std::vector<std::vector<std::string>> rows;  // as many cells as the header; code marks are kept
};

// Lines that are shown as they stand, indented or between fences; without the indent.
struct Block {
    std::string section;
    std::vector<std::string> lines;

    [[nodiscard]] std::string text() const;
    [[nodiscard]] bool has(std::string_view word) const { return text().find(word) != std::string::npos; }
};

struct Heading {
    int level;
    std::string text;
};

struct Document {
    std::string name;  // relative to the project's folder
    std::vector<Heading> headings;
    std::vector<Table> tables;
    std::vector<Block> blocks;
    std::string prose;  // the rest but for the tables' rules, a line for each paragraph and each row of a table
};

[[nodiscard]] Document parseDocument(std::string name, std::string_view text);

// A document of the project that is being tested; KORVANE_SOURCE names its folder.
[[nodiscard]] Document document(const std::string& name);
// README.md, the others beside it, and docs/*.md.
[[nodiscard]] std::vector<Document> allDocuments();
[[nodiscard]] std::filesystem::path projectFolder();
[[nodiscard]] std::string contentOf(const std::filesystem::path& file);

// The first table under this heading. Throws std::runtime_error if there is none.
[[nodiscard]] Table tableIn(const Document& document, std::string_view section);

// What stands between single code marks in a text.
[[nodiscard]] std::vector<std::string> codeIn(const std::string& text);
// A text with its code marks taken away.
[[nodiscard]] std::string plain(std::string text);
// All parts of `text` that the pattern's first group finds.
[[nodiscard]] std::vector<std::string> found(const std::string& text, const std::string& pattern);
// By what a link reaches a heading.
[[nodiscard]] std::string anchorOf(const std::string& heading);

}  // namespace korvane::documents
