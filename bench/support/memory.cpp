#include "support/memory.h"

#include <fstream>
#include <string>

namespace tarnwick::bench {

double peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

void resetPeakMemory()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace tarnwick::bench
