#include "editor/RecentFiles.h"

namespace shd {

namespace {
constexpr const char* kHeader = "# shardles-editor recent files, \\n and \\\\ escaped";

std::string Escaped(const std::string& name) {
    std::string line;
    for (const char c : name) {
        if (c == '\\') line += "\\\\";
        else if (c == '\n') line += "\\n";
        else if (c == '\r') line += "\\r";
        else line += c;
    }
    return line;
}

// Nothing when the line is not one that Escaped writes.
bool Unescape(const std::string& line, std::string& name) {
    name.clear();
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '\\') {
            name += line[i];
            continue;
        }
        if (++i == line.size()) return false;
        switch (line[i]) {
        case '\\': name += '\\'; break;
        case 'n': name += '\n'; break;
        case 'r': name += '\r'; break;
        default: return false;
        }
    }
    return true;
}
}  // namespace

std::string RecentFilesText(const std::vector<std::string>& files) {
    std::string text = std::string(kHeader) + "\n";
    for (const std::string& file : files) text += Escaped(file) + "\n";
    return text;
}

std::vector<std::string> RecentFilesOf(const std::string& text, std::size_t most) {
    std::vector<std::string> files;
    std::size_t at = 0;
    auto nextLine = [&] {
        const auto end = text.find('\n', at);
        std::string line = text.substr(at, end == std::string::npos ? std::string::npos : end - at);
        at = end == std::string::npos ? text.size() : end + 1;
        return line;
    };
    const bool escaped = text.starts_with(std::string(kHeader) + "\n");
    if (escaped) nextLine();
    while (at < text.size() && files.size() < most) {
        std::string line = nextLine(), name;
        if (!escaped) name = std::move(line);
        else if (!Unescape(line, name)) continue;
        if (!name.empty()) files.push_back(std::move(name));
    }
    return files;
}

}  // namespace shd
