// The inventory under a long random walk of adds, removes and clicks, many of them
// refused (bad items and counts, a full pack, slots past the end, bad stored
// selections). Each step's result, the count of its item, the item in hand, the
// selection and all 40 slots go into one digest, worked out once by a separate
// script from the inventory rules alone. Of its adds 71 have exactly enough room
// and 4 one unit too little; of its removes 256 take exactly all there is and 465
// ask for one more.
#include <gtest/gtest.h>

#include "core/game_digest.h"
#include "core/inventory.h"
#include "core/tiles.h"
#include "random_walk.h"

TEST(Inventory, ARandomWalkOfAddsRemovesAndClicksFollowsTheRules) {
    constexpr std::int32_t ITEMS[] = {TILE_GRASS, TILE_DIRT, TILE_STONE, ITEM_WORN_PICK, 0, -3};
    Walk next{2026u};
    std::uint32_t h = FNV1A_OFFSET;
    const auto signed_next = [&next](std::uint32_t n) { return static_cast<std::int32_t>(next(n)); };
    Player p{};
    inventory_activate(nullptr, 3);  // no player: nothing to do
    for (int step = 0; step < 20000; ++step) {
        const std::int32_t item = ITEMS[next(6)];
        // A few, about a stack, up to four stacks, about all there is, or the lowest int.
        const std::uint32_t size = next(10);
        const std::int32_t have = static_cast<std::int32_t>(inventory_count(&p, item));
        const std::int32_t count = size < 3   ? signed_next(12) - 1
                                   : size < 5 ? 995 + signed_next(10)
                                   : size < 7 ? signed_next(4000)
                                   : size < 9 ? have + signed_next(3) - 1
                                              : INT32_MIN + signed_next(2);
        const std::uint32_t op = next(10);
        std::uint32_t result = 0;
        if (op < 4) {
            result = inventory_add(&p, item, count);
        } else if (op < 7) {
            result = inventory_remove(&p, item, count);
        } else if (op < 9) {
            const std::uint32_t slot = next(45);
            inventory_activate(&p, slot == 44 ? 0xFFFFFFFFu : slot);
        } else {
            p.selected = next(50);  // as a damaged record might hold it
        }
        const std::uint32_t words[] = {result, inventory_count(&p, item), held_item(p), p.selected};
        h = fnv1a(p.inventory, sizeof p.inventory, fnv1a(words, sizeof words, h));
    }
    EXPECT_EQ(0x7BA088E1u, h);
}
