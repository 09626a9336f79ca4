#include "platform/file_search.h"

#include "platform/data_folder.h"
#include "platform/environment.h"
#include "platform/volumes.h"

namespace tarnwick::platform {

FileSearch searchOfThisMachine()
{
    FileSearch search;
    search.roots.append(homeFolder());
    for (const Volume &volume : volumes())
        search.roots.append(volume.path);
    search.leftOut.append(dataFolder());
    return search;
}

} // namespace tarnwick::platform
