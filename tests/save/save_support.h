// Helpers for the save and self-test tests: a scratch folder removed afterwards,
// whole-file reads and writes, and steps run in a forked child (with their own
// environment, limits or user) so the test process stays as it was.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace save_test {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

constexpr fs::perms READ_ONLY_DIR = static_cast<fs::perms>(0555);

struct ScratchDir {
    fs::path path;

    ScratchDir() {
        std::string pattern = (fs::temp_directory_path() / "talven-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) std::abort();
        path = pattern;
        // Reachable by the unprivileged child of the unwritable-folder case.
        fs::permissions(path, READ_ONLY_DIR | fs::perms::owner_write);
    }
    ~ScratchDir() {
        std::error_code ec;
        for (const auto& entry : fs::recursive_directory_iterator(path, ec)) {
            if (entry.is_directory(ec)) fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ec);
        }
        fs::remove_all(path, ec);
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

// Runs `step` in a forked child and returns its exit status (-1 if it died).
inline int run_in_child(const std::function<int()>& step) {
    std::fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) _exit(step());
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace save_test
