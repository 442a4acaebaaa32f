// The program's own self-test, run as the real program in a fresh scratch folder.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "save/save_support.h"

namespace {

using namespace save_test;

TEST(Selftest, AllChecksPassAndTheScratchFileIsRemoved) {
    ScratchDir dir;
    const fs::path folder = dir.path / "run";
    fs::create_directory(folder);
    // Standard error joins the output, so any FAIL line breaks the comparison.
    const std::string out = dir.file("out.txt");
    const std::string command = "cd '" + folder.string() + "' && XDG_DATA_HOME='" + dir.file("data") + "' '" TALVEN_EXE
                                "' --selftest > '" + out + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    const Bytes got = read_bytes(out);
    EXPECT_EQ(std::string(got.begin(), got.end()), "TALVEN selftest: 29 checks, 0 failed\n");
    EXPECT_TRUE(fs::is_empty(folder));
}

}  // namespace
