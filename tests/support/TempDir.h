// A fresh folder for a test's files, removed with everything in it at the end.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace shd::test {

struct TempDir {
    std::filesystem::path path = std::filesystem::temp_directory_path() /
                                 ("shd-" + std::to_string(::getpid()) + "-" +
                                  ::testing::UnitTest::GetInstance()->current_test_info()->name());
    TempDir() { std::filesystem::create_directories(path); }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::filesystem::path operator/(const std::string& name) const { return path / name; }
};

inline void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace shd::test
