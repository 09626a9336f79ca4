// The file of the change log.

#include "safety/change_entry.h"
#include "store_list.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace tarnwick;
    fuzzing::checkStoreList<ChangeEntry>(fuzzing::viewOf(data, size));
    return 0;
}
