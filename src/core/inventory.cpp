// Placeholder until this subsystem lands; replaced by its real implementation.
#include "core/inventory.h"
bool inventory_add(Player*, std::int32_t, std::int32_t) { return false; }
std::uint32_t inventory_count(const Player*, std::int32_t) { return 0; }
bool inventory_remove(Player*, std::int32_t, std::int32_t) { return false; }
void inventory_activate(Player*, std::uint32_t) {}
