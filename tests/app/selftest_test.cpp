// The program's own self-test, run as the real program in a fresh scratch folder.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "save/save_support.h"

namespace {

using namespace save_test;

TEST(Selftest, AllChecksPassAndTheScratchFileIsRemoved) {
    ScratchDir dir;
    const fs::path folder = dir.path() / "run";
    fs::create_directory(folder);
    // Standard error joins the output, so any FAIL line breaks the comparison.
    const std::string command = "cd '" + folder.string() + "' && XDG_DATA_HOME='" + dir.file("data") +
                                "' '" TALVEN_EXE "' --selftest 2>&1";
    std::FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string out;
    char buf[256];
    for (std::size_t n; (n = std::fread(buf, 1, sizeof buf, pipe)) > 0;) out.append(buf, n);
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_EQ(out, "TALVEN selftest: 29 checks, 0 failed\n");
    EXPECT_TRUE(fs::is_empty(folder));
}

}  // namespace
