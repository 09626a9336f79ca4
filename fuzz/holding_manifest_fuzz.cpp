// The manifest of the holding folder.

#include "safety/held_item.h"
#include "store_list.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace tarnwick;
    fuzzing::checkStoreList<HeldItem>(fuzzing::viewOf(data, size));
    return 0;
}
