#include "render/icons.h"

#include "core/tiles.h"
#include "render/draw.h"

namespace {

// Size arithmetic is unsigned and truncating, so pictures at tiny sizes wrap
// the way the rest of the game expects; positions go back to int at the end.
using u32 = std::uint32_t;

int px(u32 v) { return static_cast<int>(v); }

struct Icon {
    SDL_Renderer* r;
    u32 x, y, s;
    u32 variation;
    u32 top, detail;  // the block's top-edge and detail colours
};

using DetailPass = void (*)(const Icon&);

void no_detail(const Icon&) {}

void grass_cap(const Icon& i) {
    fill(i.r, px(i.x), px(i.y), px(i.s), px(i.s / 4), rgba(82, 191, 82));
    fill(i.r, px(i.x + 3), px(i.y + i.s / 4), 2, 3, rgba(51, 136, 67));
}

void bark_lines(const Icon& i) {
    fill(i.r, px(i.x + i.s / 3), px(i.y), 2, px(i.s), i.detail);
    fill(i.r, px(i.x + (2 * i.s) / 3), px(i.y), 1, px(i.s), rgba(188, 125, 59));
}

void leaf_spots(const Icon& i) {
    fill(i.r, px(i.x + 3), px(i.y + 3), 3, 3, rgba(91, 177, 87));
    fill(i.r, px(i.x + i.s - 5), px(i.y + i.s - 6), 3, 3, i.detail);
}

// p mod q, with a zero divisor leaving p alone (tiny sizes).
u32 mod_or_self(u32 p, u32 q) { return q == 0 ? p : p % q; }

// Three specks placed by the variation, so each ore cell looks a little different.
void ore_specks(const Icon& i) {
    const u32 v = i.variation;
    const u32 a = i.s - 5;
    const u32 b = i.s - 6;
    fill(i.r, px(i.x + 2 + mod_or_self(v, a)), px(i.y + 3 + mod_or_self(v >> 2, b)), 3, 3, i.detail);
    fill(i.r, px(i.x + 2 + mod_or_self(v >> 3, a)), px(i.y + 3 + mod_or_self(v >> 6, b)), 3, 3, i.detail);
    fill(i.r, px(i.x + 2 + mod_or_self(v >> 6, a)), px(i.y + 3 + mod_or_self(v >> 10, b)), 3, 3, i.top);
}

void plank_seams(const Icon& i) {
    fill(i.r, px(i.x), px(i.y + i.s / 2), px(i.s), 1, i.detail);
    fill(i.r, px(i.x + i.s / 2), px(i.y + 1), 1, px(i.s / 2 - 1), i.detail);
}

void brick_seams(const Icon& i) {
    fill(i.r, px(i.x), px(i.y + i.s / 2), px(i.s), 1, i.detail);
    fill(i.r, px(i.x + i.s / 3), px(i.y), 1, px(i.s / 2), i.detail);
    fill(i.r, px(i.x + (2 * i.s) / 3), px(i.y + i.s / 2), 1, px(i.s / 2), i.detail);
}

void bench_top_and_legs(const Icon& i) {
    fill(i.r, px(i.x + 2), px(i.y + 3), px(i.s - 4), 3, i.top);
    fill(i.r, px(i.x + 3), px(i.y + i.s - 4), 3, 4, i.detail);
    fill(i.r, px(i.x + i.s - 6), px(i.y + i.s - 4), 3, 4, i.detail);
}

struct BlockLook {
    u32 base, top, left;  // left edge colour doubles as the detail colour
    DetailPass detail;
};

constexpr u32 PALE_TOP = rgba(220, 220, 220);

// Indexed by tile id. Row 0 is the grey block for every id without a look of
// its own; the torch row only keeps the indices aligned (the torch has its own picture).
const BlockLook BLOCKS[TILE_MAX + 1] = {
    {rgba(155, 155, 155), PALE_TOP, rgba(80, 80, 80), no_detail},                // unknown
    {rgba(65, 164, 77), PALE_TOP, rgba(87, 59, 42), grass_cap},                  // GRASS
    {rgba(116, 78, 53), PALE_TOP, rgba(74, 47, 39), no_detail},                  // DIRT
    {rgba(100, 108, 119), PALE_TOP, rgba(63, 68, 80), no_detail},                // STONE
    {rgba(133, 84, 45), PALE_TOP, rgba(77, 47, 34), bark_lines},                 // WOOD
    {rgba(53, 133, 68), PALE_TOP, rgba(31, 82, 54), leaf_spots},                 // LEAVES
    {rgba(73, 75, 85), rgba(115, 118, 127), rgba(25, 27, 35), ore_specks},       // COAL
    {rgba(108, 107, 111), rgba(215, 116, 68), rgba(95, 53, 38), ore_specks},     // COPPER ORE
    {rgba(105, 110, 124), rgba(230, 186, 140), rgba(137, 104, 78), ore_specks},  // IRON ORE
    {rgba(69, 58, 103), rgba(104, 244, 218), rgba(36, 31, 66), ore_specks},      // GLOW CRYSTAL
    {rgba(42, 43, 52), PALE_TOP, rgba(21, 22, 29), no_detail},                   // BEDROCK
    {rgba(178, 120, 62), PALE_TOP, rgba(99, 62, 42), plank_seams},               // PLANK
    {rgba(114, 118, 132), PALE_TOP, rgba(59, 63, 76), brick_seams},              // STONE BRICK
    {rgba(167, 101, 52), rgba(240, 180, 84), rgba(72, 43, 32), bench_top_and_legs},  // WORKBENCH
    {rgba(155, 155, 155), PALE_TOP, rgba(80, 80, 80), no_detail},                // TORCH (own picture)
    {rgba(218, 190, 117), PALE_TOP, rgba(169, 137, 81), no_detail},              // SAND
    {rgba(142, 111, 122), PALE_TOP, rgba(91, 67, 82), no_detail},                // CLAY
};

void draw_block(const Icon& base_icon, std::int32_t id) {
    const bool known = id >= 1 && id <= TILE_MAX;
    const BlockLook& look = BLOCKS[known ? id : 0];
    Icon i = base_icon;
    i.top = look.top;
    i.detail = look.left;
    fill(i.r, px(i.x), px(i.y), px(i.s), px(i.s), look.base);
    fill(i.r, px(i.x), px(i.y), px(i.s), 2, look.top);
    fill(i.r, px(i.x), px(i.y), 2, px(i.s), look.left);
    look.detail(i);
}

// A torch has no block behind it: whatever lies under the tile shows through.
void draw_torch(const Icon& i) {
    const u32 h = i.s / 2;
    fill(i.r, px(i.x + h - 1), px(i.y + i.s / 3), 3, px((2 * i.s) / 3), rgba(105, 62, 36));
    fill(i.r, px(i.x + h - 3), px(i.y), 7, 7, rgba(255, 171, 47));
    fill(i.r, px(i.x + h - 1), px(i.y + 1), 3, 4, rgba(255, 244, 126));
}

void draw_pick(const Icon& i, u32 head) {
    if (i.s > 3) {
        set_colour(i.r, rgba(109, 67, 37));
        // Handle: a one-pixel diagonal rising to the right.
        for (u32 k = 0; k < i.s - 3; ++k) SDL_RenderDrawPoint(i.r, px(i.x + 3 + k), px(i.y + i.s - 2 - k));
    }
    fill(i.r, px(i.x + 2), px(i.y + 2), px(i.s - 3), 3, head);
    fill(i.r, px(i.x + 1), px(i.y + 4), 3, 3, head);
}

// Guard and grip keep their pixel size at every icon size.
void draw_sword(const Icon& i, u32 blade) {
    if (i.s > 5)
        for (u32 k = 0; k <= i.s - 6; ++k) fill(i.r, px(i.x + i.s - 4 - k), px(i.y + 1 + k), 3, 3, blade);
    fill(i.r, px(i.x + 2), px(i.y + i.s - 5), 8, 2, rgba(232, 185, 62));
    fill(i.r, px(i.x + 2), px(i.y + i.s - 4), 3, 5, rgba(103, 62, 39));
}

}  // namespace

void draw_item(SDL_Renderer* renderer, std::int32_t id, int x, int y, std::uint32_t size,
               std::uint32_t variation) {
    const Icon i{renderer, static_cast<u32>(x), static_cast<u32>(y), size, variation, 0, 0};
    switch (id) {
        case TILE_TORCH: draw_torch(i); break;
        case ITEM_WORN_PICK: draw_pick(i, rgba(151, 157, 166)); break;
        case ITEM_IRON_PICK: draw_pick(i, rgba(208, 221, 229)); break;
        case ITEM_SHORT_SWORD: draw_sword(i, rgba(161, 168, 181)); break;
        case ITEM_IRON_SWORD: draw_sword(i, rgba(220, 235, 242)); break;
        default: draw_block(i, id); break;
    }
}
