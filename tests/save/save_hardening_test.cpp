// Saves against hostile folders: things that are not files at the save path or
// at the temporary name, links planted at either, a second copy of the game
// saving at the same moment and kept permissions. (A save path too long for
// its buffer is tried on the running program.)
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <chrono>
#include <memory>
#include <thread>

#include "app/screens.h"
#include "save/save_file.h"
#include "world/new_game.h"
#include "save/save_path.h"
#include "save/save_support.h"

namespace {

using namespace save_test;

enum class Plant { Fifo, Folder, LinkToDevice, LinkToSave, LinkToNothing };

// Puts `what` at `at`; `elsewhere` is a file outside the save folder.
void plant(Plant what, const std::string& at, const std::string& elsewhere) {
    switch (what) {
        case Plant::Fifo: ASSERT_EQ(mkfifo(at.c_str(), 0600), 0); break;
        case Plant::Folder: ASSERT_TRUE(fs::create_directory(at)); break;
        case Plant::LinkToDevice: fs::create_symlink("/dev/zero", at); break;
        case Plant::LinkToSave:
        case Plant::LinkToNothing: fs::create_symlink(elsewhere, at); break;
    }
}

class SaveHardening : public ::testing::Test {
protected:
    void SetUp() override {
        game_new(game.get(), 99u, "HARD WORLD");
        ASSERT_TRUE(game_save(game.get(), elsewhere.c_str()));
        old = read_bytes(elsewhere);
        game->day = 7;  // what the next save writes
        alarm(10);  // a save or load that blocks fails the test instead of hanging it
    }
    void TearDown() override { alarm(0); }

    // The file at `at` is a regular file holding the day-7 save, its mode the
    // umask's as for every file here (a FIFO's or a device's is not a save's).
    void expect_new_save_at(const std::string& at) {
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(at))) << at;
        EXPECT_EQ(fs::status(elsewhere).permissions(), fs::status(at).permissions());
        auto loaded = std::make_unique<Game>();
        EXPECT_TRUE(game_load(loaded.get(), at.c_str()));
        EXPECT_EQ(7u, loaded->day);
    }

    ScratchDir dir;
    std::string elsewhere = dir.file("elsewhere.tvw");
    std::string path = dir.file("world.tvw");
    std::string tmp = path + ".tmp";
    std::unique_ptr<Game> game = std::make_unique<Game>();
    Bytes old;
};

// Things planted at the save path or at its temporary name. At the save path
// only a regular file (through a link too) is a save; loading and the title's
// check never block, and a save replaces whatever is there but a folder, never
// writing through a link. At the temporary name a link is removed, never
// followed; a folder or a FIFO there fails the save at once and is left alone.
TEST_F(SaveHardening, NothingPlantedAtEitherNameIsFollowedOrBlockedOn) {
    using enum fs::file_type;
    const struct { bool at_tmp; Plant what; bool loads, saves; fs::file_type tmp_left; } cases[] = {
        {false, Plant::Fifo, false, true, not_found},       {false, Plant::Folder, false, false, not_found},
        {false, Plant::LinkToDevice, false, true, not_found}, {false, Plant::LinkToSave, true, true, not_found},
        {true, Plant::LinkToSave, true, true, not_found},     {true, Plant::LinkToNothing, true, true, not_found},
        {true, Plant::Folder, true, false, directory},        {true, Plant::Fifo, true, false, fifo},
    };
    const std::string at = game_default_save_path(), at_tmp = at + ".tmp", nothing = dir.file("nothing");
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.at_tmp << " " << static_cast<int>(c.what));
        fs::remove_all(at);
        fs::remove_all(at_tmp);
        if (c.at_tmp) {
            ASSERT_TRUE(write_bytes(at, old));
        }
        plant(c.what, c.at_tmp ? at_tmp : at, c.what == Plant::LinkToNothing ? nothing : elsewhere);
        EXPECT_EQ(c.loads, game_save_exists(at.c_str()));
        auto g = std::make_unique<Game>();
        g->menu_cursor = 1;  // LOAD WORLD on the title
        on_enter(g.get());
        EXPECT_EQ(c.loads ? SCREEN_PLAYING : SCREEN_TITLE, g->screen);
        EXPECT_STREQ(c.loads ? "WORLD LOADED" : "NO WORLD FOUND", g->notice);
        EXPECT_EQ(c.saves, game_save(game.get(), at.c_str()));
        if (c.saves) {
            expect_new_save_at(at);
        } else if (c.at_tmp) {
            EXPECT_EQ(old, read_bytes(at));
        }
        EXPECT_EQ(old, read_bytes(elsewhere)) << "a save wrote through a link";
        EXPECT_FALSE(fs::exists(nothing));
        EXPECT_EQ(c.tmp_left, fs::symlink_status(at_tmp).type());
    }
    fs::remove_all(at_tmp);
}

// Another copy of the game holds the temporary file locked mid-save. Ours waits;
// if that copy finishes, ours saves after it into a file of its own, otherwise
// it gives up, with that copy's file and the old save untouched.
TEST_F(SaveHardening, ASecondCopySavingAtOnceNeverSharesTheTemporaryFile) {
    for (const bool other_finishes : {false, true}) {
        SCOPED_TRACE(other_finishes);
        ASSERT_TRUE(write_bytes(path, old));
        const Bytes theirs(1000, 0x77);
        ASSERT_TRUE(write_bytes(tmp, theirs));
        const int fd = ::open(tmp.c_str(), O_WRONLY);
        ASSERT_EQ(0, ::flock(fd, LOCK_EX));
        bool their_rename = false;
        std::thread other([&] {
            if (!other_finishes) return;
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            their_rename = std::rename(tmp.c_str(), path.c_str()) == 0;
            ::close(fd);
        });
        EXPECT_EQ(other_finishes, game_save(game.get(), path.c_str()));
        other.join();
        EXPECT_EQ(other_finishes, their_rename) << "the other copy lost its temporary file";
        EXPECT_EQ(other_finishes ? Bytes{} : theirs, read_bytes(tmp));
        if (other_finishes) {
            expect_new_save_at(path);
        } else {
            EXPECT_EQ(old, read_bytes(path));
            ::close(fd);
            fs::remove(tmp);
        }
    }
}

// The new save takes the old one's permission bits; a first save, the umask's.
TEST_F(SaveHardening, TheSaveKeepsItsPermissions) {
    const struct { int old_mode, umask, want; } cases[] = {
        {0600, 022, 0600}, {0640, 077, 0640}, {-1, 022, 0644}, {-1, 077, 0600},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.want);
        fs::remove(path);
        if (c.old_mode >= 0) {
            ASSERT_TRUE(write_bytes(path, old));
            fs::permissions(path, static_cast<fs::perms>(c.old_mode));
        }
        const mode_t was = ::umask(static_cast<mode_t>(c.umask));
        EXPECT_TRUE(game_save(game.get(), path.c_str()));
        ::umask(was);
        EXPECT_EQ(static_cast<fs::perms>(c.want), fs::status(path).permissions());
    }
}

}  // namespace
