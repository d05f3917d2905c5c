#include "files/FileIo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace shd {

namespace {
bool IsSeparator(char c) {
#ifdef _WIN32
    return c == '\\' || c == '/';
#else
    return c == '/';
#endif
}
}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (in.bad()) return std::nullopt;
    return std::move(bytes).str();
}

bool WriteFileAtomic(const std::string& path, const std::string& bytes, std::string* error) {
    const std::string temp = path + ".saving~";
    auto fail = [&](const char* what) {
        if (error) *error = std::string(what) + ": " + std::strerror(errno);
        std::remove(temp.c_str());
        return false;
    };
    std::FILE* out = std::fopen(temp.c_str(), "wb");
    if (!out) {
        if (error) *error = std::string("cannot create ") + temp + ": " + std::strerror(errno);
        return false;
    }
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
    const bool flushed = std::fflush(out) == 0;
#ifndef _WIN32
    const bool synced = flushed && ::fsync(::fileno(out)) == 0;
#else
    const bool synced = flushed;
#endif
    const bool closed = std::fclose(out) == 0;
    if (!written || !synced || !closed) return fail("cannot write");
#ifdef _WIN32
    std::remove(path.c_str());
#endif
    if (std::rename(temp.c_str(), path.c_str()) != 0) return fail("cannot replace");
    return true;
}

std::string FolderOf(const std::string& path) {
    for (std::size_t i = path.size(); i > 0; --i)
        if (IsSeparator(path[i - 1])) return path.substr(0, i);
    return {};
}

std::string FileTitleOf(const std::string& path) { return path.substr(FolderOf(path).size()); }

}  // namespace shd
