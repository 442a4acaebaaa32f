#!/usr/bin/env python3
"""Second, independent computation of the rule digests frozen in the C++ tests.

Each function below rebuilds one test's walk from the game's written rules (not
from its code) and prints the digest the test expects, with counts that show
which ends of the rule the walk reaches. When a rule changes on purpose, change
it here the same way and take the new digest from this script, never from the
failing test's own output.

    python3 tests/reference/digests.py
"""
import struct

MASK = 0xFFFFFFFF


def fnv1a(data, h=0x811C9DC5):
    for byte in data:
        h = ((h ^ byte) * 0x01000193) & MASK
    return h


def f32(v):
    """v rounded to single precision, as each float operation in the game is."""
    return struct.unpack('<f', struct.pack('<f', v))[0]


def f32_bits(v):
    return struct.unpack('<I', struct.pack('<f', v))[0]


def u32s(*words):
    return struct.pack('<%dI' % len(words), *[w & MASK for w in words])


class Lcg:
    """The tests' Walk (tests/random_walk.h): seed * 1664525 + 1013904223, the middle bits taken."""

    def __init__(self, seed):
        self.seed = seed

    def __call__(self, n):
        self.seed = (self.seed * 1664525 + 1013904223) & MASK
        return (self.seed >> 8) % n


class Counts(dict):
    def __call__(self, key):
        self[key] = self.get(key, 0) + 1


# Tiles and items ------------------------------------------------------------

NAMES = ["EMPTY", "GRASS", "DIRT", "STONE", "WOOD", "LEAVES", "COAL", "COPPER ORE", "IRON ORE",
         "GLOW CRYSTAL", "BEDROCK", "PLANK", "STONE BRICK", "WORKBENCH", "TORCH", "SAND", "CLAY"]
TOOLS = {100: "WORN PICK", 101: "SHORT SWORD", 102: "IRON PICK", 103: "IRON SWORD"}
HARDNESS_BITS = {1: 0x3EA3D70A, 2: 0x3EA3D70A, 3: 0x3F866666, 4: 0x3F0CCCCD, 5: 0x3E3851EC,
                 6: 0x3F59999A, 7: 0x3F59999A, 8: 0x3FACCCCD, 9: 0x3FCCCCCD, 10: 0x461C3C00,
                 11: 0x3F0CCCCD, 12: 0x3F866666, 13: 0x3F0CCCCD, 14: 0x3DCCCCCD, 15: 0x3EA3D70A,
                 16: 0x3EA3D70A}
OUTSIDE_HARDNESS_BITS = 0x3DCCCCCD  # 0.1
PASSABLE = {0, 5, 14}
BEDROCK, WORKBENCH, GLOW_CRYSTAL = 10, 13, 9


def hardness(tile):
    return struct.unpack('<f', struct.pack('<I', HARDNESS_BITS.get(tile, OUTSIDE_HARDNESS_BITS)))[0]


def item_to_tile(item):
    return item if 1 <= item <= 16 and item != BEDROCK else 0


def tiles_digest():
    h = 0x811C9DC5
    for i in list(range(-300, 301)) + [-2**31, 2**31 - 1]:
        u = i & MASK
        solid = u > 14 or u not in PASSABLE
        drop = 2 if u == 1 else u
        as_item = i if 1 <= i <= 16 else 0
        known = 1 <= u <= 16 or 100 <= u <= 103
        name = NAMES[u] if u <= 16 else TOOLS.get(u, "UNKNOWN")
        h = fnv1a(u32s(solid, HARDNESS_BITS.get(u, OUTSIDE_HARDNESS_BITS), drop, as_item, item_to_tile(i), known), h)
        h = fnv1a(name.encode() + b'\0', h)
    return h, {}


# Inventory ------------------------------------------------------------------

STACK = 999


class Pack:
    def __init__(self):
        self.slots = [[0, 0] for _ in range(40)]
        self.selected = 0

    def count(self, item):
        return sum(c for i, c in self.slots if i == item)

    def room(self, item, wanted):
        room = 0
        for i, c in self.slots:
            room += STACK - c if i == item else STACK if i == 0 else 0
            if room >= wanted:
                break
        return room

    def add(self, item, n, seen=None):
        if item < 1 or n < 1:
            return False
        room = self.room(item, n)
        if seen is not None:
            seen('exact room' if room == n else 'one short' if room == n - 1 else 'other')
        if room < n:
            return False
        for s in self.slots:
            if s[0] == item and s[1] < STACK:
                moved = min(n, STACK - s[1])
                s[1] += moved
                n -= moved
        for s in self.slots:
            if n and s[0] == 0:
                moved = min(n, STACK)
                s[0], s[1] = item, moved
                n -= moved
        return True

    def remove(self, item, n, seen=None):
        total = self.count(item)
        if seen is not None:
            seen('all there is' if total == n and n > 0 else 'one more' if total == n - 1 else 'other')
        if total < n:
            return False
        for s in reversed(self.slots):
            if n > 0 and s[0] == item:
                taken = min(n, s[1])
                s[1] -= taken
                n -= taken
                if s[1] == 0:
                    s[0] = 0
        return True

    def activate(self, slot):
        if slot >= 40:
            return
        if self.selected >= 10:
            self.selected = 0
        if slot <= 9:
            self.selected = slot
        else:
            self.slots[slot], self.slots[self.selected] = self.slots[self.selected], self.slots[slot]

    def held(self):
        return self.slots[self.selected][0] if self.selected < 40 else 0

    def bytes(self):
        return b''.join(struct.pack('<2H', i, c) for i, c in self.slots)


def inventory_digest():
    nxt, pack, seen, h = Lcg(2026), Pack(), Counts(), 0x811C9DC5
    for _ in range(20000):
        item = [1, 2, 3, 100, 0, -3][nxt(6)]
        size = nxt(10)
        have = pack.count(item)
        n = (nxt(12) - 1 if size < 3 else 995 + nxt(10) if size < 5 else nxt(4000) if size < 7
             else have + nxt(3) - 1 if size < 9 else -2**31 + nxt(2))
        op, result = nxt(10), 0
        if op < 4:
            result = pack.add(item, n, seen)
        elif op < 7:
            result = pack.remove(item, n, seen)
        elif op < 9:
            slot = nxt(45)
            pack.activate(MASK if slot == 44 else slot)
        else:
            pack.selected = nxt(50)
        h = fnv1a(u32s(result, pack.count(item), pack.held(), pack.selected), h)
        h = fnv1a(pack.bytes(), h)
    return h, seen


# Crafting -------------------------------------------------------------------

RECIPES = [(11, 4, 4, 1, 0, 0), (14, 4, 4, 1, 6, 1), (12, 4, 3, 4, 0, 0), (13, 1, 4, 10, 0, 0),
           (102, 1, 8, 8, 4, 4), (103, 1, 8, 6, 4, 2)]


def centre_tile(x, y):
    """The tile under the body's centre, truncated toward zero."""
    return int(f32(f32(x + 6.0) * 0.0625)), int(f32(f32(y + 13.0) * 0.0625))


def craft(pack, tiles, x, y, index):
    if index > 5:
        return False, None
    out, out_n, in1, n1, in2, n2 = RECIPES[index]
    if index >= 4:
        px, py = centre_tile(x, y)
        if not any(tiles.get((c, r)) == WORKBENCH for r in range(py - 4, py + 5) for c in range(px - 4, px + 5)
                   if 0 <= r < 160 and 0 <= c < 512):
            return False, "PLACE A WORKBENCH NEARBY"
    if pack.count(in1) < n1 or (in2 and pack.count(in2) < n2):
        return False, "MISSING MATERIALS"
    pack.remove(in1, n1)
    if in2:
        pack.remove(in2, n2)
    if not pack.add(out, out_n):
        pack.add(in1, n1)
        if in2:
            pack.add(in2, n2)
        return False, "INVENTORY FULL"
    return True, "CRAFTED"


def crafting_digest():
    nxt, pack, seen, h = Lcg(1124), Pack(), Counts(), 0x811C9DC5
    tiles, x, y = {}, 0.0, 0.0
    for step in range(20000):
        op, far = nxt(10), step // 2000 % 2
        result, notice = 0, None
        if op < 2:
            col = 511 - nxt(14) if far else nxt(14)
            row = 159 - nxt(14) if far else nxt(14)
            tiles = {(col, row): WORKBENCH}
        elif op < 3:
            x = 8180.0 - 0.25 * nxt(800) if far else 0.25 * nxt(800) - 10.0
            y = 2534.0 - 0.25 * nxt(800) if far else 0.25 * nxt(800) - 16.0
        elif op < 5:
            item = [4, 6, 3, 8, 11, 2][nxt(6)]
            result = pack.add(item, nxt(40000) if nxt(3) == 0 else nxt(14))
        elif op < 6:
            item = [4, 6, 3, 8, 11, 2][nxt(6)]
            result = pack.remove(item, nxt(4000))
        else:
            index = nxt(8)
            result, notice = craft(pack, tiles, x, y, MASK if index == 7 else index)
            seen(notice or 'past the table')
        h = fnv1a(u32s(result, f32_bits(2.2) if notice else 0), h)
        h = fnv1a(pack.bytes(), h)
        text = (notice or '').encode()
        h = fnv1a(text + b'\0' * (64 - len(text)), h)
    return h, seen


# Placing --------------------------------------------------------------------

W, H = 512, 160


def within_reach(x, y, tx, ty):
    dx = f32(f32(tx + 0.5) - f32(f32(x + 6.0) / 16.0))
    dy = f32(f32(ty + 0.5) - f32(f32(y + 13.0) / 16.0))
    return f32(f32(dx * dx) + f32(dy * dy)) <= 39.0


def place(grid, pack, x, y, tx, ty, seen):
    at = ty * W + tx
    if not (1 <= tx <= W - 2 and 1 <= ty <= H - 2):
        return seen('the ring or off the world')
    if not within_reach(x, y, tx, ty):
        return seen('reach')
    if grid[at] != 0:
        return seen('occupied')
    slot = pack.slots[pack.selected] if pack.selected < 40 else None
    tile = item_to_tile(slot[0]) if slot else 0
    if tile == 0:
        return seen('the hand')
    if not (grid[at - 1] or grid[at + 1] or grid[at - W] or grid[at + W]):
        return seen('no support')
    left, top = float(tx * 16), float(ty * 16)
    if left < x + 12.0 and left + 16.0 > x and top < y + 26.0 and top + 16.0 > y:
        return seen("the player's body")
    grid[at] = tile
    slot[1] -= 1
    if slot[1] <= 0:
        slot[0] = slot[1] = 0
    seen('placed')
    beside = top < y + 26.0 and top + 16.0 > y and (left == x + 12.0 or left + 16.0 == x)
    over_or_under = left < x + 12.0 and left + 16.0 > x and (top == y + 26.0 or top + 16.0 == y)
    if beside or over_or_under:
        seen('placed against the body')


def placing_digest():
    nxt, pack, seen, h = Lcg(3005), Pack(), Counts(), 0x811C9DC5
    grid, x, y = bytearray(W * H), 0.0, 0.0
    for step in range(20000):
        op, far = nxt(10), step // 2000 % 2
        if op < 2:
            col = W - 1 - nxt(12) if far else nxt(12)
            row = H - 1 - nxt(12) if far else nxt(12)
            grid[row * W + col] = [0, 0, 0, 0, 0, 0, 3, 5, 14, 2][nxt(10)]
        elif op < 3:
            x = float((8176 - 16 * nxt(5) if far else 16 * nxt(5)) + [4, 0, 7, 2][nxt(4)])
            y = float((2544 - 16 * nxt(5) if far else 16 * nxt(5)) + [6, 0, 11, 3][nxt(4)])
        elif op < 4:
            pack.selected = [0, 3, 9, 12, 40][nxt(5)]
            item, n = [2, 2, 10, 100, 0, 5, 14, 9, 17][nxt(9)], 1 + nxt(3)
            if pack.selected < 40:
                pack.slots[pack.selected] = [item, n if item else 0]
        else:
            if nxt(2):
                tx, ty = int(x) // 16 + nxt(4) - 1, int(y) // 16
                ty += nxt(5) - 1
            else:
                tx = W - nxt(12) if far else nxt(12) - 1
                ty = H - nxt(12) if far else nxt(12) - 1
            place(grid, pack, x, y, tx, ty, seen)
            h = fnv1a(bytes([grid[ty * W + tx] if 0 <= tx < W and 0 <= ty < H else 255]), h)
        h = fnv1a(pack.bytes() + u32s(pack.selected), h)
    return h, seen


# Mining ---------------------------------------------------------------------

HARD_ROW = {3, 6, 7, 8, 9, 12}  # stone, ores, crystal, stone brick


def mining_speed(tile, item):
    if item == 100:
        return 2.0 if tile in HARD_ROW else 0.8
    if item == 102:
        return 4.2 if tile in HARD_ROW else 1.2
    if item in (101, 103):
        return 0.35
    return 1.0


def mining_digest():
    h, dt = 0x811C9DC5, f32(1.0 / 60.0)
    for tile in range(1, 17):
        for item in [0, 2, 100, 101, 102, 103, 104]:
            frames = -1
            if tile != BEDROCK and (tile != GLOW_CRYSTAL or item == 102):
                progress, step = 0.0, f32(dt * f32(mining_speed(tile, item)))
                for frame in range(1, 2001):
                    progress = f32(progress + step)
                    if progress >= hardness(tile):
                        frames = frame
                        break
            h = fnv1a(struct.pack('<i', frames), h)
    return h, {}


# Run options ----------------------------------------------------------------

NUMBERS = ["2", "-7", "1", "0", "-1", "12abc", "\t-12abc", " +4294967296x", "2147483648", "-2147483649",
           "99999999999999999999", "-99999999999999999999", "", "yes", "3", "4294967296"]
PATHS = ["", "s.bmp", "a.tvd", "--version"]
WORDS = ["--max-frames", "--screenshot", "--debug-game", "--record", "--replay", "--verify", "--help",
         "--version", "--selftest", "-h", "--HELP", "--bogus", "-v", "--Version"]


def read_int(text):
    """strtoll's reading (spaces, a sign, digits, saturating), then the nearest 32-bit value."""
    i = 0
    while i < len(text) and text[i] in ' \t\n\v\f\r':
        i += 1
    sign = -1 if text[i:i + 1] == '-' else 1
    i += text[i:i + 1] in ('+', '-')
    digits = ''
    while i < len(text) and text[i].isdigit():
        digits += text[i]
        i += 1
    value = max(-2**63, min(2**63 - 1, sign * int(digits or '0')))
    return max(-2**31, min(2**31 - 1, value))


def parse(args, env):
    o = dict(frames=0, shot=None, debug=0, record=None, replay=None, verify=0)
    if env.get('TALVEN_MAX_FRAMES'):
        o['frames'] = read_int(env['TALVEN_MAX_FRAMES'])
    if 'TALVEN_SCREENSHOT' in env:
        o['shot'] = env['TALVEN_SCREENSHOT']
    if env.get('TALVEN_DEBUG_GAME'):
        o['debug'] = int(read_int(env['TALVEN_DEBUG_GAME']) != 0)
    if env.get('TALVEN_RECORD'):
        o['record'] = env['TALVEN_RECORD']
    i = 0
    while i < len(args):
        a, has_value = args[i], i + 1 < len(args)
        stop = {'--selftest': 3, '--help': 1, '--version': 2}.get(a)
        if stop:
            return stop, o
        if a == '--max-frames' and has_value:
            i += 1
            o['frames'] = read_int(args[i])
        elif a in ('--screenshot', '--record', '--replay') and has_value:
            i += 1
            o[{'--screenshot': 'shot', '--record': 'record', '--replay': 'replay'}[a]] = args[i]
        elif a == '--debug-game':
            o['debug'] = 1
        elif a == '--verify':
            o['verify'] = 1
        i += 1
    if o['shot'] is not None and o['frames'] < 1:
        o['frames'] = 3
    o['fixed'] = int(o['frames'] > 0 or o['shot'] is not None)
    return 0, o


def options_digest():
    nxt, seen, h = Lcg(5101), Counts(), 0x811C9DC5
    for _ in range(5000):
        env = {}
        for name, pool in [('TALVEN_MAX_FRAMES', NUMBERS), ('TALVEN_SCREENSHOT', PATHS),
                           ('TALVEN_DEBUG_GAME', NUMBERS), ('TALVEN_RECORD', PATHS)]:
            pick = nxt(2 * len(pool))
            if pick < len(pool):
                env[name] = pool[pick]
        args = []
        for _ in range(nxt(7)):
            pool = [WORDS, NUMBERS, PATHS][nxt(3)]
            args.append(pool[nxt(len(pool))])
        action, o = parse(args, env)
        seen(['run', 'help', 'version', 'selftest'][action])
        if action == 0 and o['shot'] is not None:
            seen('screenshot, frames %s' % ('3' if o['frames'] == 3 else 'given'))
        if action != 0:  # what was read before a stop word is not used
            h = fnv1a(u32s(action), h)
            continue
        h = fnv1a(u32s(action, o['frames'], o['debug'], o['fixed'], o['verify']), h)
        for key in ('shot', 'record', 'replay'):
            h = fnv1a(b'-' if o[key] is None else b'+' + o[key].encode() + b'\0', h)
    return h, seen


if __name__ == '__main__':
    for name, digest in [('Tiles', tiles_digest), ('Inventory', inventory_digest), ('Crafting', crafting_digest),
                         ('Placing', placing_digest), ('Mining', mining_digest), ('Options', options_digest)]:
        value, seen = digest()
        print('%-10s 0x%08X  %s' % (name, value, ', '.join('%s %d' % kv for kv in sorted(seen.items()))))
