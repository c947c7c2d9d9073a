#include "core/common/ThreadHelper.h"

#include <cstddef>
#include <pthread.h>

namespace Zem {

namespace {

// The kernel stores 16 bytes including the terminating zero.
constexpr std::size_t maxNameBytes = 15;

} // namespace

void ThreadHelper::setCurrentThreadName(const char* name)
{
    std::string text = name ? name : "";
    if (text.size() > maxNameBytes) {
        std::size_t cut = maxNameBytes;
        // Step back over UTF-8 continuation bytes so that no character is split in half.
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80)
            --cut;
        text.resize(cut);
    }
    // The result is ignored on purpose: a thread without a name works just as well.
    (void)pthread_setname_np(pthread_self(), text.c_str());
}

std::string ThreadHelper::getCurrentThreadName()
{
    char buffer[maxNameBytes + 1] = {};
    if (pthread_getname_np(pthread_self(), buffer, sizeof(buffer)) != 0)
        return std::string();
    return std::string(buffer);
}

} // namespace Zem
