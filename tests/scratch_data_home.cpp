// Every test process gets its own scratch data folder before any test runs, so
// nothing a test saves (autosaves included) can reach the player's real save file.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

struct ScratchDataHome : ::testing::Environment {
    std::filesystem::path dir;

    void SetUp() override {
        char pattern[] = "/tmp/talven-data-XXXXXX";
        if (mkdtemp(pattern) == nullptr) std::abort();
        dir = pattern;
        setenv("XDG_DATA_HOME", pattern, 1);
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(dir, ignored);
    }
};

const auto* const registered = ::testing::AddGlobalTestEnvironment(new ScratchDataHome);

}  // namespace
