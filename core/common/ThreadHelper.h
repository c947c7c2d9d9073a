#pragma once

#include <string>

namespace Zem {

// Names threads so that debuggers, top and core dumps tell the workers apart.
class ThreadHelper {
public:
    ThreadHelper() = delete;

    // Names the calling thread. Linux keeps at most 15 bytes of a name: a longer one is cut at a
    // character boundary. Never fails; a null name counts as empty.
    static void setCurrentThreadName(const char* name);
    // The name of the calling thread, empty when it cannot be read.
    static std::string getCurrentThreadName();
};

} // namespace Zem
