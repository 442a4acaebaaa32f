// The program's own self-test, run as the real program in a scratch folder.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "save/save_support.h"

namespace {

using namespace save_test;

struct SelftestRun {
    int status;
    std::string out;
    std::string err;
};

// Runs `talven --selftest` inside `folder`, as an ordinary user when `unprivileged`.
SelftestRun run_selftest(const ScratchDir& dir, const fs::path& folder, bool unprivileged) {
    const std::string out = dir.file("stdout.txt");
    const std::string err = dir.file("stderr.txt");
    const std::string data = dir.file("data");
    const int status = run_in_child([&] {
        const int out_fd = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int err_fd = open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (out_fd < 0 || err_fd < 0 || dup2(out_fd, 1) < 0 || dup2(err_fd, 2) < 0) return 126;
        // Never the player's real save folder.
        setenv("XDG_DATA_HOME", data.c_str(), 1);
        if (chdir(folder.c_str()) != 0) return 126;
        if (unprivileged && !drop_root()) return CANNOT_DROP_ROOT;
        execl(TALVEN_EXE, TALVEN_EXE, "--selftest", static_cast<char*>(nullptr));
        return 127;
    });
    return {status, read_text(out), read_text(err)};
}

TEST(Selftest, AllChecksPassAndTheScratchFileIsRemoved) {
    ScratchDir dir;
    const fs::path folder = dir.path() / "run";
    fs::create_directory(folder);
    const SelftestRun run = run_selftest(dir, folder, false);
    EXPECT_EQ(run.out, "TALVEN selftest: 29 checks, 0 failed\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST(Selftest, UnwritableFolderFailsTheSaveChecksOnly) {
    ScratchDir dir;
    const fs::path folder = dir.path() / "locked";
    fs::create_directory(folder);
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                                fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec);
    const SelftestRun run = run_selftest(dir, folder, true);
    if (run.status == CANNOT_DROP_ROOT) GTEST_SKIP() << "cannot drop root, and root writes anywhere";
    // With nothing saved there is nothing to load, so the corrupt-file check still passes.
    EXPECT_EQ(run.out, "TALVEN selftest: 29 checks, 5 failed\n");
    EXPECT_EQ(run.err,
              "FAIL: save writes\n"
              "FAIL: save loads\n"
              "FAIL: save world roundtrip\n"
              "FAIL: save name roundtrip\n"
              "FAIL: corrupt save metadata fixture\n");
    EXPECT_EQ(run.status, 1);
}

}  // namespace
