#include "render/draw.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

// The font as pictures: row strings from top to bottom, tested character by
// character when drawing. Order matters only in that the first entry (space)
// is what every character missing from the table draws as.
const Glyph FONT[FONT_GLYPHS] = {
    {' ', {".....", ".....", ".....", ".....", ".....", ".....", "....."}},
    {'0', {".###.", "#...#", "#..##", "#.#.#", "##..#", "#...#", ".###."}},
    {'1', {"..#..", ".##..", "..#..", "..#..", "..#..", "..#..", ".###."}},
    {'2', {".###.", "#...#", "....#", "...#.", "..#..", ".#...", "#####"}},
    {'3', {"####.", "....#", "....#", ".###.", "....#", "....#", "####."}},
    {'4', {"...#.", "..##.", ".#.#.", "#..#.", "#####", "...#.", "...#."}},
    {'5', {"#####", "#....", "####.", "....#", "....#", "#...#", ".###."}},
    {'6', {".###.", "#....", "#....", "####.", "#...#", "#...#", ".###."}},
    {'7', {"#####", "....#", "...#.", "..#..", ".#...", ".#...", ".#..."}},
    {'8', {".###.", "#...#", "#...#", ".###.", "#...#", "#...#", ".###."}},
    {'9', {".###.", "#...#", "#...#", ".####", "....#", "....#", ".###."}},
    {'A', {".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"}},
    {'B', {"####.", "#...#", "#...#", "####.", "#...#", "#...#", "####."}},
    {'C', {".###.", "#...#", "#....", "#....", "#....", "#...#", ".###."}},
    {'D', {"###..", "#..#.", "#...#", "#...#", "#...#", "#..#.", "###.."}},
    {'E', {"#####", "#....", "#....", "####.", "#....", "#....", "#####"}},
    {'F', {"#####", "#....", "#....", "####.", "#....", "#....", "#...."}},
    {'G', {".###.", "#...#", "#....", "#.###", "#...#", "#...#", ".###."}},
    {'H', {"#...#", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"}},
    {'I', {".###.", "..#..", "..#..", "..#..", "..#..", "..#..", ".###."}},
    {'J', {"..###", "...#.", "...#.", "...#.", "#..#.", "#..#.", ".##.."}},
    {'K', {"#...#", "#..#.", "#.#..", "##...", "#.#..", "#..#.", "#...#"}},
    {'L', {"#....", "#....", "#....", "#....", "#....", "#....", "#####"}},
    {'M', {"#...#", "##.##", "#.#.#", "#.#.#", "#...#", "#...#", "#...#"}},
    {'N', {"#...#", "##..#", "#.#.#", "#.#.#", "#..##", "#...#", "#...#"}},
    {'O', {".###.", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."}},
    {'P', {"####.", "#...#", "#...#", "####.", "#....", "#....", "#...."}},
    {'Q', {".###.", "#...#", "#...#", "#...#", "#.#.#", "#..#.", ".##.#"}},
    {'R', {"####.", "#...#", "#...#", "####.", "#.#..", "#..#.", "#...#"}},
    {'S', {".####", "#....", "#....", ".###.", "....#", "....#", "####."}},
    {'T', {"#####", "..#..", "..#..", "..#..", "..#..", "..#..", "..#.."}},
    {'U', {"#...#", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."}},
    {'V', {"#...#", "#...#", "#...#", "#...#", "#...#", ".#.#.", "..#.."}},
    {'W', {"#...#", "#...#", "#...#", "#.#.#", "#.#.#", "##.##", "#...#"}},
    {'X', {"#...#", "#...#", ".#.#.", "..#..", ".#.#.", "#...#", "#...#"}},
    {'Y', {"#...#", "#...#", ".#.#.", "..#..", "..#..", "..#..", "..#.."}},
    {'Z', {"#####", "....#", "...#.", "..#..", ".#...", "#....", "#####"}},
    {'-', {".....", ".....", ".....", "#####", ".....", ".....", "....."}},
    {'.', {".....", ".....", ".....", ".....", ".....", "..#..", "..#.."}},
    {':', {".....", "..#..", "..#..", ".....", "..#..", "..#..", "....."}},
    {'!', {"..#..", "..#..", "..#..", "..#..", "..#..", ".....", "..#.."}},
    {'/', {"....#", "....#", "...#.", "..#..", ".#...", "#....", "#...."}},
    {'<', {"....#", "..##.", "##...", "#....", "##...", "..##.", "....#"}},
    {'>', {"#....", ".##..", "...##", "....#", "...##", ".##..", "#...."}},
    {'?', {".###.", "#...#", "....#", "...#.", "..#..", ".....", "..#.."}},
};

namespace {

const Glyph& glyph_for(unsigned char c) {
    if (c >= 'a' && c <= 'z') c = static_cast<unsigned char>(c - 32);
    for (const Glyph& g : FONT)
        if (static_cast<unsigned char>(g.ch) == c) return g;
    return FONT[0];
}

void fill_current(SDL_Renderer* renderer, int x, int y, int w, int h) {
    if (w <= 0 || h <= 0) return;
    const SDL_Rect r{x, y, w, h};
    SDL_RenderFillRect(renderer, &r);
}

// Whether row `r` of a glyph has a lit run from column a to b with nothing lit
// beside it.
bool run_at(const Glyph& g, int r, int a, int b) {
    if (r < 0 || r >= 7) return false;
    for (int k = a; k <= b; ++k)
        if (g.rows[r][k] != '#') return false;
    return (a == 0 || g.rows[r][a - 1] != '#') && (b == 4 || g.rows[r][b + 1] != '#');
}

}  // namespace

// An opaque colour blended over anything gives the colour itself, so it is drawn
// without blending: the same pixels, but the software renderer then fills plain
// memory instead of blending pixel by pixel (the bulk of a frame's cost).
void set_colour(SDL_Renderer* renderer, std::uint32_t colour) {
    const bool opaque = (colour >> 24) == 255;
    SDL_SetRenderDrawBlendMode(renderer, opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, static_cast<Uint8>(colour), static_cast<Uint8>(colour >> 8),
                           static_cast<Uint8>(colour >> 16), static_cast<Uint8>(colour >> 24));
}

// SDL's software renderer writes an opaque row of 16 pixels or more with
// streaming stores that bypass the cache; the edge, icon and label drawn on the
// box next would then read it back from memory. Narrower columns are written
// through the cache.
constexpr int BOX_COLUMN = 15;

void box(SDL_Renderer* renderer, SDL_Rect at, std::uint32_t inside, std::uint32_t edge) {
    if ((inside >> 24) != 0) {
        set_colour(renderer, inside);
        for (int x = 0; x < at.w; x += BOX_COLUMN)
            fill_current(renderer, at.x + x, at.y, std::min(BOX_COLUMN, at.w - x), at.h);
    }
    if ((edge >> 24) != 0) outline(renderer, at.x, at.y, at.w, at.h, edge);
}

void fill(SDL_Renderer* renderer, int x, int y, int w, int h, std::uint32_t colour) {
    if ((colour >> 24) == 0) return;  // fully transparent: no pixel changes (the darkness by day)
    set_colour(renderer, colour);
    fill_current(renderer, x, y, w, h);
}

void fill_around(SDL_Renderer* renderer, SDL_Rect area, std::span<const SDL_Rect> holes, std::uint32_t colour) {
    if (holes.size() > FILL_AROUND_MAX_HOLES) holes = {};
    if ((colour >> 24) == 0 || area.w <= 0 || area.h <= 0) return;
    set_colour(renderer, colour);
    // Bands split at every hole's top and bottom, so a hole either crosses a band whole or misses it.
    const int top = area.y, bottom = area.y + area.h, right = area.x + area.w;
    int edges[2 * FILL_AROUND_MAX_HOLES + 2] = {top, bottom};
    std::size_t n = 2;
    for (const SDL_Rect& h : holes) {
        edges[n++] = std::clamp(h.y, top, bottom);
        edges[n++] = std::clamp(h.y + h.h, top, bottom);
    }
    std::sort(edges, edges + n);
    for (std::size_t e = 0; e + 1 < n; ++e) {
        const int y0 = edges[e], y1 = edges[e + 1];
        if (y0 == y1) continue;
        const SDL_Rect* across[FILL_AROUND_MAX_HOLES];
        std::size_t m = 0;
        for (const SDL_Rect& h : holes)
            if (h.w > 0 && h.y <= y0 && y1 <= h.y + h.h) across[m++] = &h;
        std::sort(across, across + m, [](const SDL_Rect* a, const SDL_Rect* b) { return a->x < b->x; });
        int x = area.x;
        for (std::size_t k = 0; k < m; ++k) {
            fill_current(renderer, x, y0, std::min(across[k]->x, right) - x, y1 - y0);
            x = std::max(x, across[k]->x + across[k]->w);
        }
        fill_current(renderer, x, y0, right - x, y1 - y0);
    }
}

void outline(SDL_Renderer* renderer, int x, int y, int w, int h, std::uint32_t colour) {
    set_colour(renderer, colour);
    if (w <= 0 || h <= 0) return;
    const SDL_Rect r{x, y, w, h};
    SDL_RenderDrawRect(renderer, &r);
}

void text(SDL_Renderer* renderer, int x, int y, const char* str, std::uint32_t colour, int scale) {
    set_colour(renderer, colour);
    if (str == nullptr) return;
    int pen = x;
    for (const char* p = str; *p != '\0'; ++p) {
        const Glyph& g = glyph_for(static_cast<unsigned char>(*p));
        // One rectangle per lit run of a row, stretched down over the rows below
        // that repeat it: the same pixels as a square per lit pixel, each drawn
        // once, in a fraction of the draw calls.
        for (int r = 0; r < 7; ++r)
            for (int k = 0; k < 5; ++k) {
                if (g.rows[r][k] != '#') continue;
                const int start = k;
                while (k + 1 < 5 && g.rows[r][k + 1] == '#') ++k;
                if (run_at(g, r - 1, start, k)) continue;  // drawn with the run above
                int rows = 1;
                while (run_at(g, r + rows, start, k)) ++rows;
                fill_current(renderer, pen + start * scale, y + r * scale, (k - start + 1) * scale, rows * scale);
            }
        pen += GLYPH_ADVANCE * scale;
    }
}

int centred_text_x(const char* str, int scale) {
    const int n = static_cast<int>(std::strlen(str));
    return 320 - (GLYPH_ADVANCE * scale * n - scale) / 2;
}

int right_aligned_text_x(int right_edge, const char* str) {
    return right_edge + 1 - GLYPH_ADVANCE * static_cast<int>(std::strlen(str));
}

void stack_count(SDL_Renderer* renderer, int right_edge, int y, int count, std::uint32_t colour) {
    if (count <= 1) return;
    char digits[12];
    std::snprintf(digits, sizeof digits, "%d", count);
    text(renderer, right_aligned_text_x(right_edge, digits), y, digits, colour, 1);
}
