// Helpers for the save tests: a scratch folder removed afterwards, and
// whole-file reads and writes.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace save_test {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

struct ScratchDir {
    fs::path path;

    ScratchDir() {
        std::string pattern = (fs::temp_directory_path() / "talven-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) std::abort();
        path = pattern;
    }
    ~ScratchDir() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    std::string file(const std::string& name) const { return (path / name).string(); }
};

inline Bytes read_bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline bool write_bytes(const std::string& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

}  // namespace save_test
