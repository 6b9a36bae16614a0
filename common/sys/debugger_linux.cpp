#include "common/sys/debugger.h"

#include <fstream>
#include <string>

namespace sys {

bool IsDebuggerAttached() {
    std::ifstream record("/proc/self/status");
    for (std::string key; record >> key;) {
        if (key == "TracerPid:") {
            long tracer = 0;
            return (record >> tracer) && tracer != 0;
        }
        std::getline(record, key);
    }
    return false;
}

}  // namespace sys
