// Helpers for the save and self-test tests: a scratch folder removed afterwards,
// whole-file reads and writes, and running a step in a forked child (with its own
// limits or as an unprivileged user) without disturbing the test process.
#pragma once

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace save_test {

namespace fs = std::filesystem;

using Bytes = std::vector<unsigned char>;

// An unprivileged user, for the folders that must be unwritable even when the
// tests run as root (root writes anywhere).
constexpr uid_t NOBODY = 65534;
// Exit status of a child that could not give up root; the test is then skipped.
constexpr int CANNOT_DROP_ROOT = 77;

class ScratchDir {
public:
    ScratchDir() {
        std::string pattern = (fs::temp_directory_path() / "talven-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) std::abort();
        path_ = pattern;
        // Searchable by others, so a child running as another user can reach it.
        fs::permissions(path_, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                   fs::perms::others_read | fs::perms::others_exec);
    }
    ~ScratchDir() {
        std::error_code ec;
        for (const auto& entry : fs::recursive_directory_iterator(path_, ec)) {
            if (entry.is_directory(ec)) fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ec);
        }
        fs::remove_all(path_, ec);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;

    const fs::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    fs::path path_;
};

inline Bytes read_bytes(const std::string& path) {
    Bytes bytes;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (f == nullptr) return bytes;
    unsigned char buf[4096];
    std::size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) bytes.insert(bytes.end(), buf, buf + n);
    std::fclose(f);
    return bytes;
}

inline bool write_bytes(const std::string& path, const Bytes& bytes) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (f == nullptr) return false;
    const bool ok = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    return std::fclose(f) == 0 && ok;
}

inline std::string read_text(const std::string& path) {
    const Bytes b = read_bytes(path);
    return std::string(b.begin(), b.end());
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

// In a child: become an ordinary user if running as root. False when that fails.
inline bool drop_root() {
    if (geteuid() != 0) return true;
    return setgroups(0, nullptr) == 0 && setgid(NOBODY) == 0 && setuid(NOBODY) == 0;
}

}  // namespace save_test
