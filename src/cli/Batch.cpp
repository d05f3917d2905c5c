// Many files into one folder: shardles-convert --to FORM -d DIR INPUT...
#include <cstdio>
#include <map>

#include "cli/Convert.h"
#include "files/FileIo.h"
#include "model/Quoted.h"

namespace shd::cli {

namespace {
// The file name without its last extension; a leading dot is part of the name.
std::string Stem(const std::string& path) {
    const std::string name = FileTitleOf(path);
    const auto dot = name.find_last_of('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}
}  // namespace

int ConvertInto(const std::optional<FormatId>& from, const std::vector<std::string>& inputs, FormatId to,
                const std::string& folder) {
    const std::string into = folder.ends_with('/') ? folder : folder + "/";
    const std::string extension(GetFormat(to).extensions[0]);
    // Every input is known before anything is written, so that no output
    // overwrites an input still to be read, or one read already.
    std::vector<std::optional<FileId>> ids;
    for (const std::string& input : inputs) ids.push_back(IdOfFile(input));
    auto anotherInput = [&](std::size_t self, const std::string& output) -> const std::string* {
        const auto id = IdOfFile(output);
        for (std::size_t i = 0; id && i < inputs.size(); ++i)
            if (i != self && ids[i] == id && ids[self] != id) return &inputs[i];
        return nullptr;
    };
    std::map<std::string, std::string> written;  // output name -> the input it came from
    int status = kDone;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const std::string& input = inputs[i];
        const auto form = from ? from : FormOfFileName(FileTitleOf(input));
        const std::string output = into + Stem(input) + extension;
        std::string refusal;
        if (!form) refusal = ShownName(input) + ": cannot tell its form from its extension; give --from";
        else if (const auto first = written.find(output); first != written.end())
            refusal = ShownName(input) + ": " + ShownName(output) + " was already written from " + ShownName(first->second);
        else if (const std::string* other = anotherInput(i, output))
            refusal = ShownName(input) + ": " + ShownName(output) + " is the input " + ShownName(*other) + ", which is kept";
        if (!refusal.empty()) {
            std::fprintf(stderr, "%s\n", refusal.c_str());
            status = kRefused;
        } else if (Convert(*form, input, to, output) != kDone) {
            status = kRefused;
        } else {
            written.emplace(output, input);
        }
    }
    return status;
}

}  // namespace shd::cli
